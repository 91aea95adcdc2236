#include <algorithm>
#include <iostream>
#include <iterator>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/RecordJson.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

enum class RecordKind { Preferences, Supplier };

std::string Holds(const std::string& path, std::int64_t size) {
  return path + " holds " + std::to_string(size) + " bytes; a supplier's record has " +
         std::to_string(kSupplierCalcSettingsSize) + ", the preferences have " +
         std::to_string(kCalculatorPreferencesSize);
}

// The name tells where it is the one of a record, else the size.
RecordKind KindOfFile(const std::string& path) {
  const auto size = FileLength(path);
  const bool preferences = EqualNoCase(FileNameOf(path), "General.dat");
  if (preferences || EqualNoCase(FileNameOf(path), "Supplier.dat")) {
    if (size < (preferences ? kCalculatorPreferencesSize : kSupplierCalcSettingsSize)) {
      throw RuntimeError(kDeviceError, Holds(path, size));
    }
    return preferences ? RecordKind::Preferences : RecordKind::Supplier;
  }
  if (size >= kCalculatorPreferencesSize) return RecordKind::Preferences;
  if (size >= kSupplierCalcSettingsSize) return RecordKind::Supplier;
  throw RuntimeError(kDeviceError, Holds(path, size));
}

// A new file becomes the record that has every named field, or the one that its name says.
RecordKind KindOfNew(const std::string& path, const JsonObject& changes) {
  const auto fields = FieldsOf(SupplierCalcSettingsRecord());
  const bool supplier = std::all_of(changes.begin(), changes.end(), [&](const auto& change) {
    return std::any_of(fields.begin(), fields.end(), [&](const auto& f) { return f.name == change.first; });
  });
  if (EqualNoCase(FileNameOf(path), "General.dat")) return RecordKind::Preferences;
  if (EqualNoCase(FileNameOf(path), "Supplier.dat")) return RecordKind::Supplier;
  return supplier && !changes.empty() ? RecordKind::Supplier : RecordKind::Preferences;
}

template <typename Record>
void Show(const std::string& path) {
  Record record;
  ReadRecord(path, record);
  std::cout << FormatJsonObject(RecordToJson(record));
}

template <typename Record>
void Write(const std::string& path, const JsonObject& changes) {
  Record record;
  const std::string before = FileExists(path) ? ReadFile(path) : std::string();
  if (!before.empty()) ReadRecord(path, record);
  ChangeRecord(record, changes);
  std::string bytes = RecordBytes(record);
  // A field that is not named keeps its bytes, also those that the program would not write.
  const auto fields = FieldsOf(record);
  for (std::size_t i = 0; i < fields.size() && !before.empty(); ++i) {
    const auto start = static_cast<std::size_t>(fields[i].offset);
    const auto end = i + 1 < fields.size() ? static_cast<std::size_t>(fields[i + 1].offset) : bytes.size();
    const bool named =
        std::any_of(changes.begin(), changes.end(), [&](const auto& change) { return change.first == fields[i].name; });
    if (!named) bytes.replace(start, end - start, before, start, end - start);
  }
  WriteFile(path, before.size() > bytes.size() ? bytes + before.substr(bytes.size()) : bytes);
}

}  // namespace

int RunRecord(Run&, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 2);
  const auto& words = parsed.Words();
  if (words.size() != 2 || (words[0] != "show" && words[0] != "write")) {
    throw UsageError{"expected \"show FILE\" or \"write FILE\""};
  }
  const std::string& path = words[1];
  if (words[0] == "show") {
    KindOfFile(path) == RecordKind::Supplier ? Show<SupplierCalcSettingsRecord>(path)
                                             : Show<CalculatorPreferencesRecord>(path);
    return kDone;
  }
  const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
  const JsonObject changes = ParseJsonObject(text);
  const RecordKind kind = FileExists(path) ? KindOfFile(path) : KindOfNew(path, changes);
  kind == RecordKind::Supplier ? Write<SupplierCalcSettingsRecord>(path, changes)
                               : Write<CalculatorPreferencesRecord>(path, changes);
  return kDone;
}

}  // namespace tarvolinex
