#include "publish/FolderFiles.h"

#include <string>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void DeleteFileIfPresent(Reporter& reporter, std::string_view path) {
  try {
    for (const std::string& name : ListFiles(path)) DeleteFile(FolderOf(path) + "\\" + name);
  } catch (const RuntimeError&) {
    reporter.ShowError(Tr("Deletion of file (%1) Failed", {path}));
  }
}

void CopyFileOrStop(Reporter& reporter, std::string_view source, std::string_view destination) {
  try {
    CopyFile(source, destination);
  } catch (const RuntimeError&) {
    reporter.ShowError(Tr("File Copy Failed. \n\n%1", {destination}), true);
  }
}

}  // namespace tarvolinex
