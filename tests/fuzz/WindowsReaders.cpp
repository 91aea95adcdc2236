// What the Windows programs read on the dealer's machine: the install file, the set-up list, the list of what is
// installed. Their readers are built for this machine with the system's part of them below.
#include <cstring>
#include <filesystem>

#include "fuzz/Targets.h"
#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "selfextract/Archive.h"
#include "setup/SetupList.h"
#include "system/Failure.h"
#include "system/InstalledList.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

// The handle is the file's bytes.
InputFile::InputFile(const std::wstring& path) : path_(path), handle_(new std::string(ReadWhole(path))) {
  size_ = static_cast<std::string*>(handle_)->size();
}
InputFile::~InputFile() {
  delete static_cast<std::string*>(handle_);
}
void InputFile::ReadAt(std::uint64_t offset, void* into, std::size_t size) const {
  std::memcpy(into, ReadAt(offset, size).data(), size);
}
std::string InputFile::ReadAt(std::uint64_t offset, std::size_t size) const {
  if (offset > size_ || size > size_ - offset) throw Failure{L"Reading " + path_ + L": the file is cut short."};
  return static_cast<std::string*>(handle_)->substr(offset, size);
}
std::string ReadWhole(const std::wstring& path) {
  return ReadFile(ToUtf8(path));
}
bool Exists(const std::wstring& path) {
  return FileExists(ToUtf8(path));
}

bool Decode(std::string_view bytes, unsigned code_page, std::wstring& text) {
  text.clear();
  try {
    const std::string set = code_page == kDos ? "cp437" : "windows-1252";
    text = std::filesystem::path(code_page == kUtf8 ? std::string(bytes) : DecodeText(bytes, set)).wstring();
    return true;
  } catch (const std::filesystem::filesystem_error&) {
    return false;
  }
}
std::string ToUtf8(const std::wstring& text) {
  return std::filesystem::path(text).string();
}
bool SameName(const std::wstring& a, const std::wstring& b) {
  return EqualNoCase(ToUtf8(a), ToUtf8(b));
}

}  // namespace tarvolinex::windows

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
