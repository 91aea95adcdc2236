#include "selfextract/Archive.h"

#include <cstring>

#include "system/Failure.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr std::uint64_t kLargest = 512ull << 20;  // bytes, unpacked
constexpr std::uint32_t kEndMark = 0x06054b50, kEntryMark = 0x02014b50, kLocalMark = 0x04034b50;
constexpr std::size_t kEndSize = 22, kEntrySize = 46, kLocalSize = 30;
constexpr unsigned kUnix = 3;
constexpr unsigned kEncrypted = 1, kUtf8Name = 0x800;
constexpr std::uint32_t kDosFolder = 0x10, kDosLink = 0x400;
constexpr unsigned kUnixKind = 0xF000, kUnixFile = 0x8000;

std::uint32_t Number(std::string_view bytes, std::size_t offset, std::size_t size) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + offset, size);  // little-endian, like the processor
  return number;
}

// Anything but an ordinary file: a folder, a link, a device.
bool IsSpecial(unsigned made_by, std::uint32_t attributes) {
  if ((attributes & (kDosFolder | kDosLink)) != 0) return true;
  const unsigned kind = (attributes >> 16) & kUnixKind;
  return made_by == kUnix && kind != 0 && kind != kUnixFile;
}

}  // namespace

Archive::Archive(const InputFile& file, const Container& container) : file_(file) {
  ReadDirectory(container.archive, container.archive + container.archive_size);
}

void Archive::Refuse(const std::wstring& name, const wchar_t* why) const {
  throw Failure{L"\"" + name + L"\" in " + file_.Path() + L" " + why + L" Nothing was unpacked."};
}

bool Archive::Holds(const std::wstring& name) const {
  for (const Entry& entry : entries_) {
    if (SameName(entry.name, name)) return true;
  }
  return false;
}

void Archive::ReadDirectory(std::uint64_t begin, std::uint64_t end) {
  const Failure damaged{L"The directory of the archive in " + file_.Path() + L" is damaged. Please fetch it again."};
  if (end - begin < kEndSize) throw damaged;
  const std::string last = file_.ReadAt(end - kEndSize, kEndSize);
  const std::uint64_t size = Number(last, 12, 4), offset = Number(last, 16, 4);
  if (Number(last, 0, 4) != kEndMark || Number(last, 4, 4) != 0 || Number(last, 8, 2) != Number(last, 10, 2) ||
      offset < begin || offset + size != end - kEndSize) {
    throw damaged;
  }
  const std::string bytes = file_.ReadAt(offset, static_cast<std::size_t>(size));
  std::string_view directory = bytes;
  for (std::uint32_t count = Number(last, 10, 2); count > 0; --count) {
    const std::size_t used = ReadEntry(directory, begin, offset);
    if (used == 0) throw damaged;
    directory.remove_prefix(used);
  }
  if (!directory.empty()) throw damaged;
}

// Returns the bytes that the entry takes up in the directory; 0 when they are damaged.
std::size_t Archive::ReadEntry(std::string_view directory, std::uint64_t begin, std::uint64_t directory_offset) {
  if (directory.size() < kEntrySize || Number(directory, 0, 4) != kEntryMark) return 0;
  const std::size_t name_size = Number(directory, 28, 2);
  const std::size_t used = kEntrySize + name_size + Number(directory, 30, 2) + Number(directory, 32, 2);
  if (directory.size() < used) return 0;
  const std::string_view name = directory.substr(kEntrySize, name_size);
  const unsigned flags = Number(directory, 8, 2);
  Entry entry;
  if (!Decode(name, (flags & kUtf8Name) != 0 ? kUtf8 : kDos, entry.name)) Refuse(L"?", L"has a name that is no text.");
  entry.method = Number(directory, 10, 2);
  entry.sum = Number(directory, 16, 4);
  entry.packed = Number(directory, 20, 4);
  entry.size = Number(directory, 24, 4);
  if (!IsPlainName(entry.name)) Refuse(entry.name, L"is not the plain name of a file.");
  if (IsSpecial(Number(directory, 5, 1), Number(directory, 38, 4))) Refuse(entry.name, L"is a link or a folder.");
  if (Holds(entry.name)) Refuse(entry.name, L"is there twice.");
  if ((flags & kEncrypted) != 0) Refuse(entry.name, L"is encrypted.");
  if (entry.method != 0 && entry.method != 8) Refuse(entry.name, L"is packed in an unknown way.");
  unpacked_ += entry.size;
  if (unpacked_ > kLargest) Refuse(entry.name, L"makes it larger than 512 MB.");
  const std::uint64_t header = Number(directory, 42, 4);
  if (header < begin) return 0;
  Locate(entry, header, name, directory_offset);
  entries_.push_back(entry);
  return used;
}

// Finds the packed bytes behind the entry's own header, which must bear the same name.
void Archive::Locate(Entry& entry, std::uint64_t header, std::string_view name, std::uint64_t directory_offset) const {
  const wchar_t* const kMisplaced = L"is not where the directory says.";
  if (header + kLocalSize + name.size() > directory_offset) Refuse(entry.name, kMisplaced);
  const std::string local = file_.ReadAt(header, kLocalSize + name.size());
  entry.data = header + kLocalSize + Number(local, 26, 2) + Number(local, 28, 2);
  if (Number(local, 0, 4) != kLocalMark || Number(local, 26, 2) != name.size() || local.substr(kLocalSize) != name ||
      entry.data + entry.packed > directory_offset) {
    Refuse(entry.name, kMisplaced);
  }
}

}  // namespace tarvolinex::windows
