// Days as texts.
#pragma once

#include <chrono>
#include <string>

namespace tarvolinex {

// The local day as YYYY-MM-DD.
std::string IsoDate(std::chrono::system_clock::time_point when);

}  // namespace tarvolinex
