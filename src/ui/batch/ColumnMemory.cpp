#include "ui/batch/ColumnMemory.h"

#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// A name as it stands in the list, which "|" and "=" part.
std::string Plain(const std::string& name) {
  return FoldCase(ReplaceAll(ReplaceAll(ReplaceAll(ReplaceAll(name, "|", " "), "=", " "), "\n", " "), "\r", " "));
}

}  // namespace

ColumnMemory::ColumnMemory(std::string appFolder, ImportKind kind)
    : appFolder_(std::move(appFolder)),
      key_(kind == ImportKind::Suppliers ? "IMPORTSUPPLIERCOLUMNS" : "IMPORTCONTACTCOLUMNS") {
  try {
    const std::string list = ReadOption(appFolder_, key_, "");
    for (const std::string_view each : Split(list, '|')) {
      const std::size_t equals = each.find('=');
      if (equals != std::string_view::npos) fields_[std::string(each.substr(0, equals))] = each.substr(equals + 1);
    }
  } catch (const RuntimeError&) {
    // The columns are chosen anew.
  }
}

std::string ColumnMemory::FieldOf(const std::string& column) const {
  const auto found = fields_.find(Plain(column));
  return found == fields_.end() ? "" : found->second;
}

void ColumnMemory::Remember(const std::string& column, const std::string& field) {
  fields_[Plain(column)] = field;
  std::string list;
  for (const auto& [name, kept] : fields_) list += (list.empty() ? "" : "|") + name + "=" + kept;
  WriteIni(appFolder_, "General", "OPTIONS", key_, list);
}

}  // namespace tarvolinex
