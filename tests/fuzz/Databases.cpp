// A database file of another program, or a damaged one: opened, shown and written to as the window does.
#include <filesystem>

#include "fuzz/Targets.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex::fuzz {

namespace {

void UseDatabase(FrmMain& form) {
  bool askUser = false;
  if (!form.OpenDatabase(askUser)) return;
  for (int row = 0; row < form.LvwSuppliers.Count() && row < 3; ++row) form.LvwSuppliers.ClickRow(row);
  form.supplier.TxtSupplier(kSupplierName).Type("Written");
  form.contacts.TxtContact(0).Type("Anybody");
  form.SavePendingChanges();
  form.NewSupplier();
}

void ReadDatabase(std::string_view bytes) {
  const std::string folder = Scratch() + "/database", around = TheRun().AppFolder;
  std::filesystem::create_directories(folder);
  Run& run = TheRun();
  run.AppFolder = run.DataFolder = folder;
  Put("database/Tarvolinex.mdb", bytes);
  {
    FrmMain form(run);
    Works([&] { UseDatabase(form); });
  }
  run.AppFolder = run.DataFolder = around;
  std::filesystem::remove_all(folder);
}

}  // namespace

std::vector<Target> DatabaseTargets() {
  return {{"database", ReadDatabase}};
}

}  // namespace tarvolinex::fuzz
