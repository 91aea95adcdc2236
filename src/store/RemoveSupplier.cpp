// Removing a supplier, and taking the last removal back.
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/Translation.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

// The row as a column list and a value list.
std::vector<Filling> RowLists(const Recordset& row) {
  std::string columns, values;
  for (int i = 0; i < row.ColumnCount(); ++i) {
    const Value value = row.Field(i);
    const auto* truth = std::get_if<bool>(&value);
    columns += (i > 0 ? "," : "") + row.ColumnName(i);
    values += i > 0 ? "," : "";
    values += IsNull(value) ? "NULL" : truth ? (*truth ? "YES" : "NO") : "'" + EscapeQuotes(ValueText(value)) + "'";
  }
  return {{"<FIELDS>", columns}, {"<VALUES>", values}};
}

// What puts the shown supplier with its contacts and form links back under their own IDs.
std::vector<std::string> RestoringStatements() {
  std::vector<std::string> restore;
  Recordset& suppliers = TheStore->SupplierRecords;
  suppliers.Find("ID=" + std::to_string(CurrentSupplierId));
  if (!suppliers.EndOfFile()) restore.push_back(FillStatement(statements::kInsertSupplier, RowLists(suppliers)));
  Recordset rows;
  OpenRecordset(FillStatement(statements::kContacts, "<SUPPLIERID>", CurrentSupplierId), rows);
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    restore.push_back(FillStatement(statements::kRestoreContact, RowLists(rows)));
  }
  OpenRecordset(FillStatement(statements::kFormLinks, "<ID>", CurrentSupplierId), rows);
  for (; !rows.EndOfFile(); rows.MoveNext()) {
    restore.push_back(FillStatement(statements::kInsertFormLink, {{"<formid>", rows.Field("FormId")},
                                                                  {"<supplierid>", std::int64_t{CurrentSupplierId}}}));
  }
  return restore;
}

void DeleteShownSupplier() {
  const std::vector<std::string> restore = RestoringStatements();
  Transaction transaction;
  ExecuteStatement(FillStatement(statements::kDeleteSupplier, "<ID>", CurrentSupplierId));
  ExecuteStatement(FillStatement(statements::kDeleteFormLinks, "<ID>", CurrentSupplierId));
  ExecuteStatement(FillStatement(statements::kDeleteContacts, "<supplierID>", CurrentSupplierId));
  transaction.Commit();
  RemovedSupplier = {CurrentSupplierId, restore};
  MainForm().menus.MnuUndoRemove.SetEnabled(true);
  SupplierChanged = false;
  // The contacts are gone with the supplier; what was typed for one of them has no owner any more.
  ContactChanged = false;
  LoadSupplierList(false);
}

}  // namespace

void RemoveSupplier() {
  ListView& list = MainForm().LvwSuppliers;
  if (list.Count() < 2) {
    TheDesktop().MessageBox(Tr("You can not delete the last supplier."), ReplaceAliases("<SUPPLIER> &  Delete"),
                            BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  const std::string name = list.Selected() < 0 ? std::string() : list.At(list.Selected()).text;
  const std::string question =
      ReplaceAliases("Are you sure you want to delete this <SUPPLIER>:") + "\n" + name + "\n" + Tr("Continue?");
  const auto answer =
      TheDesktop().MessageBox(question, ReplaceAliases("Remove <SUPPLIER>"), BoxButtons::YesNo, BoxIcon::Question);
  if (answer != Answer::Yes) return;
  SetStatus(false, ReplaceAliases("Removing <SUPPLIER>"), 20);
  try {
    DeleteShownSupplier();
  } catch (const RuntimeError&) {
    ShowError(ReplaceAliases("Delete <SUPPLIER> Failed"));
  }
  SetStatus(false, "", -1);
}

void UndoRemoveSupplier() {
  if (RemovedSupplier.statements.empty()) return;
  Transaction transaction;
  for (const std::string& statement : RemovedSupplier.statements) ExecuteStatement(statement);
  transaction.Commit();
  const int id = RemovedSupplier.id;
  RemovedSupplier = {};
  MainForm().menus.MnuUndoRemove.SetEnabled(false);
  LoadSupplierList(false);
  ListView& list = MainForm().LvwSuppliers;
  const int row = list.Find("ID" + std::to_string(id));
  if (row >= 0) list.Select(row);
}

}  // namespace tarvolinex
