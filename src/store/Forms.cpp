#include "store/Forms.h"

#include <limits>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

std::vector<FormRow> ReadForms(Recordset& records) {
  std::vector<FormRow> forms;
  for (; !records.EndOfFile(); records.MoveNext()) {
    forms.push_back({static_cast<int>(ValueNumber(records.Field("ID"))), ValueText(records.Field("Description")),
                     ValueText(records.Field("LinkName")), ValueTruth(records.Field("available"))});
  }
  return forms;
}

// An action statement whose failure its caller reports.
void Execute(Database& database, const std::string& statement) {
  database.KeepDailyCopy();
  database.Plain().Execute(statement);
}

std::string FillForm(std::string_view statement, const FormRow& form, const std::string& available) {
  return FillStatement(statement, {{"<DESCRIPTION>", EscapeQuotes(Trim(form.description))},
                                   {"<LINKNAME>", EscapeQuotes(Trim(form.linkName))},
                                   {"<AVAILABLE>", available},
                                   {"<ID>", std::int64_t{form.id}}});
}

int NewestFormId(Database& database) {
  Recordset newest;
  newest.Open(statements::kNewestForm, database.Plain());
  const double id = ValueNumber(NullToDefault(newest.Field("maxid"), std::int64_t{0}));
  if (id <= 0 || id > std::numeric_limits<std::int16_t>::max()) {
    throw RuntimeError(kOverflow, Tr("no ID is left for another form"));
  }
  return static_cast<int>(id);
}

}  // namespace

std::string FormPagePath(const std::string& dataFolder, int formId) {
  return dataFolder + "\\Forms\\" + std::to_string(formId) + ".HTML";
}

std::vector<FormRow> AvailableForms(Database& database) {
  Recordset records;
  database.OpenRecordset(statements::kAvailableForms, records);
  return ReadForms(records);
}

std::vector<FormRow> AllForms(Database& database) {
  Recordset records;
  records.Open(statements::kForms, database.Plain());
  return ReadForms(records);
}

std::vector<FormRow> LinkedForms(Database& database, int supplierId) {
  Recordset records;
  database.OpenRecordset(FillStatement(statements::kLinkedForms, "<ID>", supplierId), records);
  std::vector<FormRow> forms = ReadForms(records);
  for (FormRow& form : forms) form.linkName = Trim(form.linkName);  // they become names of files
  return forms;
}

FormRow ReadForm(Database& database, int formId) {
  Recordset records;
  records.Open(FillStatement(statements::kForm, "<ID>", formId), database.Plain());
  const auto forms = ReadForms(records);
  return forms.empty() ? FormRow() : forms.front();
}

std::vector<int> FormLinksOf(Database& database, int supplierId) {
  Recordset links;
  database.OpenRecordset(FillStatement(statements::kFormLinks, "<ID>", supplierId), links);
  std::vector<int> ids;
  for (; !links.EndOfFile(); links.MoveNext()) ids.push_back(static_cast<int>(ValueNumber(links.Field("Formid"))));
  return ids;
}

std::map<int, std::vector<int>> FormLinksOfAll(Database& database) {
  std::map<int, std::vector<int>> all;
  Recordset links;
  for (links.Open(statements::kAllFormLinks, database.Plain()); !links.EndOfFile(); links.MoveNext()) {
    all[static_cast<int>(ValueNumber(links.Field("Supplierid")))].push_back(
        static_cast<int>(ValueNumber(links.Field("Formid"))));
  }
  return all;
}

void ReplaceFormLinks(Database& database, int supplierId, const std::vector<int>& formIds) {
  Transaction transaction(database);
  database.ExecuteStatement(FillStatement(statements::kDeleteFormLinks, "<ID>", supplierId));
  for (const int form : formIds) {
    database.ExecuteStatement(FillStatement(
        statements::kInsertFormLink, {{"<formid>", std::int64_t{form}}, {"<supplierid>", std::int64_t{supplierId}}}));
  }
  transaction.Commit();
}

void SaveFormRow(Database& database, const FormRow& form) {
  Execute(database, FillForm(form.id != 0 ? statements::kUpdateForm : statements::kInsertForm, form,
                             form.available ? "True" : "False"));
}

int AddFormPage(Database& database, const std::string& description, const std::string& pagePath) {
  Connection& connection = database.Plain();
  database.KeepDailyCopy();
  connection.Begin();
  std::string copied;
  try {
    Execute(database, FillForm(statements::kInsertForm, {0, description, description, true}, "Yes"));
    const int id = NewestFormId(database);
    const std::string folder = database.Folder() + "\\Forms", page = FormPagePath(database.Folder(), id);
    if (!FolderExists(folder)) MakeFolder(folder);
    CopyFile(pagePath, page);
    copied = page;
    connection.Commit();
    return id;
  } catch (const RuntimeError&) {
    connection.Rollback();
    if (!copied.empty() && FileExists(copied)) DeleteFile(copied);
    throw;
  }
}

void DeleteUnavailableLinks(Database& database) {
  Execute(database, std::string(statements::kDeleteUnavailableLinks));
}

}  // namespace tarvolinex
