// Deleting and copying with their reports.
#pragma once

#include <string_view>

#include "core/Reports.h"

namespace tarvolinex {

// Deletes every file that the path, which may hold wildcards, matches. A failure is reported, not fatal.
void DeleteFileIfPresent(Reporter& reporter, std::string_view path);

// Copies one file over its destination. A failure is a fatal report.
void CopyFileOrStop(Reporter& reporter, std::string_view source, std::string_view destination);

}  // namespace tarvolinex
