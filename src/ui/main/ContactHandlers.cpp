// The contact list and the contact fields.
#include <string>
#include <utility>

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"
#include "store/Statements.h"
#include "store/Suppliers.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {
constexpr const char* kSaveContact = Marked("Save &Contact");
}

void FrmMain::WireContacts() {
  supplier.LstContacts.Click = [this] { LstContacts_Click(); };
  for (int i = 0; i < 6; ++i) {
    TextBox& field = supplier.TxtContact(i);
    field.Change = [this] { TxtContact_Change(); };
    field.GotFocus = [this] { TxtContact_GotFocus(); };
    field.Validate = [&field] { field.SetText(EscapeQuotes(field.Text())); };
  }
  for (int i = 0; i < 2; ++i) {
    supplier.CmdContact(i).Click = [this, i] { CmdContact_Click(i); };
  }
}

void FrmMain::LstContacts_Click() {
  GetContact();
  supplier.CmdContact(0).SetCaption(Tr("Add &Contact"));
  supplier.CmdContact(1).SetEnabled(true);
}

void FrmMain::TxtContact_Change() {
  ContactChanged = true;
  supplier.CmdContact(0).SetCaption(Tr(kSaveContact));
  supplier.CmdContact(0).SetEnabled(true);
}

void FrmMain::TxtContact_GotFocus() {
  const int row = LvwSuppliers.Selected();
  if (row < 0 || LvwSuppliers.At(row).key != "ID0" || Nameless()) return;
  SavePendingChanges();
  if (supplier.LstContacts.Items().empty()) supplier.CmdContact(0).SetCaption(Tr(kSaveContact));
}

// A contact in whose fields nothing stands needs none: nothing is stored.
bool FrmMain::ContactHasName() {
  const auto filled = [&](int field) { return !Trim(supplier.TxtContact(field).Text()).empty(); };
  bool anything = false;
  for (int field = 0; field <= supplier.TxtContact.Last(); ++field) anything = anything || filled(field);
  return !anything || filled(0) || filled(1);
}

void FrmMain::CmdContact_Click(int button) {
  if (Nameless()) return supplier.TxtSupplier(kSupplierName).SetFocus();
  const bool saves = supplier.CmdContact(0).Caption() == Tr(kSaveContact);
  SavePendingChanges();
  if (button == 0 && saves && !ContactHasName()) {
    TheDesktop().MessageBox(Tr("Please enter a first name or a surname"), Tr("Contacts"), BoxButtons::Ok,
                            BoxIcon::Information);
    return supplier.TxtContact(0).SetFocus();
  }
  if (button == 1) return RemoveContact();
  try {
    if (saves) return ListContacts();
    ClearContactFields();
    supplier.LstContacts.SetListIndex(-1);
    supplier.TxtContact(0).SetFocus();
    supplier.CmdContact(0).SetCaption(Tr(kSaveContact));
  } catch (const RuntimeError&) {
    ShowError("Contact add failed");
  }
}

void FrmMain::RemoveContact() {
  if (supplier.LstContacts.ListIndex() < 0) return;
  try {
    Recordset& records = TheStore->ContactRecords;
    records.Find("ID=" + std::to_string(CurrentContactId));
    RemovedRows removed{CurrentSupplierId, CurrentContactId, {}};
    if (!records.EndOfFile()) {
      removed.statements.push_back(FillStatement(statements::kRestoreContact, RowLists(records)));
    }
    ExecuteStatement(FillStatement(statements::kDeleteContact, "<ID>", CurrentContactId));
    OfferUndo(std::move(removed));
    ContactChanged = false;
    ListContacts();
    supplier.TxtContact(0).SetFocus();
  } catch (const RuntimeError&) {
    ShowError("Contact delete failed");
  }
}

}  // namespace tarvolinex
