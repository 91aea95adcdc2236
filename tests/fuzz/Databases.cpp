// A database file of another program, or a damaged one: opened, shown and written to as the window does.
#include "fuzz/Targets.h"
#include "support/TemporaryFolder.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex::fuzz {

namespace {

void UseDatabase(FrmMain& form) {
  bool askUser = false;
  if (!form.OpenDatabase(askUser)) return;
  for (int row = 0; row < form.LvwSuppliers.Count() && row < 3; ++row) form.LvwSuppliers.ClickRow(row);
  form.supplier.TxtSupplier(kSupplierName).Type("Written");
  form.contacts.TxtContact(0).Type("Anybody");
  static_cast<void>(form.SavePendingChanges());
  form.NewSupplier();
}

void ReadDatabase(std::string_view bytes) {
  const TemporaryFolder folder(Scratch());
  folder.File("Tarvolinex.mdb", std::string(bytes));
  Run run;
  run.AppFolder = run.DataFolder = folder.Path();
  FrmMain form(run);
  Works([&] { UseDatabase(form); });
}

}  // namespace

std::vector<Target> DatabaseTargets() {
  return {{"database", ReadDatabase}};
}

}  // namespace tarvolinex::fuzz
