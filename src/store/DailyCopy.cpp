#include "store/DailyCopy.h"

#include <ctime>

#include "core/Globals.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kCopiesKept = 5;

std::string Today() {
  const std::time_t now = std::chrono::system_clock::to_time_t(TheDesktop().Now());
  char date[16];
  const std::size_t length = std::strftime(date, sizeof date, "%Y-%m-%d", std::localtime(&now));
  return {date, length};
}

}  // namespace

void KeepDailyCopy() {
  const std::string today = DataFolder + " " + Today();
  if (CopiedDatabase == today) return;
  CopiedDatabase = today;
  try {
    const std::string folder = DataFolder + "\\Backup";
    const std::string copy = folder + "\\Tarvolinex " + Today() + ".mdb";
    if (FileExists(copy)) return;
    if (!FolderExists(folder)) MakeFolder(folder);
    TheStore->connection.CopyTo(copy);
    // Dates sort by themselves; the oldest come first.
    auto copies = ListFiles(folder + "\\Tarvolinex *.mdb");
    for (std::size_t i = 0; i + kCopiesKept < copies.size(); ++i) DeleteFile(folder + "\\" + copies[i]);
  } catch (const RuntimeError&) {
    // A full disk or a folder without rights must not keep the user from saving.
  }
}

}  // namespace tarvolinex
