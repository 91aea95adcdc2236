#include "store/FormPages.h"

#include <limits>

#include "core/Globals.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DailyCopy.h"
#include "store/Forms.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

// An action statement whose failure its caller reports.
void Execute(const std::string& statement) {
  if (!TheStore->connection.InTransaction()) KeepDailyCopy();
  TheStore->connection.Execute(statement);
}

std::string FillForm(std::string_view statement, int formId, const FormDetails& details, const std::string& available) {
  return FillStatement(statement, {{"<DESCRIPTION>", EscapeQuotes(Trim(details.description))},
                                   {"<LINKNAME>", EscapeQuotes(Trim(details.linkName))},
                                   {"<AVAILABLE>", available},
                                   {"<ID>", std::int64_t{formId}}});
}

int NewestFormId() {
  Recordset newest;
  newest.Open(statements::kNewestForm, TheStore->connection);
  const double id = ValueNumber(NullToDefault(newest.Field("maxid"), std::int64_t{0}));
  if (id <= 0 || id > std::numeric_limits<std::int16_t>::max()) {
    throw RuntimeError(kOverflow, Tr("no ID is left for another form"));
  }
  return static_cast<int>(id);
}

}  // namespace

void SaveFormRow(int formId, const FormDetails& details) {
  Execute(FillForm(formId != 0 ? statements::kUpdateForm : statements::kInsertForm, formId, details,
                   details.available ? "True" : "False"));
}

int AddFormPage(const std::string& description, const std::string& pagePath) {
  Connection& connection = TheStore->connection;
  KeepDailyCopy();
  connection.Begin();
  std::string copied;
  try {
    Execute(FillForm(statements::kInsertForm, 0, {description, description, true}, "Yes"));
    const int id = NewestFormId();
    const std::string folder = DataFolder + "\\Forms";
    if (!FolderExists(folder)) MakeFolder(folder);
    CopyFile(pagePath, FormPagePath(id));
    copied = FormPagePath(id);
    connection.Commit();
    return id;
  } catch (const RuntimeError&) {
    connection.Rollback();
    if (!copied.empty() && FileExists(copied)) DeleteFile(copied);
    throw;
  }
}

void DeleteUnavailableLinks() {
  Execute(std::string(statements::kDeleteUnavailableLinks));
}

}  // namespace tarvolinex
