#include "platform/files/Files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Throw(const std::error_code& error, const char* doing, std::string_view path) {
  int number = kDeviceError;
  if (error == std::errc::no_such_file_or_directory) number = kFileNotFound;
  if (error == std::errc::not_a_directory) number = kPathNotFound;
  if (error == std::errc::permission_denied || error == std::errc::read_only_file_system ||
      error == std::errc::is_a_directory || error == std::errc::file_exists ||
      error == std::errc::operation_not_permitted) {
    number = kPathAccess;
  }
  if (error == std::errc::no_space_on_device) number = kDiskFull;
  if (error == std::errc::filename_too_long || error == std::errc::invalid_argument) number = kBadFileName;
  if (error == std::errc::device_or_resource_busy || error == std::errc::text_file_busy) number = kFileAlreadyOpen;
  throw RuntimeError(number, Tr(doing, {path, error.message()}));
}

// The entry of the folder whose name is the given one without regard to case; empty when there is none.
std::string FindEntry(const fs::path& folder, std::string_view name) {
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder.empty() ? fs::path(".") : folder, ignored)) {
    const std::string_view path = entry.path().native(), candidate = path.substr(path.rfind('/') + 1);
    if (EqualNoCase(candidate, name)) return std::string(candidate);
  }
  return {};
}

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

// What Windows opens a device for, whatever ending it has: only what stands before the first point counts.
bool IsDeviceName(std::string_view name) {
  const std::string stem = UpperCase(Trim(name.substr(0, name.find('.'))));
  for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"}) {
    if (stem == device) return true;
  }
  if (!stem.starts_with("COM") && !stem.starts_with("LPT")) return false;
  const std::string number = stem.substr(3);
  return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "¹" || number == "²" ||
         number == "³";
}

