#include "store/DailyCopy.h"

#include <algorithm>

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kCopiesKept = 5;

std::string Today() {
  return IsoDate(TheDesktop().Now());
}

}  // namespace

void KeepDailyCopy() {
  const std::string today = DataFolder + " " + Today();
  if (CopiedDatabase == today) return;
  CopiedDatabase = today;
  try {
    const std::string folder = DataFolder + "\\Backup";
    const std::string copy = folder + "\\Tarvolinex " + Today() + ".mdb";
    if (!FolderExists(folder)) MakeFolder(folder);
    // Of copies that were killed, on whatever day; older versions gave them these names.
    RemoveUnfinished(folder);
    for (const std::string& name : ListFiles(folder + "\\Tarvolinex *.mdb.*tmp*")) DeleteFile(folder + "\\" + name);
    if (FileExists(copy)) return;
    TheStore->connection.CopyTo(copy, [] { TheDesktop().Repaint(); });
    // Dates sort by themselves; the oldest come first. What is dated after today was made while the clock was wrong, or
    // is right while it is wrong now: either way it is older than what is made today.
    auto copies = ListFiles(folder + "\\Tarvolinex *.mdb");
    const std::string latest = FileNameOf(copy);
    std::stable_partition(copies.begin(), copies.end(), [&](const std::string& name) { return name > latest; });
    for (std::size_t i = 0; i + kCopiesKept < copies.size(); ++i) DeleteFile(folder + "\\" + copies[i]);
  } catch (const RuntimeError&) {
    // A full disk or a folder without rights must not keep the user from saving.
  }
}

}  // namespace tarvolinex
