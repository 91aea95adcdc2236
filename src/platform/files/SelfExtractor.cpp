#include "platform/files/SelfExtractor.h"

#include <algorithm>
#include <cstdint>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kMarker{"TARVOLINEX-SFX1\0", 16};
constexpr std::size_t kIconSize = 744, kIconFolderEntry = 16, kIconFolder = 6;
constexpr std::uint32_t kIconResource = 3;
constexpr std::uint32_t kEndMark = 0x06054b50, kEntryMark = 0x02014b50;
constexpr std::size_t kEndSize = 22, kEntrySize = 46, kSectionSize = 40;
constexpr std::uint64_t kLargest = 0xFFFFFFFE;

// The bytes of a file, read and changed by offset. Anything beyond the end is this file's failure.
class Bytes {
 public:
  Bytes(std::string_view path, std::string_view role) : path_(path), role_(role), bytes_(ReadFile(path)) {}
  const std::string& All() const { return bytes_; }
  std::uint64_t Size() const { return bytes_.size(); }
  std::uint32_t Number(std::uint64_t offset, std::size_t size) const {
    Need(offset, size);
    std::uint32_t number = 0;
    for (std::size_t i = size; i > 0; --i) number = number << 8 | static_cast<unsigned char>(bytes_[offset + i - 1]);
    return number;
  }
  void SetNumber(std::uint64_t offset, std::uint32_t number) {
    Need(offset, 4);
    for (std::size_t i = 0; i < 4; ++i) bytes_[offset + i] = static_cast<char>(number >> 8 * i & 0xFF);
  }
  void Replace(std::uint64_t offset, std::string_view with) {
    Need(offset, with.size());
    bytes_.replace(offset, with.size(), with);
  }
  void Demand(bool good, const char* what, int number = kBadArchive) const {
    if (!good) throw RuntimeError(number, Tr("Using the %1 %2: %3", {Tr(role_), path_, Tr(what)}));
  }

 private:
  void Need(std::uint64_t offset, std::size_t size) const {
    Demand(offset <= Size() && size <= Size() - offset, Marked("it is cut short or damaged"));
  }
  std::string path_, role_, bytes_;
};

// The Windows program that the file begins with.
class Module {
 public:
  explicit Module(std::string_view path) : bytes_(path, Marked("self-extractor module")) {
    headers_ = bytes_.Number(0x3C, 4);
    bytes_.Demand(bytes_.Number(0, 2) == 0x5A4D && bytes_.Number(headers_, 4) == 0x4550 &&
                      bytes_.Number(headers_ + 24, 2) == 0x20B,
                  Marked("it is no 64-bit Windows program"));
    sections_ = headers_ + 24 + bytes_.Number(headers_ + 20, 2);
    // The program looks for its archive behind its last section.
    bytes_.Demand(EndOfSections() == bytes_.Size(), Marked("something follows its last section"));
    bytes_.SetNumber(headers_ + 88, 0);  // the check sum of the headers, which no longer holds; 0 stands for none
  }
  void SetIcon(std::string_view picture) {
    bytes_.Demand(IconSize() == picture.size(), Marked("its icon is not the one that can be replaced"));
    bytes_.Replace(IconOffset(), picture);
  }
  bool StartOf(std::string_view file) {
    if (file.size() < bytes_.Size()) return false;
    SetIcon(file.substr(IconOffset(), kIconSize));
    return file.starts_with(bytes_.All());
  }
  const std::string& All() const { return bytes_.All(); }

 private:
  std::uint64_t IconData() const {
    // Three levels: kind, name, language; the first picture is the only one.
    const std::uint64_t root = OffsetOf(bytes_.Number(headers_ + 152, 4));
    const std::uint64_t names = Child(root, root, kIconResource), languages = Child(root, names, 0);
    return Child(root, languages, 0);
  }
  std::uint32_t IconSize() const { return bytes_.Number(IconData() + 4, 4); }
  std::uint64_t IconOffset() const { return OffsetOf(bytes_.Number(IconData(), 4)); }
  std::uint32_t Sections() const { return bytes_.Number(headers_ + 6, 2); }
  std::uint64_t EndOfSections() const {
    std::uint64_t end = 0;
    for (std::uint64_t at = sections_; at < sections_ + Sections() * kSectionSize; at += kSectionSize) {
      end = std::max(end, std::uint64_t{bytes_.Number(at + 16, 4)} + bytes_.Number(at + 20, 4));
    }
    return end;
  }
  // Where in the file the byte lies that the loader puts at that address.
  std::uint64_t OffsetOf(std::uint32_t address) const {
    for (std::uint64_t at = sections_; at < sections_ + Sections() * kSectionSize; at += kSectionSize) {
      const std::uint32_t start = bytes_.Number(at + 12, 4);
      if (address >= start && address - start < bytes_.Number(at + 16, 4)) {
        return address - start + bytes_.Number(at + 20, 4);
      }
    }
    bytes_.Demand(false, Marked("it has no icon"));
    return 0;
  }
  // The entry with that number in a resource folder, or the first when the number is 0.
  std::uint64_t Child(std::uint64_t root, std::uint64_t folder, std::uint32_t number) const {
    const std::uint32_t named = bytes_.Number(folder + 12, 2), count = named + bytes_.Number(folder + 14, 2);
    for (std::uint64_t at = folder + 16; at < folder + 16 + count * 8; at += 8) {
      if (number == 0 || bytes_.Number(at, 4) == number) return root + (bytes_.Number(at + 4, 4) & 0x7FFFFFFF);
    }
    bytes_.Demand(false, Marked("it has no icon"));
    return 0;
  }

