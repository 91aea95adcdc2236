// Contents that many rows share: each is stored once, in a table of IDs and contents.
#pragma once

#include <string>
#include <string_view>

#include "platform/data/Database.h"

namespace tarvolinex {

inline constexpr const char* kKeptRecordsTable = "KeptRecords";
inline constexpr const char* kDeliveredContentsTable = "DeliveredContents";

// The ID of the content in the table, which has it from now on. Throws RuntimeError.
std::string KeepContent(Connection& connection, std::string_view table, std::string_view content);

}  // namespace tarvolinex
