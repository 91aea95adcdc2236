// The archive component: unpacks a package into a folder and packs a folder's files.
#pragma once

#include <functional>
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
  // Of the self-extracting form.
  std::string SfxModule;         // the program that unpacks
  std::string SfxIcon;           // an .ICO file; empty for the module's own
  std::string SfxDefaultFolder;  // "%t": a folder in the user's temporary folder
  std::string SfxCommand;        // what is started after unpacking
  std::string SfxTitle;
  std::function<void(int percent)> Progress;  // of Zip

  // Unpacks every file of ZipFileName, with its folders, below UnzipToFolder, each whole or not at all and replacing
  // what stands there; a file whose name differs only in case is replaced too. An entry that would land outside the
  // folder, or whose check sum is wrong, throws RuntimeError; nothing is written before every name has been checked.
  void Unzip() const;

  // Packs the matching files without folder parts into a new ZipFileName, written whole or not at all: a name that ends
  // in ".zip" becomes a plain archive, without setup.exe and CalcInstall.CAB, because mail providers reject archives
  // with a program inside; any other name a self-extracting program. What ZipFileName held is not packed. Returns 0, or
  // a code that ErrorDescription explains.
  int Zip();
  const std::string& ErrorDescription() const { return error_; }

 private:
  int Pack(const std::string& archive);
  void Finish(const std::string& archive) const;
  bool IsPlain() const;
  std::string error_;
};

}  // namespace tarvolinex
