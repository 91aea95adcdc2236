// Removing a supplier, and taking the last removal back.
#include <utility>

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

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

namespace {

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
  OfferUndo({CurrentSupplierId, 0, restore});
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
  // What is named is what is removed: the supplier that is shown, wherever the list stands.
  const int shown = list.Find("ID" + std::to_string(CurrentSupplierId));
  if (shown < 0) return;
  if (list.Selected() != shown) list.Select(shown);
  const std::string name = list.At(shown).text;
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

void OfferUndo(RemovedRows removed) {
  Menu& menu = MainForm().menus.MnuUndoRemove;
  Removed = std::move(removed);
  menu.SetTag(std::string("ALAIS=") + (Removed.contact == 0 ? "&Undo Remove <SUPPLIER>" : "&Undo Remove Contact"));
  menu.SetCaption(ReplaceAliases(GetTagValue(menu.Tag(), "ALAIS")));
  menu.SetEnabled(!Removed.statements.empty());
}

int UndoRemove() {
  const RemovedRows removed = Removed;
  if (removed.statements.empty()) return 0;
  OfferUndo({});
  if (removed.contact != 0 && !SupplierIsStored(removed.supplier)) {
    ShowError(ReplaceAliases("<SUPPLIER> Not Found Or has been deleted"));
    return 0;
  }
  {
    Transaction transaction;
    for (const std::string& statement : removed.statements) ExecuteStatement(statement);
    transaction.Commit();
  }
  if (removed.contact == 0) LoadSupplierList(false);
  ListView& list = MainForm().LvwSuppliers;
  if (const int row = list.Find("ID" + std::to_string(removed.supplier)); row >= 0) list.Select(row);
  return removed.contact;
}

}  // namespace tarvolinex
