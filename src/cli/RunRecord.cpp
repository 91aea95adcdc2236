#include <algorithm>
#include <iostream>
#include <iterator>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace tarvolinex {

namespace {

enum class RecordKind { Preferences, Supplier };

RecordKind KindOfFile(const std::string& path) {
  const auto size = FileLength(path);
  if (size >= kCalculatorPreferencesSize) return RecordKind::Preferences;
  if (size >= kSupplierCalcSettingsSize) return RecordKind::Supplier;
  throw RuntimeError(kDeviceError, path + " holds " + std::to_string(size) + " bytes; a supplier's record has " +
                                       std::to_string(kSupplierCalcSettingsSize) + ", the preferences have " +
                                       std::to_string(kCalculatorPreferencesSize));
}

// A new file becomes the record that has every named field, or the one that its name says.
RecordKind KindOfNew(const std::string& path, const JsonObject& changes) {
  const auto fields = FieldsOf(SupplierCalcSettingsRecord());
  const bool supplier = std::all_of(changes.begin(), changes.end(), [&](const auto& change) {
    return std::any_of(fields.begin(), fields.end(), [&](const auto& f) { return f.name == change.first; });
  });
  if (changes.empty())
    return EqualNoCase(FileNameOf(path), "Supplier.dat") ? RecordKind::Supplier : RecordKind::Preferences;
  return supplier ? RecordKind::Supplier : RecordKind::Preferences;
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
  if (FileExists(path)) ReadRecord(path, record);
  ChangeRecord(record, changes);
  WriteRecord(path, record);
}

}  // namespace

int RunRecord(const std::vector<std::string>& arguments) {
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
