#include "setup/SetupList.h"

#include <algorithm>

#include "system/Failure.h"
#include "system/Files.h"
#include "system/Names.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

// "File7" and its like.
bool IsFileKey(const std::wstring& key) {
  return key.size() > 4 && StartsWithName(key, L"File") &&
         std::all_of(key.begin() + 4, key.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

// Without the calculator's own files there is none; pictures and form pages may have been left out on the way.
bool IsOptional(const std::wstring& name) {
  for (const wchar_t* needed : {L"calc.html", L"calcdata.txt", L"general.dat", L"Supplier.dat", L"setup.exe"}) {
    if (SameName(name, needed)) return false;
  }
  return true;
}

void AddFile(const std::wstring& path, const std::wstring& entry, SetupList& list) {
  // The name may hold commas itself.
  const std::wstring name = entry.substr(0, entry.find(L",$(AppPath),"));
  if (!IsPlainName(name)) {
    throw Failure{L"\"" + name + L"\" in " + path + L" is not the plain name of a file. Nothing was installed."};
  }
  for (const ListedFile& file : list.files) {
    if (SameName(file.name, name)) {
      throw Failure{L"\"" + name + L"\" is there twice in " + path + L". Nothing was installed."};
    }
  }
  list.files.push_back({name, IsOptional(name)});
}

}  // namespace

SetupList ReadSetupList(const std::wstring& path) {
  SetupList list;
  std::wstring text, section;
  Decode(ReadWhole(path), kAnsi, text);
  for (const std::wstring& line : Lines(text)) {
    if (!line.empty() && line.front() == L'[') section = Trimmed(line);
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring::npos) continue;
    const std::wstring key = Trimmed(line.substr(0, equals)), value = line.substr(equals + 1);
    if (SameName(section, L"[Setup]") && SameName(key, L"Title")) list.title = Squeezed(value);
    if (SameName(section, L"[Files]") && IsFileKey(key)) AddFile(path, value, list);
  }
  if (list.title.empty()) throw Failure{path + L" names no title. Nothing was installed."};
  if (list.files.empty()) throw Failure{path + L" names no files. Nothing was installed."};
  return list;
}

}  // namespace tarvolinex::windows
