// The files that are delivered with the program.
#pragma once

#include <filesystem>
#include <string>

namespace tarvolinex {

inline void DeliverInto(const std::string& folder) {
  const auto options = std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing;
  std::filesystem::copy(DELIVERED_FOLDER, folder, options);
}

}  // namespace tarvolinex
