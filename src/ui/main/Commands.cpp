// Menus and toolbar of the main window.
#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/Reports.h"
#include "publish/CalculatorFolder.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "store/Forms.h"
#include "store/Statements.h"
#include "store/Suppliers.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FRmCreateDB.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmLeaseOrgDetails.h"
#include "ui/main/FrmMain.h"
#include "ui/main/FrmSearch.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

void FrmMain::WireMenus() {
  menus.MnuOpen.Click = [] {
    SavePendingChanges();
    SaveContact();  // it belongs to the database that is left
    bool askUser = true;
    OpenDatabase(askUser);
  };
  menus.MnuExit.Click = [this] {
    SavePendingChanges();
    SaveContact();
    Close();
  };
  menus.MnuAdd.Click = [this] {
    ForgetUneditedFields();
    SupplierCommand(0);
  };
  menus.MnuRemove.Click = [this] { SupplierCommand(1); };
  menus.MnuSaveDefault.Click = [this] { SaveAsDefault(); };
  menus.MnuRefresh.Click = [this] { RefreshSupplierList(); };
  menus.MnuSearch.Click = [this] { ShowContactSearch(); };
  menus.MnuUndoRemove.Click = [this] {
    SaveShown();
    const int contact = UndoRemove();
    LvwSuppliers_ItemClick();
    SelectContact(contact);
  };
  menus.MnuCreate.Click = [this] { CreateNewDatabase(); };
  menus.MnuDetails.Click = [this] { ShowOrganisationDetails(); };
  menus.MnuHelpPage.Click = [] { ShowHelpPage(0); };
  menus.MnuAbout.Click = [this] { ShowAbout(); };
  menus.MnuPreview.Click = [this] { Preview(); };
  menus.MnuPreferences.Click = [this] { ShowOptions(false); };
}

void FrmMain::Toolbar1_ButtonClick(const std::string& key) {
  // While a new supplier has no name only Remove is free, and abandons it.
  if (LvwSuppliers.Find("ID0") >= 0 && Nameless()) return SupplierCommand(kUndo);
  SavePendingChanges();
  if (key == "ADDNEW") SupplierCommand(0);
  if (key == "REMSUPP") SupplierCommand(1);
  if (key == "SEARCH") ShowContactSearch();
  if (key == "REFRESH") RefreshSupplierList();
  if (key == "EDITPROP") ShowOptions(false);
  if (key == "FORMS") ShowOptions(true);
  if (key == "PREVIEW") Preview();
  if (key == "HELP") ShowHelpPage(0);
  if (key != "SAVE") return;
  SaveShown();
  if (!SupplierChanged && !ContactChanged) TxtStatus.SetText(Tr("Saved"));
}

void FrmMain::SaveShown() {
  SavePendingChanges();
  SaveContact();
  if (ContactListStale) RefreshContacts();
}

void FrmMain::Preview() {
  SaveShown();
  PreviewCalculator();
}

void FrmMain::RefreshSupplierList() {
  SavePendingChanges();
  LoadFormsList(rateCard.LvwForms);
  LoadSupplierList(false);
  LvwSuppliers_ItemClick();
}

void FrmMain::SaveAsDefault() {
  const std::string text = ReplaceAliases(
      "You are about to save the current <SUPPLIER> as the default.\r\n\r\n"
      "Any new <SUPPLIER> created, on this database, will have their initial rates, commission etc set to the\r\n"
      "same as this <SUPPLIER>");
  const auto answer = TheDesktop().MessageBox(text, ReplaceAliases("Save as Default <SUPPLIER>"), BoxButtons::OkCancel,
                                              BoxIcon::Information);
  if (answer != Answer::Ok) return;
  SavePendingChanges();
  Transaction transaction;
  SaveSupplier(false);
  // The default's forms are only replaced by ticks that somebody has set.
  FormLinksChanged = formTicksChanged_;
  SaveSupplierFormLinks(0);
  transaction.Commit();
}

void FrmMain::CreateNewDatabase() {
  SavePendingChanges();
  SaveContact();
  FRmCreateDB create;
  TheDesktop().ShowModal(create);
}

void FrmMain::ShowAbout() {
  FrmAbout about;
  TheDesktop().ShowModal(about);
}

void FrmMain::ShowOptions(bool onForms) {
  SaveShown();
  FrmOptions options;
  options.OpenIconEditor = EditIcon;
  options.Load();
  if (onForms) options.ShowForms();
  TheDesktop().ShowModal(options);
}

void FrmMain::ShowOrganisationDetails() {
  SaveShown();
  FrmLeaseOrgDetails details;
  details.Load();
  TheDesktop().ShowModal(details);
}

void FrmMain::ShowContactSearch() {
  FrmSearch search;
  TheDesktop().ShowModal(search);
}

}  // namespace tarvolinex
