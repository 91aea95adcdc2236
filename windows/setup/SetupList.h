// "Setup.lst": what is installed. docs/formats.md describes it.
#pragma once

#include <string>
#include <vector>

namespace tarvolinex::windows {

struct ListedFile {
  std::wstring name;
  bool optional = false;  // may be missing: the icon, pictures and form pages, which a calculator can do without
};

struct SetupList {
  std::wstring title;
  std::vector<ListedFile> files;
};

// Reads a list. Failures: a title that is empty, a name that is no plain file name or comes twice, no files at all.
SetupList ReadSetupList(const std::wstring& path);

}  // namespace tarvolinex::windows
