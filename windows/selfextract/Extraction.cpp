#include "selfextract/Extraction.h"

#include <windows.h>

#include "selfextract/Archive.h"
#include "selfextract/Container.h"
#include "selfextract/ProgressWindow.h"
#include "system/Failure.h"
#include "system/Names.h"
#include "system/OnlyOne.h"
#include "system/Owner.h"
#include "system/Process.h"
#include "system/Replacement.h"
#include "system/Shell.h"
#include "system/TemporaryFolder.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr unsigned long kStopped = 2;
constexpr wchar_t kPage[] = L"calc.html";

void Test(const Archive& archive, ProgressWindow& progress) {
  progress.Say(L"Checking the files...");
  for (const Entry& entry : archive.Entries()) {
    archive.Unpack(entry, [&](std::string_view bytes) { progress.Advance(bytes.size()); });
  }
}

// Each file is written beside and takes its name when it is whole, so a link of that name is replaced, not followed.
void Write(const Archive& archive, const std::wstring& folder, ProgressWindow& progress) {
  const std::wstring beside = folder + L"\\~unpacking.tmp";
  Delete(beside);
  for (const Entry& entry : archive.Entries()) {
    progress.Say(L"Unpacking " + entry.name);
    OutputFile file(beside);
    archive.Unpack(entry, [&](std::string_view bytes) {
      file.Write(bytes);
      progress.Advance(bytes.size());
    });
    file.Close();
    Move(beside, folder + L"\\" + entry.name, true);
  }
}

// A folder of its own that goes when the started program has ended.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(MakeTemporaryFolder()) {}
  ~TemporaryFolder() {
    // A virus scanner may hold a file for a moment.
    for (int tries = 0; tries < 50 && !RemoveFolder(path_); ++tries) Sleep(100);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::wstring& Path() const { return path_; }

 private:
  std::wstring path_;
};

// The title of the windows without the words that name this program.
std::wstring CalculatorName(const std::wstring& title) {
  const std::size_t end = title.rfind(L" Self-Extractor");
  return Squeezed(title.substr(0, end));
}

// A calculator that was fetched by a link comes without its installer: it stays in a folder of the user's and is opened
// there. An installed one has another folder. What an earlier download put there is replaced whole or not at all.
void Keep(const Archive& archive, const std::wstring& name, bool silent, ProgressWindow& progress) {
  const std::wstring ending = L" (download)";
  std::wstring folder;
  {
    const TemporaryFolder unpacked;
    Write(archive, unpacked.Path(), progress);
    progress.Say(L"Putting the files in place...");
    const OnlyOne only;
    const std::wstring title = OwnTitle(name, unpacked.Path(), ending);
    folder = CalculatorsFolder() + L"\\" + FolderNameFor(title) + ending;
    Replacement replacement(folder);
    for (const Entry& entry : archive.Entries()) replacement.Add(unpacked.Path() + L"\\" + entry.name);
    InstalledList list;
    list.title = title;
    replacement.Exchange(list);
    replacement.Commit();
  }
  progress.Close();
  if (!silent) OpenFile(folder + L"\\" + kPage);
}

std::wstring FullPath(const std::wstring& path) {
  wchar_t full[32768];
  const DWORD length = GetFullPathNameW(path.c_str(), 32768, full, nullptr);
  if (length == 0 || length >= 32768) ThrowLastError(L"Finding the folder", path);
  return std::wstring(full, length);
}

}  // namespace

Options ReadOptions(const std::vector<std::wstring>& arguments) {
  Options options;
  bool in_folder = false;
  for (const std::wstring& argument : arguments) {
    if (SameName(argument, L"/S")) {
      options.silent = true;
      ReportSilently();
      in_folder = false;
    } else if (StartsWithName(argument, L"/D=") && argument.size() > 3) {
      options.folder = argument.substr(3);
      in_folder = true;
    } else if (in_folder && argument[0] != L'/') {
      options.folder += L" " + argument;
    } else {
      throw Failure{L"\"" + argument + L"\" is not understood. Known are /S (silent) and /D=FOLDER (unpack there)."};
    }
  }
  return options;
}

unsigned long UnpackAndStart(const InputFile& file, const Options& options) {
  const Container container = ReadContainer(file);
  const Archive archive(file, container);
  const bool starts = options.folder.empty() && !container.command.empty();
  const bool installs = archive.Holds(container.command);
  if (starts && !installs && !archive.Holds(kPage)) {
    throw Failure{L"\"" + container.command + L"\" is missing in " + file.Path() + L"."};
  }
  ProgressWindow progress(container.title, options.silent, 2 * archive.UnpackedSize());
  try {
    Test(archive, progress);
    if (!options.folder.empty()) {
      const std::wstring folder = FullPath(options.folder);
      MakeFolder(folder);
      Write(archive, folder, progress);
      return 0;
    }
    if (starts && !installs) {
      Keep(archive, CalculatorName(container.title), options.silent, progress);
      return 0;
    }
    const TemporaryFolder folder;
    Write(archive, folder.Path(), progress);
    progress.Close();
    if (!starts) return 0;
    return Run(folder.Path() + L"\\" + container.command, options.silent ? L"/S" : L"", true);
  } catch (const Stopped&) {
    return kStopped;
  }
}

}  // namespace tarvolinex::windows
