// Tables out of the database and into it.
#include "controls/Desktop.h"
#include "exchange/TableExport.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "ui/batch/FrmImport.h"
#include "ui/batch/FrmRates.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

void FrmMain::ShowImport() {
  if (!MayStore()) return;
  if (!SaveShown()) return;
  FrmImport import(run, database, [this](RemovedRows undo) { TakeChanges(std::move(undo)); });
  TheDesktop().ShowModal(import);
}

void FrmMain::ShowRates(bool copies) {
  if (!MayStore()) return;
  if (!SaveShown()) return;
  FrmRates rates(run, database, {shown.CurrentSupplierId, supplier.Name().Text(), copies},
                 [this](RemovedRows undo) { TakeChanges(std::move(undo)); });
  TheDesktop().ShowModal(rates);
}

void FrmMain::TakeChanges(RemovedRows undo) {
  const int id = shown.CurrentSupplierId;
  LoadStartLists();
  ShowAgain(id);
  OfferUndo(std::move(undo));
}

// Where the user was before the lists were filled anew.
void FrmMain::ShowAgain(int supplierId) {
  const int row = LvwSuppliers.Find("ID" + std::to_string(supplierId));
  if (supplierId == shown.CurrentSupplierId || row < 0) return;
  LvwSuppliers.Select(row);
  LvwSuppliers_ItemClick();
}

void FrmMain::Export(ImportKind kind) {
  if (!SaveShown()) return;
  const bool suppliers = kind == ImportKind::Suppliers;
  const std::string title = suppliers ? run.ReplaceAliases(Tr("Export <SUPPLIER>s")) : Tr("Export Contacts");
  const std::string path = TheDesktop().SaveFile(
      {title, "", suppliers ? "Suppliers.xlsx" : "Contacts.xlsx",
       Tr("Spreadsheet (*.xlsx)|*.xlsx|Comma-separated values (*.csv)|*.csv|All files (*.*)|*.*")});
  if (path.empty()) return;
  if (FileExists(path) && run.MessageBox(Tr("%1 exists. Replace it?", {path}), title, BoxButtons::YesNo,
                                         BoxIcon::Question) != Answer::Yes) {
    return;
  }
  try {
    ExportTable(database, kind, path);
    run.SetNote(Tr("Saved %1", {path}));
  } catch (const RuntimeError& failure) {
    run.ShowError(failure.Description());
  }
}

}  // namespace tarvolinex
