// Files and folders. Every failure throws a Failure that names the path.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex::windows {

class InputFile {
 public:
  explicit InputFile(const std::wstring& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  const std::wstring& Path() const { return path_; }
  std::uint64_t Size() const { return size_; }  // bytes
  // Exactly `size` bytes; a file that ends before is a failure.
  void ReadAt(std::uint64_t offset, void* into, std::size_t size) const;
  std::string ReadAt(std::uint64_t offset, std::size_t size) const;

 private:
  std::wstring path_;
  void* handle_;
  std::uint64_t size_ = 0;
};

// A new file. Until Close it vanishes with the object; a file of that name that exists already is a failure.
class OutputFile {
 public:
  explicit OutputFile(const std::wstring& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  void Write(std::string_view bytes);
  void Close();

 private:
  std::wstring path_;
  void* handle_;
};

std::string ReadWhole(const std::wstring& path);
bool Exists(const std::wstring& path);  // a file or a folder
bool IsFolder(const std::wstring& path);
std::wstring FolderOf(const std::wstring& path);
std::wstring NameOf(const std::wstring& path);
std::vector<std::wstring> FileNames(const std::wstring& folder);  // without the folders in it

void MakeFolder(const std::wstring& path);  // with its parents; one that exists is kept
void Move(const std::wstring& from, const std::wstring& to, bool replace);
// A file that is missing already counts as deleted. One that is still held is tried for again for `seconds`.
void Delete(const std::wstring& path, int seconds = 0);
// A folder with all that is in it; a link in it is removed and not followed. False when something stays.
bool RemoveFolder(const std::wstring& path);

}  // namespace tarvolinex::windows
