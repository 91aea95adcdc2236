// Folders and files of this program's alone, beside a target, in which several calculators are built at once.
#pragma once

#include <string>

#include "distribute/InstallPackage.h"
#include "platform/files/Files.h"

namespace tarvolinex {

class WorkFolders {
 public:
  // Up to so many, numbered from 0. Throws RuntimeError when nothing can be written beside the target.
  WorkFolders(const std::string& target, std::size_t most) : unfinished_(target), most_(most) {}
  ~WorkFolders() {
    for (std::size_t i = 0; i < most_; ++i) {
      if (FolderExists(Of(i))) DeleteFolder(Of(i));
    }
  }
  WorkFolders(const WorkFolders&) = delete;
  WorkFolders& operator=(const WorkFolders&) = delete;

  std::string Of(std::size_t number) const { return Name(number) + "\\"; }
  // A file for what the folder of that number is packed into.
  std::string FileOf(std::size_t number, int sendType) const {
    return Name(number) + (sendType == kSendZip ? ".zip" : ".exe");
  }

 private:
  std::string Name(std::size_t number) const { return unfinished_.Path() + "." + std::to_string(number); }
  UnfinishedFile unfinished_;
  std::size_t most_;
};

}  // namespace tarvolinex
