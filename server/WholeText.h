// Small files that are there whole or not at all, whoever reads meanwhile and whatever ends the writer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvolinex::server {

// In place of what stands there, with its owner and rights; a new one gets the folder's group and is readable for it.
// Throws RuntimeError.
void WriteWholeText(const std::string& path, std::string_view text);

// Of an ordinary file at this very place; nullopt where there is none. Throws RuntimeError.
std::optional<std::string> ReadWholeText(const std::string& path);

// Whether a file of this name is one of theirs that is not finished, or whose writer was killed.
bool IsUnfinishedName(std::string_view name);

// A new one, which has no name until it is given it.
class NewText {
 public:
  // Throws RuntimeError.
  NewText(std::string path, std::string_view text);
  ~NewText();
  NewText(const NewText&) = delete;
  NewText& operator=(const NewText&) = delete;
  // False when there is one of that name already, which stays as it is. Throws RuntimeError.
  bool GiveName();

 private:
  std::string path_, beside_;
};

// The file with these bytes, which a later FlushDisk brings to the disk. Throws RuntimeError.
void BeginFile(const std::string& path, std::string_view bytes);

// Returns when everything that was written on the disk of this folder is there for good: one wait for many files.
void FlushDisk(const std::string& folder);

}  // namespace tarvolinex::server