  Bytes bytes_;
  std::uint64_t headers_ = 0, sections_ = 0;
};

// The icon's picture of 32 by 32 dots in 16 colours; other pictures may stand beside it.
std::string IconPicture(std::string_view path) {
  const Bytes icon(path, Marked("icon"));
  const std::uint32_t pictures = icon.Number(0, 4) == 0x10000 ? icon.Number(4, 2) : 0;
  for (std::uint32_t i = 0; i < pictures; ++i) {
    const std::uint64_t entry = kIconFolder + std::uint64_t{i} * kIconFolderEntry;
    if (icon.Number(entry, 2) != 0x2020 || icon.Number(entry + 8, 4) != kIconSize) continue;
    const std::uint32_t at = icon.Number(entry + 12, 4);
    if (icon.Number(at, 4) == 40 && icon.Number(at + 4, 4) == 32 && icon.Number(at + 8, 4) == 64 &&
        icon.Number(at + 14, 2) == 4 && icon.Number(at + 16, 4) == 0 && icon.Size() - at >= kIconSize) {
      return icon.All().substr(at, kIconSize);
    }
  }
  icon.Demand(false, Marked("it holds no picture of 32 by 32 dots in 16 colours"), kBadPicture);
  return {};
}

// The archive as it reads when `shift` bytes stand before it.
std::string Shifted(std::string_view path, std::uint64_t shift) {
  Bytes archive(path, Marked("archive"));
  const char* const kDamaged = Marked("its directory is damaged");
  archive.Demand(archive.Size() >= kEndSize, kDamaged);
  archive.Demand(archive.Size() + shift <= kLargest, Marked("it is too large for an install file"));
  const std::uint64_t end = archive.Size() - kEndSize;
  archive.Demand(archive.Number(end, 4) == kEndMark && archive.Number(end + 20, 2) == 0, kDamaged);
  const std::uint32_t count = archive.Number(end + 10, 2);
  const std::uint64_t directory = archive.Number(end + 16, 4);
  archive.Demand(count != 0xFFFF && directory + archive.Number(end + 12, 4) == end, kDamaged);
  std::uint64_t at = directory;
  for (std::uint32_t i = 0; i < count; ++i) {
    archive.Demand(archive.Number(at, 4) == kEntryMark && archive.Number(at + 42, 4) < directory, kDamaged);
    archive.SetNumber(at + 42, archive.Number(at + 42, 4) + static_cast<std::uint32_t>(shift));
    at += kEntrySize + archive.Number(at + 28, 2) + archive.Number(at + 30, 2) + archive.Number(at + 32, 2);
  }
  archive.Demand(at == end, kDamaged);
  archive.SetNumber(end + 16, static_cast<std::uint32_t>(directory + shift));
  return archive.All();
}

std::string SettingLine(const char* key, std::string value) {
  // A line holds one setting, whatever its text was.
  std::replace_if(
      value.begin(), value.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return std::string(key) + "=" + value + "\n";
}

std::string LittleEndian(std::size_t number) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
  return bytes;
}

}  // namespace

void WriteSelfExtractor(const SelfExtractorSettings& settings, std::string_view module, std::string_view icon,
                        std::string_view archive, std::string_view target) {
  Module program(module);
  if (!icon.empty()) program.SetIcon(IconPicture(icon));
  const std::string lines = SettingLine("Title", settings.title) + SettingLine("Folder", settings.folder) +
                            SettingLine("Command", settings.command);
  const std::string packed = Shifted(archive, program.All().size() + kMarker.size() + 8 + lines.size());
  WholeFile file(target);
  file.Write(program.All());
  file.Write(kMarker);
  file.Write(LittleEndian(lines.size()) + LittleEndian(packed.size()) + lines);
  file.Write(packed);
  file.Commit();
}

bool BeginsWithModule(std::string_view bytes, std::string_view module) {
  return Module(module).StartOf(bytes);
}

bool IsInstallIcon(std::string_view path) {
  try {
    return !IconPicture(path).empty();
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace tarvolinex
