// Folders and files of this program's alone, beside a target, in which several calculators are built at once.
#pragma once

#include <string>

#include "distribute/InstallPackage.h"
#include "platform/files/Files.h"

namespace tarvolinex {

class WorkFolders {
 public:
  // Throws RuntimeError when nothing can be written beside the target.
  explicit WorkFolders(const std::string& target) : unfinished_(target) {}

  std::string Of(std::size_t number) const { return Name(number) + "\\"; }
  // A file for what the folder of that number is packed into.
  std::string FileOf(std::size_t number, int sendType) const {
    return Name(number) + (sendType == kSendZip ? ".zip" : ".exe");
  }

 private:
  std::string Name(std::size_t number) const { return unfinished_.Path() + "." + std::to_string(number); }
  UnfinishedFile unfinished_;
};

}  // namespace tarvolinex
