// The system's part of the install file's readers, for this machine: the same code that opens an install file on the
// dealer's machine looks through it here.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "system/Failure.h"
#include "system/Files.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

// The whole file is mapped: it is looked through in many small steps.
InputFile::InputFile(const std::wstring& path) : path_(path), handle_(nullptr) {
  const int file = ::open(ToUtf8(path).c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status = {};
  if (file >= 0 && ::fstat(file, &status) == 0 && status.st_size > 0) {
    size_ = static_cast<std::uint64_t>(status.st_size);
    handle_ = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
  }
  if (file >= 0) ::close(file);
  if (file < 0 || handle_ == MAP_FAILED) throw Failure{path_ + L" cannot be read."};
}

InputFile::~InputFile() {
  if (handle_) ::munmap(handle_, size_);
}

void InputFile::ReadAt(std::uint64_t offset, void* into, std::size_t size) const {
  if (offset > size_ || size > size_ - offset) throw Failure{path_ + L" is cut short."};
  if (size > 0) std::memcpy(into, static_cast<const char*>(handle_) + offset, size);
}

std::string InputFile::ReadAt(std::uint64_t offset, std::size_t size) const {
  if (offset > size_ || size > size_ - offset) throw Failure{path_ + L" is cut short."};
  std::string bytes(size, '\0');
  ReadAt(offset, bytes.data(), size);
  return bytes;
}

std::string ReadWhole(const std::wstring& path) {
  return ReadFile(ToUtf8(path));
}

bool Exists(const std::wstring& path) {
  return FileExists(ToUtf8(path));
}

// What is neither UTF-8 nor Windows-1252 is taken in ASCII alone: this program writes nothing else.
bool Decode(std::string_view bytes, unsigned code_page, std::wstring& text) {
  text.clear();
  if (code_page != kUtf8 && code_page != kAnsi && !IsAscii(bytes)) return false;
  try {
    text = std::filesystem::path(code_page == kAnsi ? FromWindows1252(bytes) : std::string(bytes)).wstring();
    return true;
  } catch (const std::filesystem::filesystem_error&) {
    return false;
  }
}

std::string ToUtf8(const std::wstring& text) {
  return std::filesystem::path(text).string();
}

bool SameName(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() && EqualNoCase(ToUtf8(a), ToUtf8(b));
}

}  // namespace tarvolinex::windows
