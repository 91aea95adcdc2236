// A database file of another program, or a damaged one: opened, shown and written to as the window does.
#include <filesystem>

#include "core/Globals.h"
#include "fuzz/Targets.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex::fuzz {

namespace {

void UseDatabase(FrmMain& form) {
  bool askUser = false;
  if (!OpenDatabase(askUser)) return;
  for (int row = 0; row < form.LvwSuppliers.Count() && row < 3; ++row) form.LvwSuppliers.ClickRow(row);
  form.supplier.TxtSupplier(kSupplierName).Type("Written");
  form.supplier.TxtContact(0).Type("Anybody");
  SavePendingChanges();
  NewSupplier();
}

void ReadDatabase(std::string_view bytes) {
  const std::string folder = Scratch() + "/database", around = AppFolder;
  std::filesystem::create_directories(folder);
  ResetGlobals();
  AppFolder = DataFolder = folder;
  Put("database/Tarvolinex.mdb", bytes);
  {
    FrmMain form;
    Works([&] { UseDatabase(form); });
  }
  ResetGlobals();
  AppFolder = DataFolder = around;
  std::filesystem::remove_all(folder);
}

}  // namespace

std::vector<Target> DatabaseTargets() {
  return {{"database", ReadDatabase}};
}

}  // namespace tarvolinex::fuzz
