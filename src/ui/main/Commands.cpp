// Menus and toolbar of the main window.
#include <set>

#include "controls/Desktop.h"
#include "core/Launcher.h"
#include "core/Settings.h"
#include "distribute/Upload.h"
#include "platform/text/Translation.h"
#include "store/SharedFiles.h"
#include "ui/batch/FrmBatch.h"
#include "ui/batch/FrmSent.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FRmCreateDB.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmLeaseOrgDetails.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/FrmMain.h"
#include "ui/main/FrmSearch.h"
#include "ui/main/FrmSharedDatabase.h"
#include "ui/options/FrmOptions.h"
#include "ui/quotes/FrmSchedule.h"
#include "ui/quotes/FrmTerms.h"

namespace tarvolinex {

void FrmMain::WireMenus() {
  menus.MnuOpen.Click = [this] {
    if (!MayLeave()) return;  // it belongs to the database that is left
    bool askUser = true;
    OpenDatabase(askUser);
  };
  menus.MnuQuotes.Click = [this] { ShowQuotes(); };
  menus.MnuImport.Click = [this] { ShowImport(); };
  menus.MnuExportSuppliers.Click = [this] { Export(ImportKind::Suppliers); };
  menus.MnuExportContacts.Click = [this] { Export(ImportKind::Contacts); };
  menus.MnuBatch.Click = [this] { ShowBatch(); };
  menus.MnuSent.Click = [this] { ShowSent(); };
  menus.MnuExit.Click = [this] {
    if (MayLeave() || LeavesUnstored()) Close();
  };
  menus.MnuAdd.Click = [this] {
    ForgetUneditedFields();
    SupplierCommand(0);
  };
  menus.MnuRemove.Click = [this] { SupplierCommand(1); };
  menus.MnuSaveDefault.Click = [this] { SaveAsDefault(); };
  menus.MnuRefresh.Click = [this] { RefreshSupplierList(); };
  menus.MnuSearch.Click = [this] { ShowContactSearch(); };
  menus.MnuCopyRates.Click = [this] { ShowRates(true); };
  menus.MnuChangeRates.Click = [this] { ShowRates(false); };
  menus.MnuUndoRemove.Click = [this] {
    if (!SaveShown()) return;
    const int contact = UndoRemove();
    LvwSuppliers_ItemClick();
    contacts.SelectContact(contact);
  };
  menus.MnuCreate.Click = [this] { CreateNewDatabase(); };
  menus.MnuShared.Click = [this] { ShowSharedDatabase(); };
  menus.MnuDetails.Click = [this] { ShowOrganisationDetails(); };
  menus.MnuHelpPage.Click = [this] { ShowHelpPage(run, 0); };
  menus.MnuAbout.Click = [this] { ShowAbout(); };
  menus.MnuPreview.Click = [this] { Preview(); };
  menus.MnuPreferences.Click = [this] { ShowOptions(false); };
  menus.MnuUpgrades.Click = [this] {
    LaunchDocument(run, VersionCheckAddress(OwnWebAccount(run), run.CalculatorPreferences));
  };
  menus.MnuMail.Click = [this] { ShowMailSettings(); };
}

void FrmMain::Toolbar1_ButtonClick(const std::string& key) {
  // While a new supplier has no name only Remove is free, and abandons it.
  if (LvwSuppliers.Find("ID0") >= 0 && Nameless()) return SupplierCommand(kUndo);
  if (!SavePendingChanges()) return;
  if (key == "ADDNEW") SupplierCommand(0);
  if (key == "REMSUPP") SupplierCommand(1);
  if (key == "SEARCH") ShowContactSearch();
  if (key == "REFRESH") RefreshSupplierList();
  if (key == "EDITPROP") ShowOptions(false);
  if (key == "FORMS") ShowOptions(true);
  if (key == "PREVIEW") Preview();
  if (key == "HELP") ShowHelpPage(run, 0);
  if (key != "SAVE" || !SaveShown()) return;
  if (shown.SupplierChanged || contacts.ContactChanged) return;
  const std::string said = correction_ ? Tr("Saved. %1", {note_}) : Tr("Saved");
  SetNote("");
  TxtStatus.SetText(said);
}

bool FrmMain::SaveShown() {
  if (!SaveAll()) return false;
  if (contacts.ContactListStale) contacts.RefreshContacts();
  return true;
}

void FrmMain::Preview() {
  if (SaveShown()) PreviewCalculator();
}

void FrmMain::RefreshSupplierList() {
  if (!MayLeave()) return;
  ShareFiles(database, run);
  LoadStartLists();
}

void FrmMain::SaveAsDefault() {
  if (!MayStore()) return;
  const std::string text = run.ReplaceAliases(
      "You are about to save the current <SUPPLIER> as the default.\r\n\r\n"
      "Any new <SUPPLIER> created, on this database, will have their initial rates, commission etc set to the\r\n"
      "same as this <SUPPLIER>");
  const auto answer = TheDesktop().MessageBox(text, run.ReplaceAliases("Save as Default <SUPPLIER>"),
                                              BoxButtons::OkCancel, BoxIcon::Information);
  if (answer != Answer::Ok) return;
  if (SavePendingChanges()) StoreAsDefault();
}

void FrmMain::CreateNewDatabase() {
  if (!SaveAll()) return;
  FRmCreateDB create(run, [this](bool& askUser) { return OpenDatabase(askUser); });
  TheDesktop().ShowModal(create);
}

void FrmMain::ShowSharedDatabase() {
  if (!SaveAll()) return;
  FrmSharedDatabase shared(run, [this] {
    bool askUser = false;
    return OpenDatabase(askUser);
  });
  TheDesktop().ShowModal(shared);
}

void FrmMain::ShowAbout() {
  FrmAbout about(run);
  TheDesktop().ShowModal(about);
}

void FrmMain::ReloadForms() {
  forms.LoadFormsList();
  forms.LoadSupplierFormLinks(shown.CurrentSupplierId);
  standing.LookAtAll();
}

void FrmMain::Serve(FrmOptions& options) {
  options.Around.openIconEditor = [this](const std::string& icon, const FrmOptions::IconSaved& saved) {
    EditIcon(run, icon, saved);
  };
  options.Around.agree = [this](const Organisation& before, Organisation& edited) {
    return AgreeWithOffice(before, edited);
  };
  options.Around.preferencesSaved = [this] { UsePreferences(); };
  options.Around.formsChanged = [this] { ReloadForms(); };
  options.Around.preview = [this] { PreviewCalculator(); };
  options.Around.previewForm = [this](const std::string& page) { PreviewFormPage(page); };
}

void FrmMain::ShowOptions(bool onForms) {
  if (!SaveShown()) return;
  FrmOptions options(run, database);
  Serve(options);
  options.Load();
  if (onForms) options.ShowForms();
  TheDesktop().ShowModal(options);
  if (ShareFiles(database, run)) ReloadForms();
}

void FrmMain::ShowOrganisationDetails() {
  if (!SaveShown()) return;
  FrmLeaseOrgDetails details(
      run, [this] { UsePreferences(); },
      [this](CalculatorPreferencesRecord& edited) { return AgreeOnDetails(edited); });
  details.Load();
  TheDesktop().ShowModal(details);
}

void FrmMain::ShowContactSearch() {
  if (!SavePendingChanges()) return;
  FrmSearch search(run, database, [this](int supplierId, int contactId) { ShowContact(supplierId, contactId); });
  TheDesktop().ShowModal(search);
}

void FrmMain::ShowMailSettings() {
  if (!SavePendingChanges()) return;
  FrmMailSettings settings(run);
  TheDesktop().ShowModal(settings);
}

void FrmMain::ShowBatch() {
  if (!SaveShown()) return;
  std::set<int> found;
  if (!TxtFilter.Text().empty()) {
    for (const ListView::Row& row : LvwSuppliers.Rows()) {
      if (!row.hidden) found.insert(IdOfKey(row.key));
    }
  }
  FrmBatch batch(run, database, OwnBranding(), OwnWebAccount(run), std::move(found));
  batch.Load();
  TheDesktop().ShowModal(batch);
  contacts.ListContacts();
  standing.LookAtAll();
}

void FrmMain::ShowSent() {
  if (!SaveShown()) return;
  FrmSent sent(run, database, [this](int supplierId, int contactId) {
    if (LvwSuppliers.Find("ID" + std::to_string(supplierId)) < 0) {
      run.MessageBox(run.ReplaceAliases(Tr("The <SUPPLIER> has been removed since")), Tr("Sent"), BoxButtons::Ok,
                     BoxIcon::Information);
      return;
    }
    ShowContact(supplierId, contactId);
    if (contactId == 0) return;
    TabMain.SelectTab(kTabSend);
    send.TickContacts({{contactId, "", ""}});
  });
  sent.Load();
  TheDesktop().ShowModal(sent);
}

void FrmMain::ShowSchedule() {
  FrmSchedule schedule(run, quote.Quote, quote.Start());
  TheDesktop().ShowModal(schedule);
}

void FrmMain::ShowTerms() {
  const QuoteRecord asked = quote.AskedQuote;
  FrmTerms terms(
      run, {quote.ShownQuoteMode, asked, quote.Terms(), quote.Kept().has_value()},
      [this](const std::string& payments, const std::string& deposit) { quote.TakeVariant(payments, deposit); });
  TheDesktop().ShowModal(terms);
}

}  // namespace tarvolinex
