// The archive component: unpacks a package into a folder and packs a folder's files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

class ZipComponent {
 public:
  std::string ZipFileName;
  std::string UnzipToFolder;
  std::string FilesToProcess;  // a folder and a pattern: "...\calculator\*.*"
  std::string FilesToExclude;  // patterns, separated by carriage return and line feed; case-blind
  int CompressionLevel = 9;    // 0 to 9

  // Unpacks every file of ZipFileName, with its folders, below UnzipToFolder, each whole or not at all and replacing
  // what stands there; a file whose name differs only in case is replaced too. An entry that would land outside the
  // folder, or whose check sum is wrong, throws RuntimeError; nothing is written before every name has been checked.
  void Unzip() const;

  // Packs the matching files without folder parts into a new ZipFileName, written whole or not at all.
  // Returns 0, or a code that ErrorDescription explains.
  int Zip();
  const std::string& ErrorDescription() const { return error_; }

 private:
  std::string error_;
};

}  // namespace tarvolinex
