#include "store/DatabaseFile.h"

#include "core/ProgramFiles.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ZipComponent.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// A database that a package is about to be unpacked over is kept, with what an interrupted write has left beside it.
void KeepReplacedDatabase(const std::string& dataFolder, const std::string& today) {
  const std::string database = DatabasePath(dataFolder), journal = database + "-journal";
  if (!FileExists(database)) return;
  const std::string folder = dataFolder + "\\Backup";
  if (!FolderExists(folder)) MakeFolder(folder);
  std::string copy;
  for (int n = 1; copy.empty() || FileExists(copy); ++n) {
    copy = folder + "\\Replaced " + today + (n > 1 ? " " + std::to_string(n) : "") + ".mdb";
  }
  CopyFile(database, copy);
  if (!FileExists(journal)) return;
  CopyFile(journal, copy + "-journal");
  DeleteFile(journal);  // it belongs to the file that goes
}

bool IsAppFolder(const Folders& folders) {
  return UpperCase(folders.data) == UpperCase(folders.app);
}

// A first start brings the delivered package to where its database is opened, and to no other folder. Returns whether
// it did.
bool BringPackage(const Folders& folders, const std::string& package) {
  const std::string delivered = DeliveredFolder() + "\\Database.zip";
  if (!IsAppFolder(folders) || FileExists(DatabasePath(folders.data)) || !FileExists(delivered)) return false;
  CopyFile(delivered, package);
  return true;
}

void Unpack(const Folders& folders, const std::string& package, Reporter& reporter) {
  KeepReplacedDatabase(folders.data, IsoDate(reporter.Now()));
  ZipComponent zip;
  zip.ZipFileName = package;
  zip.UnzipToFolder = folders.data;
  zip.Unzip();
  reporter.DoEvents();
  if (IsAppFolder(folders)) CopyFile(package, folders.app + "\\Database.Bak");
  DeleteFile(package);
}

}  // namespace

std::string DatabasePath(const std::string& dataFolder) {
  return dataFolder + "\\Tarvolinex.mdb";
}

std::string WithoutTrailingSeparator(std::string folder) {
  if (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
  return folder;
}

Unpacked UnpackDatabase(const Folders& folders, Reporter& reporter) {
  const std::string package = folders.data + "\\Database.zip";
  bool brought = false;
  try {
    brought = !FileExists(package) && BringPackage(folders, package);
  } catch (const RuntimeError& failure) {
    reporter.ShowError(failure.Description());
    return Unpacked::Failed;
  }
  if (!FileExists(package)) return Unpacked::No;
  reporter.SetStatus(false, "Setting Database", 10);
  try {
    // Two programs must not unpack it, the second over the database that the first has opened.
    const FileLock alone(package, std::chrono::seconds(30));
    if (!FileExists(package)) return Unpacked::No;
    Unpack(folders, package, reporter);
  } catch (const RuntimeError& failure) {
    if (!FileExists(package)) return Unpacked::No;  // the other program was faster
    // One that was not used does not wait for a database that the user puts beside it; one that was begun is gone on
    // with at the next start.
    if (brought && !FileExists(DatabasePath(folders.data))) DeleteFile(package);
    if (failure.Number() == kBadFileName) reporter.ShowError("Database Invalid", true);
    reporter.ShowError(failure.Description());
    return Unpacked::Failed;
  }
  reporter.SetStatus(false, "Setting Database", 100);
  return Unpacked::Yes;
}

}  // namespace tarvolinex
