// Where work finds and leaves its files.
#pragma once

#include <string>

namespace tarvolinex {

struct Folders {
  std::string app;         // settings, the pages, the instruction texts
  std::string data;        // database, form pages, pictures, icons
  std::string calculator;  // the published calculator; ends with "\", the others do not
};

}  // namespace tarvolinex