// "*" and "?" in the pattern; "*.*" matches a name without a point too.
bool Matches(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  std::size_t n = 0, p = 0, star = std::string_view::npos, mark = 0;
  while (n < name.size()) {
    if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      ++n, ++p;
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::vector<std::string> FilesIn(std::string_view pattern, std::error_code& error) {
  const std::string mask = FoldCase(FileNameOf(pattern));
  std::vector<std::string> names;
  const std::string folder = NativePath(FolderOf(pattern));
  for (const auto& entry : fs::directory_iterator(folder.empty() ? "." : folder, error)) {
    const std::string_view path = entry.path().native(), name = path.substr(path.rfind('/') + 1);
    if (name.starts_with(kUnfinished)) continue;
    std::error_code ignored;
    if (Matches(FoldCase(name), mask) && entry.is_regular_file(ignored)) names.emplace_back(name);
  }
  std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) {
    const int order = CompareNoCase(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  return names;
}

}  // namespace

std::string WholePath(std::string_view path) {
  const bool whole = path.empty() || IsSeparator(path.front()) || (path.size() > 1 && path[1] == ':');
  return whole ? std::string(path) : fs::current_path().string() + "/" + std::string(path);
}

std::string NativePath(std::string_view path) {
  std::string text(path);
  std::replace(text.begin(), text.end(), '\\', '/');
  if (text.size() >= 2 && text[1] == ':' && ((text[0] | 0x20) >= 'a' && (text[0] | 0x20) <= 'z')) {
    text = HomeFolder() + "/" + text.substr(2);
  }
  // What is there as it is written needs no look at its folders.
  fs::path whole;
  for (const fs::path& part : fs::path(text)) whole = whole.empty() ? part : whole / part;
  std::error_code unknown;
  if (fs::exists(whole, unknown)) return whole.string();
  fs::path built;
  bool exists = true;
  for (const fs::path& part : fs::path(text)) {
    fs::path next = built.empty() ? part : built / part;
    std::error_code ignored;
    if (exists && !part.empty() && !fs::exists(next, ignored)) {
      const std::string found = FindEntry(built, part.string());
      if (found.empty()) {
        exists = false;
      } else {
        next = built / found;
      }
    }
    built = std::move(next);
  }
  return built.string();
}

bool FileExists(std::string_view path) {
  std::error_code ignored;
  return fs::is_regular_file(NativePath(path), ignored);
}

bool FolderExists(std::string_view path) {
  std::error_code ignored;
  return fs::is_directory(NativePath(path), ignored);
}

std::int64_t FileLength(std::string_view path) {
  std::error_code error;
  const auto length = fs::file_size(NativePath(path), error);
  if (error) Throw(error, Marked("Reading %1: %2"), path);
  return static_cast<std::int64_t>(length);
}

std::string FileNameOf(std::string_view path) {
  const auto end = std::find_if(path.rbegin(), path.rend(), IsSeparator);
  return {end.base(), path.end()};
}

std::string FolderOf(std::string_view path) {
  const auto end = std::find_if(path.rbegin(), path.rend(), IsSeparator);
  if (end == path.rend()) return {};
  return std::string(path.substr(0, static_cast<std::size_t>(path.rend() - end) - 1));
}

bool IsPortableFileName(std::string_view name) {
  constexpr std::size_t kLongest = 255;
  if (name.empty() || name.size() > kLongest || name.back() == '.' || name.back() == ' ') return false;
  const bool forbidden = std::any_of(name.begin(), name.end(), [](char c) {
    return (c >= 0 && c < ' ') || std::string_view("\\/:*?\"<>|\x7F").find(c) != std::string_view::npos;
  });
  return !forbidden && !IsDeviceName(name) && FitsWindows1252(name);
}

std::vector<std::string> ListFiles(std::string_view pattern) {
  std::error_code ignored;
  return FilesIn(pattern, ignored);
}

std::vector<std::string> ListFilesOrFail(std::string_view pattern) {
  std::error_code error;
  auto names = FilesIn(pattern, error);
  if (error && error != std::errc::no_such_file_or_directory) Throw(error, Marked("Listing %1: %2"), FolderOf(pattern));
  return names;
}

std::string NewestFile(std::string_view pattern) {
  const std::string folder = NativePath(FolderOf(pattern));
  std::string newest;
  fs::file_time_type latest = fs::file_time_type::min();
  for (const std::string& name : ListFiles(pattern)) {
    std::error_code error;
    const auto written = fs::last_write_time(fs::path(folder) / name, error);
    if (!error && (newest.empty() || written > latest)) {
      newest = name;
      latest = written;
    }
  }
  return newest;
}

void DeleteFile(std::string_view path) {
  const std::string native = NativePath(path);
  std::error_code error;
  if (fs::is_directory(native, error))
    Throw(std::make_error_code(std::errc::is_a_directory), Marked("Deleting %1: %2"), path);
  const bool removed = fs::remove(native, error);
  if (error) Throw(error, Marked("Deleting %1: %2"), path);
  if (!removed) Throw(std::make_error_code(std::errc::no_such_file_or_directory), Marked("Deleting %1: %2"), path);
}

void CopyFile(std::string_view from, std::string_view to) {
  std::ifstream source(NativePath(from), std::ios::binary);
  if (!source || !FileExists(from)) {
    const auto why = FileExists(from) ? std::errc::permission_denied : std::errc::no_such_file_or_directory;
    Throw(std::make_error_code(why), Marked("Copying %1: %2"), from);
  }
  WholeFile target(to);
  std::string buffer(1 << 16, '\0');
  while (source.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || source.gcount() > 0) {
    target.Write(std::string_view(buffer).substr(0, static_cast<std::size_t>(source.gcount())));
  }
  if (source.bad()) Throw(std::make_error_code(std::errc::io_error), Marked("Reading %1: %2"), from);
  target.Commit();
}

void DeleteFolder(std::string_view path) {
  std::error_code ignored;
  std::filesystem::remove_all(NativePath(path), ignored);
}

void MakeFolder(std::string_view path) {
  std::error_code error;
  fs::create_directories(NativePath(path), error);
  if (error) Throw(error, Marked("Creating the folder %1: %2"), path);
}

std::string ReadFile(std::string_view path) {
  const std::string native = NativePath(path);
  std::error_code error;
  const auto length = fs::file_size(native, error);
  if (error) Throw(error, Marked("Reading %1: %2"), path);
  std::ifstream file(native, std::ios::binary);
  if (!file) Throw(std::make_error_code(std::errc::permission_denied), Marked("Reading %1: %2"), path);
  std::string bytes(length, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(length));
  if (file.bad()) Throw(std::make_error_code(std::errc::io_error), Marked("Reading %1: %2"), path);
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

void WriteFile(std::string_view path, std::string_view bytes) {
  WholeFile file(path);
  file.Write(bytes);
  file.Commit();
}

std::string CurrentFolder() {
  std::error_code ignored;
  return fs::current_path(ignored).string();
}

}  // namespace tarvolinex
