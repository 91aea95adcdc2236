// What the Windows programs read on the dealer's machine: the install file, the set-up list, the list of what is
// installed. Their readers are built for this machine.
#include <filesystem>

#include "fuzz/Targets.h"
#include "selfextract/Archive.h"
#include "setup/SetupList.h"
#include "system/Failure.h"
#include "system/InstalledList.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::fuzz {

namespace {

using namespace windows;

void ReadInstallFile(std::string_view bytes) {
  const InputFile file(std::filesystem::path(Put("in.exe", bytes)).wstring());
  try {
    const Container container = ReadContainer(file);
    const Archive archive(file, container);
    for (const Entry& entry : archive.Entries()) {
      std::uint64_t size = 0;
      Expect(IsPlainName(entry.name) && archive.Holds(entry.name), "an entry has a plain name");
      archive.Unpack(entry, [&](std::string_view piece) { size += piece.size(); });
      Expect(size == entry.size, "an entry has the size that its directory declares");
    }
  } catch (const Failure&) {
  }
}

void ReadSetup(std::string_view bytes) {
  try {
    const SetupList list = ReadSetupList(std::filesystem::path(Put("Setup.lst", bytes)).wstring());
    for (const ListedFile& file : list.files) Expect(IsPlainName(file.name), "a file has a plain name");
    Expect(IsPlainName(FolderNameFor(list.title)), "a title gives the name of a folder");
  } catch (const Failure&) {
  }
}

void ReadInstalled(std::string_view bytes) {
  Put("Installed.lst", bytes);
  const std::wstring folder = std::filesystem::path(Scratch()).wstring();
  const InstalledList list = ReadInstalledList(folder);
  for (const std::wstring& file : list.files) Expect(IsPlainName(file), "a file has a plain name");
  Put("Installed.lst", InstalledListText(list));
  Expect(InstalledListText(ReadInstalledList(folder)) == InstalledListText(list), "the list is read as it was written");
}

}  // namespace

std::vector<Target> WindowsTargets() {
  return {{"selfextract", ReadInstallFile}, {"setuplist", ReadSetup}, {"installedlist", ReadInstalled}};
}

}  // namespace tarvolinex::fuzz
