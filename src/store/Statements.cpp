#include "store/Statements.h"

#include <algorithm>
#include <utility>

#include "core/Globals.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DailyCopy.h"

namespace tarvolinex {

namespace {

// Runs a step on the connection; its failure is the fatal report of an action statement.
template <typename Action>
void Report(Action action) {
  try {
    action();
  } catch (const RuntimeError&) {
    const auto& errors = TheStore->connection.Errors();
    ShowError(errors.empty() ? Tr("Database update failed") : Tr("Database update failed.\n\n%1", {errors.front()}),
              true);
  }
}

}  // namespace

void OpenRecordset(std::string_view statement, Recordset& recordSet, bool readFirst) {
  try {
    recordSet.Open(statement, TheStore->connection);
    if (readFirst) static_cast<void>(recordSet.EndOfFile());
  } catch (const RuntimeError&) {
    ShowError("Database Error", true);
  }
}

void ExecuteStatement(std::string_view statement) {
  if (!TheStore->connection.InTransaction()) KeepDailyCopy();
  Report([&] { TheStore->connection.Execute(statement); });
}

std::string FillStatement(std::string_view statement, const std::vector<Filling>& fillings) {
  std::string filled;
  while (!statement.empty()) {
    const auto open = std::min(statement.find('<'), statement.size());
    filled += statement.substr(0, open);
    statement.remove_prefix(open);
    const auto filling = std::find_if(fillings.begin(), fillings.end(), [&](const Filling& f) {
      return EqualNoCase(statement.substr(0, f.placeholder.size()), f.placeholder);
    });
    if (filling != fillings.end()) {
      filled += ValueText(filling->value);
      statement.remove_prefix(filling->placeholder.size());
    } else if (!statement.empty()) {
      filled += statement.front();
      statement.remove_prefix(1);
    }
  }
  return filled;
}

std::string FillStatement(std::string_view statement, std::string_view placeholder, const Value& value) {
  return FillStatement(statement, {{placeholder, value}});
}

std::string FillStatement(std::string_view statement, std::string_view placeholder, int value) {
  return FillStatement(statement, placeholder, Value(std::int64_t{value}));
}

Value NullToDefault(const Value& value, const Value& fallback) {
  return IsNull(value) ? fallback : value;
}

std::string EscapeQuotes(std::string_view text) {
  return ReplaceAll(text, "'", "`");
}

Transaction::Transaction() {
  if (!TheStore->connection.InTransaction()) KeepDailyCopy();
  Report([] { TheStore->connection.Begin(); });
}

Transaction::~Transaction() {
  Abandon();
}

void Transaction::Abandon() {
  if (!std::exchange(open_, false)) return;
  try {
    TheStore->connection.Rollback();
  } catch (const RuntimeError&) {
    // The statement that failed has already been reported, and has rolled back by itself.
  }
}

void Transaction::Commit() {
  Report([] { TheStore->connection.Commit(); });
  open_ = false;
}

}  // namespace tarvolinex
