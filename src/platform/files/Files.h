// Files as the program names them: "\" or "/" separates, look-up is case-blind, a drive such as "C:\" is the user's
// home folder. Every failure throws RuntimeError with one of the file error numbers and the path in its description.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

// The machine's own path of a path of the program: an existing file or folder whose name differs only in case is
// found, a name that does not exist yet stays as written.
std::string NativePath(std::string_view path);

// A path that starts at the folder in which the program runs, from the root; any other as it stands. Remembered paths
// must not depend on where the program was started.
std::string WholePath(std::string_view path);

bool FileExists(std::string_view path);  // a file, not a folder
bool FolderExists(std::string_view path);
std::int64_t FileLength(std::string_view path);  // bytes
bool IsWritableFolder(std::string_view path);

// The part after the last separator, and the part before it (without the separator).
std::string FileNameOf(std::string_view path);
std::string FolderOf(std::string_view path);

// Whether a file can have the name on every system that a calculator travels to, and a list in Windows-1252 can name
// it: no folder, none of the characters and devices that Windows keeps for itself, at most 255 bytes.
bool IsPortableFileName(std::string_view name);

// Names (without folders) of the files in the pattern's folder that match it ("*.html", "logo.*"; "*.*" matches every
// name), case-blind, in case-blind order, without unfinished ones. A folder that does not exist or cannot be listed
// holds nothing.
std::vector<std::string> ListFiles(std::string_view pattern);
// The same; throws RuntimeError when there is a folder, or something else in its place, that cannot be listed.
std::vector<std::string> ListFilesOrFail(std::string_view pattern);
// The most recently written of them; empty when none matches. Ties go to the first in order.
std::string NewestFile(std::string_view pattern);

void DeleteFile(std::string_view path);  // 53 when it does not exist, 75 when it cannot be deleted
// Copies the bytes as they are, whole or not at all.
void CopyFile(std::string_view from, std::string_view to);
void MakeFolder(std::string_view path);  // with its parents
void DeleteFolder(
    std::string_view path);  // with all that is in it; what is not there or cannot be deleted is passed over

std::string ReadFile(std::string_view path);
// Written beside the target, flushed to the disk and renamed over it: the target is the old file or the new one. What
// lies in an unfinished folder is thrown away with it, and is not flushed.
void WriteFile(std::string_view path, std::string_view bytes);

// What the name of an unfinished file begins with; nobody lists it. It is locked while its program lives: what killed
// programs of this machine have left goes with the next write into the folder, another machine's an hour later.
inline constexpr std::string_view kUnfinished = ".tarvolinex-";
void RemoveUnfinished(std::string_view folder);

// A name beside the target that is this program's alone while it lives, for a file that a library writes: what stands
// under the name and whatever longer one goes with it. Throws RuntimeError when nothing can be written there.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(std::string_view target);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  int handle_ = -1;
};

// A file that is written in pieces beside its target and takes the target's place in Commit; without Commit nothing
// of it remains. A link is followed. Cannot be used for an existing folder, a device or a pipe.
class WholeFile {
 public:
  explicit WholeFile(std::string_view path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  void Write(std::string_view bytes);
  void Commit();

 private:
  void Fail(const char* doing) const;
  std::string target_, beside_;
  bool passing_;  // in a folder that is not finished: it goes with it, and is not flushed
  int handle_ = -1;
};

// Keeps a file for this program alone while it lives.
class FileLock {
 public:
  // Throws 55 when another running program still holds the file after the patience, 75 when it cannot be opened; it is
  // made when it is missing and `make` is set.
  FileLock(std::string_view path, std::chrono::seconds patience, bool make = false);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  int handle_ = -1;
};

// The same for a folder, by a file in it.
class FolderLock {
 public:
  explicit FolderLock(std::string_view folder, std::chrono::seconds patience = {})
      : lock_(std::string(folder) + "\\tarvolinex.lock", patience, true) {}

 private:
  FileLock lock_;
};

// The folder of the running program, and the folder of this user's data of the named program.
// Sees to it that no file is ever opened in the place of a standard stream that the program was started without, and
// that a reader who goes away is a failure to write. Called first of all.
void ReserveStandardStreams();

std::string ProgramFolder();
std::string UserDataFolder(std::string_view program);
std::string HomeFolder();
std::string CurrentFolder();

// The name under which the user of this program has signed on to the machine.
std::string LoginName();

}  // namespace tarvolinex
