// An install file looked through from its first to its last byte, before anybody can fetch it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/Records.h"

namespace tarvolinex::server {

struct PageFile {
  std::string name, bytes;
};

struct CheckedCalculator {
  CalculatorPreferencesRecord general;
  SupplierCalcSettingsRecord supplier;
  std::vector<PageFile> page;  // what a web server hands out of it: the page, its data, its pictures
  std::string logo;            // the name of one of them, "" without
};

// What is ours: a folder of self-extractors ("*.bin") and page templates ("*.html"), and limits in bytes.
struct Demands {
  std::string known;
  std::int64_t unpacked = 0;
};

// Takes the file at this path, whose bytes are given too, only when it is one of the self-extractors, with whatever
// icon, followed by its settings and its archive and nothing else; when the archive holds a calculator's files and no
// others, whole by their check sums and within the limits; and when each is what its name says: the page one of the
// templates with its last element filled in, the data one assignment of JSON that agrees with both records, a picture a
// picture. Throws Refusal, and RuntimeError when the machine fails.
CheckedCalculator CheckInstallFile(const std::string& path, std::string_view bytes, const Demands& demands);

}  // namespace tarvolinex::server
