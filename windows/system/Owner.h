// Whose calculator a folder holds. Two leasing companies may give theirs the same name.
#pragma once

#include <string>

namespace tarvolinex::windows {

// The leasing company's name, from the preferences that travel with the calculator; empty when they name none.
std::wstring CompanyOf(const std::wstring& folder);

// The title under which the calculator in `source` is kept: its own, or with the company's name behind it where the
// folder that the title gives (with `ending` after it, among the calculators) holds another's. What an
// installation that was cut off has left there is put back first.
std::wstring OwnTitle(const std::wstring& title, const std::wstring& source, const std::wstring& ending = {});

}  // namespace tarvolinex::windows
