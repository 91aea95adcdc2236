// How the fields of the organisation's preferences are called, and what they read, where two desks' meet.
#pragma once

#include <string>

#include "core/Run.h"

namespace tarvolinex {

// name: as the office's fields have it. As the options or the organisation's details call it; else the name.
std::string WordsOfField(const Run& run, const std::string& name);
// What is stored in it, as a person reads it.
std::string ShownField(const Run& run, const std::string& name, const std::string& text);

}  // namespace tarvolinex
