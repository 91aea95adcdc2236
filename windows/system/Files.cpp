#include "system/Files.h"

#include <windows.h>

#include "system/Failure.h"

namespace tarvolinex::windows {

InputFile::InputFile(const std::wstring& path)
    : path_(path),
      handle_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0,
                          nullptr)) {
  LARGE_INTEGER size = {};
  if (handle_ == INVALID_HANDLE_VALUE || !GetFileSizeEx(handle_, &size)) ThrowLastError(L"Reading", path);
  size_ = static_cast<std::uint64_t>(size.QuadPart);
}

InputFile::~InputFile() {
  CloseHandle(handle_);
}

void InputFile::ReadAt(std::uint64_t offset, void* into, std::size_t size) const {
  if (offset > size_ || size > size_ - offset) throw Failure{L"Reading " + path_ + L": the file is cut short."};
  LARGE_INTEGER position = {};
  position.QuadPart = static_cast<LONGLONG>(offset);
  DWORD count = 0;
  if (!SetFilePointerEx(handle_, position, nullptr, FILE_BEGIN) ||
      !ReadFile(handle_, into, static_cast<DWORD>(size), &count, nullptr) || count != size) {
    ThrowLastError(L"Reading", path_);
  }
}

std::string InputFile::ReadAt(std::uint64_t offset, std::size_t size) const {
  if (offset > size_ || size > size_ - offset) throw Failure{L"Reading " + path_ + L": the file is cut short."};
  std::string bytes(size, '\0');
  ReadAt(offset, bytes.data(), size);
  return bytes;
}

OutputFile::OutputFile(const std::wstring& path)
    : path_(path),
      handle_(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE) ThrowLastError(L"Writing", path);
}

OutputFile::~OutputFile() {
  if (handle_ == nullptr) return;
  CloseHandle(handle_);
  DeleteFileW(path_.c_str());
}

void OutputFile::Write(std::string_view bytes) {
  DWORD count = 0;
  if (!WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) || count != bytes.size()) {
    ThrowLastError(L"Writing", path_);
  }
}

void OutputFile::Close() {
  if (!FlushFileBuffers(handle_)) ThrowLastError(L"Writing", path_);
  CloseHandle(handle_);
  handle_ = nullptr;
}

std::string ReadWhole(const std::wstring& path) {
  const InputFile file(path);
  return file.ReadAt(0, static_cast<std::size_t>(file.Size()));
}

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L"\\/");
  return separator == std::wstring::npos ? L"" : path.substr(0, separator);
}

std::wstring NameOf(const std::wstring& path) {
  return path.substr(path.find_last_of(L"\\/") + 1);
}

std::vector<std::wstring> FileNames(const std::wstring& folder) {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return names;
}

void MakeFolder(const std::wstring& path) {
  if (IsFolder(path) || CreateDirectoryW(path.c_str(), nullptr)) return;
  const DWORD error = GetLastError();
  const std::wstring parent = FolderOf(path);
  if (error == ERROR_PATH_NOT_FOUND && parent.size() > 2) {
    MakeFolder(parent);
    if (CreateDirectoryW(path.c_str(), nullptr)) return;
  }
  ThrowError(L"Making the folder", path, error);
}

void Move(const std::wstring& from, const std::wstring& to, bool replace) {
  if (!MoveFileExW(from.c_str(), to.c_str(), replace ? MOVEFILE_REPLACE_EXISTING : 0)) {
    ThrowLastError(L"Writing", to);
  }
}

void Delete(const std::wstring& path, int seconds) {
  for (int tries = seconds * 10;; --tries) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (DeleteFileW(path.c_str())) return;
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return;
    if (tries <= 0) ThrowError(L"Deleting", path, error);
    Sleep(100);
  }
}

bool RemoveFolder(const std::wstring& path) {
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return !Exists(path);
  do {
    const std::wstring name = found.cFileName, inner = path + L"\\" + name;
    if (name == L"." || name == L"..") continue;
    SetFileAttributesW(inner.c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      DeleteFileW(inner.c_str());
    } else if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      RemoveDirectoryW(inner.c_str());
    } else {
      RemoveFolder(inner);
    }
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return RemoveDirectoryW(path.c_str()) != 0;
}

}  // namespace tarvolinex::windows
