#include "publish/FolderFiles.h"

#include <string>

#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void DeleteFileIfPresent(std::string_view path) {
  try {
    for (const std::string& name : ListFiles(path)) DeleteFile(FolderOf(path) + "\\" + name);
  } catch (const RuntimeError&) {
    ShowError(Tr("Deletion of file (%1) Failed", {path}));
  }
}

void CopyFileOrStop(std::string_view source, std::string_view destination) {
  try {
    CopyFile(source, destination);
  } catch (const RuntimeError&) {
    ShowError(Tr("File Copy Failed. \n\n%1", {destination}), true);
  }
}

}  // namespace tarvolinex
