// "calcdata.txt": what the calculator page needs of its neighbours, for browsers that let a page on disk read none.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "publish/PageOptions.h"

namespace tarvolinex {

struct PublishedForm {
  std::string name;  // as its readers see it
  std::string file;  // in the calculator folder
  std::string text;  // the page with its markers, UTF-8
};

// One assignment to window.calcData, in ASCII: the day of making (YYYY-MM-DD, local time), the options that differ from
// their defaults, both records in base64, the forms. No value can end the script or an element around it.
std::string CalculatorData(std::chrono::system_clock::time_point made, const PageOptions& options,
                           std::string_view general, std::string_view supplier,
                           const std::vector<PublishedForm>& forms);

}  // namespace tarvolinex
