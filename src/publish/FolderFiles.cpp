#include "publish/FolderFiles.h"

#include <string>

#include "core/Reports.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"

namespace tarvolinex {

void DeleteFileIfPresent(std::string_view path) {
  try {
    for (const std::string& name : ListFiles(path)) DeleteFile(FolderOf(path) + "\\" + name);
  } catch (const RuntimeError&) {
    ShowError("Deletion of file (" + std::string(path) + ") Failed");
  }
}

void CopyFileOrStop(std::string_view source, std::string_view destination) {
  try {
    CopyFile(source, destination);
  } catch (const RuntimeError&) {
    ShowError("File Copy Failed. \n\n" + std::string(destination), true);
  }
}

}  // namespace tarvolinex
