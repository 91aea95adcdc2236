#include "system/Replacement.h"

#include <windows.h>

#include "system/Failure.h"
#include "system/Files.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

// Names the new files from before the first one moves until the new version is the installed one.
constexpr wchar_t kPending[] = L"Pending.lst";

std::wstring NewFolder(const std::wstring& folder) {
  return folder + L".tarvolinex-new";
}
std::wstring OldFolder(const std::wstring& folder) {
  return folder + L".tarvolinex-old";
}

void WriteNew(const std::wstring& path, std::string_view bytes) {
  OutputFile file(path);
  file.Write(bytes);
  file.Close();
}

void CopyNew(const std::wstring& from, const std::wstring& to) {
  const InputFile source(from);
  OutputFile file(to);
  constexpr std::uint64_t kPiece = 1 << 20;
  for (std::uint64_t done = 0; done < source.Size(); done += kPiece) {
    const std::uint64_t rest = source.Size() - done;
    file.Write(source.ReadAt(done, static_cast<std::size_t>(rest < kPiece ? rest : kPiece)));
  }
  file.Close();
}

// The new files that have taken their places already go back; one may be the running program, which Windows does not
// delete.
void TakeOutNewFiles(const std::wstring& folder) {
  std::wstring text;
  const std::wstring made = NewFolder(folder) + L"\\";
  if (!Decode(ReadWhole(made + kPending), kUtf8, text)) return;
  for (const std::wstring& name : Lines(text)) {
    const std::wstring placed = folder + L"\\" + name;
    if (IsPlainName(name) && !Exists(made + name) && Exists(placed)) Move(placed, made + name, false);
  }
}

}  // namespace

void Recover(const std::wstring& folder) {
  if (Exists(NewFolder(folder) + L"\\" + kPending)) {
    TakeOutNewFiles(folder);
    for (const std::wstring& name : FileNames(OldFolder(folder))) {
      Move(OldFolder(folder) + L"\\" + name, folder + L"\\" + name, true);
    }
  }
  RemoveFolder(OldFolder(folder));
  RemoveFolder(NewFolder(folder));
}

Replacement::Replacement(const std::wstring& folder) : folder_(folder) {
  Recover(folder);
  old_ = ReadInstalledList(folder);
  MakeFolder(FolderOf(folder));
  if (!CreateDirectoryW(NewFolder(folder).c_str(), nullptr)) {
    ThrowLastError(L"Making the folder", NewFolder(folder));
  }
}

Replacement::~Replacement() {
  if (committed_) return;
  try {
    Recover(folder_);
  } catch (const Failure&) {
    return;  // The next start tries again.
  }
  if (made_folder_) RemoveDirectoryW(folder_.c_str());
  RemoveDirectoryW(FolderOf(folder_).c_str());  // when it was the only one
}

void Replacement::Add(const std::wstring& source) {
  const std::wstring name = NameOf(source), target = folder_ + L"\\" + name;
  if (Exists(target) && !Contains(old_.files, name)) {
    throw Failure{target + L" is not part of an older version. Please move it away; nothing was installed."};
  }
  CopyNew(source, NewFolder(folder_) + L"\\" + name);
  files_.push_back(name);
}

void Replacement::Exchange(InstalledList list) {
  list.files = files_;
  WriteNew(NewFolder(folder_) + L"\\" + kInstalledList, InstalledListText(list));
  files_.push_back(kInstalledList);
  std::wstring names;
  for (const std::wstring& name : files_) names += name + L"\r\n";
  made_folder_ = !IsFolder(folder_);
  MakeFolder(folder_);
  MakeFolder(OldFolder(folder_));
  WriteNew(NewFolder(folder_) + L"\\" + kPending, ToUtf8(names));
  std::vector<std::wstring> old_files = old_.files;
  old_files.push_back(kInstalledList);
  for (const std::wstring& name : old_files) {
    const std::wstring from = folder_ + L"\\" + name;
    if (Exists(from)) Move(from, OldFolder(folder_) + L"\\" + name, false);
  }
  for (const std::wstring& name : files_) Move(NewFolder(folder_) + L"\\" + name, folder_ + L"\\" + name, false);
}

void Replacement::Commit() {
  Delete(NewFolder(folder_) + L"\\" + kPending);
  committed_ = true;
  RemoveFolder(OldFolder(folder_));
  RemoveFolder(NewFolder(folder_));
}

}  // namespace tarvolinex::windows
