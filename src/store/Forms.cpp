#include "store/Forms.h"

#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

std::string FormPagePath(int formId) {
  return DataFolder + "\\Forms\\" + std::to_string(formId) + ".HTML";
}

namespace {

void FillFormsList(ListView& list) {
  Recordset& records = TheStore->FormRecords;
  OpenRecordset(statements::kAvailableForms, records);
  for (; !records.EndOfFile(); records.MoveNext()) {
    const int id = static_cast<int>(ValueNumber(records.Field("ID")));
    if (!FileExists(FormPagePath(id))) continue;
    const std::string description(Trim(ValueText(records.Field("Description"))));
    list.Add({"ID" + std::to_string(id),
              std::string(Trim(ValueText(records.Field("LinkName")))),
              {},
              Tr("Double click to view <%1> form", {description})});
  }
}

}  // namespace

void LoadFormsList(ListView& list) {
  SetStatus(false, "Loading forms List", 30);
  list.BeginFill();
  list.Clear();
  try {
    FillFormsList(list);
  } catch (const RuntimeError& failure) {
    ShowError(failure.Description());
  }
  list.EndFill();
  FormLinksChanged = false;
  SetStatus(false, "", -1);
}

void LoadSupplierFormLinks(int supplierId) {
  SetStatus(false, ReplaceAliases("Getting Forms"), 40);
  ListView& list = MainForm().rateCard.LvwForms;
  try {
    Recordset& links = TheStore->FormLinkRecords;
    OpenRecordset(FillStatement(statements::kFormLinks, "<ID>", supplierId), links);
    for (int row = 0; row < list.Count(); ++row) {
      if (list.At(row).checked) list.SetChecked(row, false);
    }
    for (; !links.EndOfFile(); links.MoveNext()) {
      list.SetChecked(list.Find("ID" + ValueText(links.Field("Formid"))), true);
    }
  } catch (const RuntimeError&) {
    ShowError(ReplaceAliases("Error Getting <SUPPLIER> List"));
  }
  FormLinksChanged = false;
  SetStatus(false, "", -1);
}

void SaveSupplierFormLinks(int supplierId) {
  if (supplierId == 0 && !FormLinksChanged) return;
  SetStatus(false, "Saving froms", 60);
  Transaction transaction;
  ExecuteStatement(FillStatement(statements::kDeleteFormLinks, "<ID>", supplierId));
  for (const auto& row : MainForm().rateCard.LvwForms.Rows()) {
    if (!row.checked) continue;
    ExecuteStatement(FillStatement(statements::kInsertFormLink, {{"<formid>", std::int64_t{IdOfKey(row.key)}},
                                                                 {"<supplierid>", std::int64_t{supplierId}}}));
  }
  transaction.Commit();
  FormLinksChanged = false;
  SetStatus(false, "", -1);
}

}  // namespace tarvolinex
