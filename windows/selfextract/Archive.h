// The archive in the install file: its directory, checked whole before anything is unpacked, and its entries.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "selfextract/Container.h"

namespace tarvolinex::windows {

struct Entry {
  std::wstring name;
  std::uint32_t method = 0;            // 0 stored, 8 deflated
  std::uint32_t sum = 0;               // CRC-32 of the unpacked bytes
  std::uint32_t packed = 0, size = 0;  // bytes
  std::uint64_t data = 0;              // offset of the packed bytes in the file
};

class Archive {
 public:
  // Reads and checks the directory. Failures, each naming the entry: a name that is no plain file name, a name that
  // comes twice, a folder, a link, an encrypted entry, an unknown method, sizes beyond the archive, and more than
  // 512 MB in all. REQUIRES: `file` lives as long as the archive.
  Archive(const InputFile& file, const Container& container);

  const std::vector<Entry>& Entries() const { return entries_; }
  std::uint64_t UnpackedSize() const { return unpacked_; }  // bytes, of all entries
  bool Holds(const std::wstring& name) const;

  // Hands the unpacked bytes to `take` piece by piece, never more than the directory declares. A wrong length or
  // check sum is a failure, noticed at the end of the entry.
  using Take = std::function<void(std::string_view)>;
  void Unpack(const Entry& entry, const Take& take) const;

 private:
  void ReadDirectory(std::uint64_t begin, std::uint64_t end);
  std::size_t ReadEntry(std::string_view directory, std::uint64_t begin, std::uint64_t directory_offset);
  void Locate(Entry& entry, std::uint64_t header, std::string_view name, std::uint64_t directory_offset) const;
  [[noreturn]] void Refuse(const std::wstring& name, const wchar_t* why) const;

  const InputFile& file_;
  std::vector<Entry> entries_;
  std::uint64_t unpacked_ = 0;
};

}  // namespace tarvolinex::windows
