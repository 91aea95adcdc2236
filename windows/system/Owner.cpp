#include "system/Owner.h"

#include "system/Files.h"
#include "system/InstalledList.h"
#include "system/Names.h"
#include "system/Replacement.h"
#include "system/Shell.h"
#include "system/Text.h"

namespace tarvolinex::windows {

namespace {

constexpr wchar_t kPreferences[] = L"general.dat";
constexpr std::size_t kCompanyOffset = 202, kCompanySize = 30;

}  // namespace

std::wstring CompanyOf(const std::wstring& folder) {
  std::wstring company;
  const std::wstring path = folder + L"\\" + kPreferences;
  if (Exists(path)) {
    const std::string record = ReadWhole(path);
    if (record.size() >= kCompanyOffset + kCompanySize) {
      Decode(std::string_view(record).substr(kCompanyOffset, kCompanySize), kAnsi, company);
    }
  }
  return Squeezed(company);
}

std::wstring OwnTitle(const std::wstring& title, const std::wstring& source, const std::wstring& ending) {
  const std::wstring folder = CalculatorsFolder() + L"\\" + FolderNameFor(title) + ending;
  Recover(folder);  // of an exchange that was cut off half is missing there
  const std::wstring company = CompanyOf(source), there = CompanyOf(folder),
                     title_there = ReadInstalledList(folder).title;
  // Two titles may differ in what a folder's name cannot hold.
  const bool others =
      (!there.empty() && !SameName(company, there)) || (!title_there.empty() && !SameName(title, title_there));
  return others && !company.empty() ? title + L" (" + company + L")" : title;
}

}  // namespace tarvolinex::windows
