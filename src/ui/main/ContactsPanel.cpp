#include "ui/main/ContactsPanel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

constexpr const char* kSaveContact = Marked("Save &Contact");
enum { kAddOrSave = 0, kRemove = 1 };

constexpr std::array<BoundField, kContactFields> kContactFieldTags = {{
    {{Marked("F&irst Name")}, "RS=CONTACT;FIELDNAME=FirstName"},
    {{Marked("Surn&ame")}, "RS=CONTACT;FIELDNAME=Surname"},
    {{Marked("&Job Title")}, "RS=CONTACT;FIELDNAME=JobTitle"},
    {{Marked("Tel")}, "RS=CONTACT;FIELDNAME=Tel"},
    {{Marked("Fax")}, "RS=CONTACT;FIELDNAME=Fax"},
    {{Marked("Email")}, "RS=CONTACT;FIELDNAME=Email"},
}};

}  // namespace

ContactsPanel::ContactsPanel(Window& window, Run& run, Database& database, ShownSupplier& shown)
    : FraContacts(window, "FraContacts", -1, Tr("Contacts")),
      LstContacts(window, "LstContacts"),
      LblContact(window, "LblContact", kContactFields),
      TxtContact(window, "TxtContact", kContactFields),
      CmdContact(window, "CmdContact", 2),
      run_(run),
      database_(database),
      shown_(shown),
      fields_(window, "CONTACT") {
  for (int i = 0; i < kContactFields; ++i) {
    const BoundField& field = kContactFieldTags[static_cast<std::size_t>(i)];
    SetWords(LblContact(i), field.words);
    TxtContact(i).SetTag(field.tag);
  }
  CmdContact(kAddOrSave).SetCaption(Tr("Add C&ontact"));
  CmdContact(kRemove).SetCaption(Tr("R&emove Contact"));
  Wire();
}

void ContactsPanel::Wire() {
  LstContacts.Click = [this] { LstContacts_Click(); };
  for (int i = 0; i < kContactFields; ++i) {
    TextBox& field = TxtContact(i);
    field.Change = [this] { TxtContact_Change(); };
    field.GotFocus = [this] { TxtContact_GotFocus(); };
    field.Validate = [&field] { field.SetText(EscapeQuotes(field.Text())); };
  }
  for (int i = 0; i < 2; ++i) {
    CmdContact(i).Click = [this, i] { CmdContact_Click(i); };
  }
}

void ContactsPanel::LstContacts_Click() {
  if (!SaveContact()) return StayAtShownContact();
  GetContact();
  CmdContact(kAddOrSave).SetCaption(Tr("Add &Contact"));
  CmdContact(kRemove).SetEnabled(!database_.ReadOnly());
}

// The list goes back to the contact whose fields wait for a choice.
void ContactsPanel::StayAtShownContact() {
  const Event click = std::exchange(LstContacts.Click, nullptr);
  LstContacts.SetListIndex(-1);
  SelectContact(CurrentContactId);
  LstContacts.Click = click;
}

void ContactsPanel::TxtContact_Change() {
  if (following_) return;
  ContactChanged = true;
  CmdContact(kAddOrSave).SetCaption(Tr(kSaveContact));
  CmdContact(kAddOrSave).SetEnabled(!database_.ReadOnly());
}

void ContactsPanel::TxtContact_GotFocus() {
  if (!Surroundings.storeNewSupplier()) return;
  if (LstContacts.Items().empty()) CmdContact(kAddOrSave).SetCaption(Tr(kSaveContact));
}

// A contact in whose fields nothing stands needs none: nothing is stored.
bool ContactsPanel::ContactHasName() const {
  const auto filled = [&](int field) { return !Trim(TxtContact(field).Text()).empty(); };
  bool anything = false;
  for (int field = 0; field <= TxtContact.Last(); ++field) anything = anything || filled(field);
  return !anything || filled(0) || filled(1);
}

void ContactsPanel::CmdContact_Click(int button) {
  if (!Surroundings.supplierHasName()) return;
  const bool saves = CmdContact(kAddOrSave).Caption() == Tr(kSaveContact);
  if (!Surroundings.savePendingChanges()) return;
  if (button == kAddOrSave && saves && !ContactHasName()) {
    run_.MessageBox(Tr("Please enter a first name or a surname"), Tr("Contacts"), BoxButtons::Ok, BoxIcon::Information);
    return TxtContact(0).SetFocus();
  }
  if (button == kRemove) return RemoveContact();
  try {
    if (saves) return ListContacts();
    if (!SaveContact()) return;
    ClearContactFields();
    LstContacts.SetListIndex(-1);
    TxtContact(0).SetFocus();
    CmdContact(kAddOrSave).SetCaption(Tr(kSaveContact));
  } catch (const RuntimeError&) {
    run_.ShowError("Contact add failed");
  }
}

void ContactsPanel::RemoveContact() {
  if (LstContacts.ListIndex() < 0) return;
  try {
    Transaction transaction(database_);
    RemovedRows removed = DeleteContact(database_, CurrentContactId, shown_.CurrentSupplierId);
    Surroundings.noted();
    transaction.Commit();
    Surroundings.removed(std::move(removed));
    ContactChanged = false;
    ListContacts();
    TxtContact(0).SetFocus();
  } catch (const RuntimeError&) {
    run_.ShowError("Contact delete failed");
  }
}

void ContactsPanel::FillContactList(const std::vector<ContactRow>& contacts) {
  LstContacts.Clear();
  Surroundings.cleared();
  loadedContacts_.clear();
  for (const ContactRow& contact : contacts) {
    LstContacts.Add(contact.name, contact.id);
    loadedContacts_.push_back(contact.row);
  }
  Surroundings.listed(contacts);
}

void ContactsPanel::ListContacts(int shown) {
  if (!SaveContact()) return;
  run_.SetStatus(false, run_.ReplaceAliases("Getting Contact"), 50);
  const GoesOnWithout server(database_);
  try {
    const std::vector<ContactRow> contacts = ContactsOf(database_, shown_.CurrentSupplierId);
    FillContactList(contacts);
    const auto chosen = std::ranges::find(contacts, shown, &ContactRow::id);
    if (!contacts.empty()) Show(chosen == contacts.end() ? contacts.front().row : chosen->row);
    if (contacts.empty()) ClearContactFields();
    StayAtShownContact();
    CmdContact(kRemove).SetEnabled(!contacts.empty() && !database_.ReadOnly());
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDatabaseGone) {
      ContactListStale = true;
      return Surroundings.gone(failure);
    }
    run_.ShowError("Listing Contacts Failed");
  }
  CmdContact(kAddOrSave).SetCaption(Tr("Add C&ontact"));
  ContactListStale = false;
  ContactChanged = false;
  run_.SetStatus(false, "", -1);
}

bool ContactsPanel::Follow() {
  const std::vector<ContactRow> contacts = ContactsOf(database_, shown_.CurrentSupplierId);
  std::vector<ListBox::Item> items;
  loadedContacts_.clear();
  for (const ContactRow& contact : contacts) {
    items.push_back({contact.name, contact.id});
    loadedContacts_.push_back(contact.row);
  }
  const bool listed = LstContacts.Renew(std::move(items));
  Surroundings.renewed(contacts);
  following_ = true;
  const bool taken = FollowShown(contacts);
  following_ = false;
  return listed || taken;
}

// A contact that is gone stays in its fields while something of it is edited: the user is asked when it is stored.
bool ContactsPanel::FollowShown(const std::vector<ContactRow>& contacts) {
  if (CurrentContactId == 0) return false;
  const auto found = std::ranges::find(contacts, CurrentContactId, &ContactRow::id);
  if (found != contacts.end()) return fields_.TakeStored(found->row);
  if (!ContactChanged && contacts.empty()) {
    ClearContactFields();
    CmdContact(kRemove).SetEnabled(false);
  } else if (!ContactChanged) {
    Show(contacts.front().row);
    StayAtShownContact();
  }
  return true;
}

void ContactsPanel::RefreshContacts() {
  ListContacts(CurrentContactId);
}

void ContactsPanel::SelectContact(int contactId) {
  for (std::size_t i = 0; i < LstContacts.Items().size(); ++i) {
    if (LstContacts.Items()[i].data == contactId) return LstContacts.SetListIndex(static_cast<int>(i));
  }
}

// Where the selected one cannot be read, the one that was shown stays so.
void ContactsPanel::GetContact() {
  if (LstContacts.Items().empty()) return run_.SetStatus(false, "", -1);
  run_.SetStatus(false, "Getting Contact", 50);
  const GoesOnWithout server(database_);
  try {
    const Row contact = ReadContact(database_, LstContacts.ItemData(), shown_.CurrentSupplierId);
    if (contact.Found()) {
      Show(contact);
    } else {
      run_.ShowError("Contact Not Found");
    }
  } catch (const RuntimeError& failure) {
    failure.Number() == kDatabaseGone ? Surroundings.gone(failure) : run_.ShowError("Contact Not Found");
  }
  if (CurrentContactId != LstContacts.ItemData()) StayAtShownContact();
  run_.SetStatus(false, "", -1);
}

void ContactsPanel::Show(const Row& contact) {
  CurrentContactId = contact.Number("id");
  fields_.Bind(contact, false);
  fields_.RememberLoadedFields(contact);
  ContactChanged = false;
}

bool ContactsPanel::IsMissing() const {
  return ContactChanged && CurrentContactId != 0 &&
         !ReadContact(database_, CurrentContactId, shown_.CurrentSupplierId).Found();
}

void ContactsPanel::PutBackOrForget() {
  const Row& contact = fields_.LoadedRow();
  const std::string name(Trim(contact.Text("firstname") + " " + contact.Text("surname")));
  ContactListStale = true;
  if (run_.MessageBox(Tr("The contact %1 has been removed by another program while you were changing it.\n\nPut it "
                         "back with what you typed?",
                         {name}),
                      Tr("Removed Meanwhile"), BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes) {
    Transaction transaction(database_);
    if (IsMissing()) CurrentContactId = PutRowBack(database_, "contacts", contact);
    return transaction.Commit();
  }
  ContactChanged = false;
  ListContacts();
}

// It cannot be stored, and there is nothing that could be put back.
void ContactsPanel::TellThatSupplierIsMissing() {
  ContactChanged = false;
  ContactListStale = true;
  // No error of the run: what is typed after it is stored when the window closes.
  run_.MessageBox(run_.ReplaceAliases("Please add a <SUPPLIER> first: the contact has not been stored"), Tr("Contacts"),
                  BoxButtons::Ok, BoxIcon::Exclamation);
  ClearContactFields();
}

void ContactsPanel::Store() {
  Transaction transaction(database_);
  int id = CurrentContactId;
  if (id == 0) {
    ContactFields fields;
    for (int i = 0; i < kContactFields; ++i) fields[static_cast<std::size_t>(i)] = TxtContact(i).Text();
    id = AddContact(database_, shown_.CurrentSupplierId, fields);
  } else {
    UpdateContact(database_, id, fields_.Collect(true));
  }
  const Row stored = ReadContact(database_, id, shown_.CurrentSupplierId);
  transaction.Commit();
  // Typing on after a save is no second new contact.
  CurrentContactId = id;
  std::erase_if(loadedContacts_, [&](const Row& row) { return row.Number("ID") == id; });
  loadedContacts_.push_back(stored);
  fields_.TakeStored(stored);
  fields_.RememberLoadedFields(stored);
  std::vector<ListBox::Item> items = LstContacts.Items();
  const auto own = std::ranges::find(items, id, &ListBox::Item::data);
  if (own != items.end()) own->text = Trim(stored.Text("firstname") + " " + stored.Text("surname"));
  LstContacts.Renew(std::move(items));
  ContactListStale = true;
  ContactChanged = false;
}

bool ContactsPanel::IsNamed() const {
  return !Trim(TxtContact(0).Text() + TxtContact(1).Text()).empty();
}

std::function<void()> ContactsPanel::WayBack() {
  return [this, changed = ContactChanged, id = CurrentContactId, fields = fields_.WayBack(), loaded = loadedContacts_] {
    ContactChanged = changed;
    CurrentContactId = id;
    fields();
    loadedContacts_ = loaded;
  };
}

void ContactsPanel::SaveWithSupplier() {
  if (ContactChanged && IsNamed()) Store();
}

bool ContactsPanel::SaveContact() {
  if (!ContactChanged) return true;
  run_.SetStatus(false, "Saving Contact", 50);
  const GoesOnWithout server(database_);
  std::function<void()> goBack;
  bool stays = false;
  try {
    Surroundings.settle();
    goBack = WayBack();
    if (IsNamed()) stays = !StoreUnlessMet();
  } catch (const RuntimeError& failure) {
    stays = failure.Number() == kDatabaseGone;
    if (stays) {
      if (goBack) {
        shown_.WayForth = WayBack();
        goBack();
      }
      Surroundings.gone(failure);
    } else {
      run_.ShowError("Contact update failed");
    }
  }
  run_.SetStatus(false, "", -1);
  return !stays;
}

// Looks and stores in one transaction, which is over while the user is asked; then it looks again.
bool ContactsPanel::StoreUnlessMet() {
  if (shown_.CurrentSupplierId == 0) {
    TellThatSupplierIsMissing();
    return true;
  }
  while (ContactChanged) {
    std::vector<MetField> met;
    bool supplierIsMissing = false, missing = false;
    {
      Transaction transaction(database_);
      supplierIsMissing = !SupplierIsStored(database_, shown_.CurrentSupplierId);
      missing = !supplierIsMissing && IsMissing();
      if (!missing && !supplierIsMissing) met = Meet();
      if (!missing && !supplierIsMissing && met.empty()) {
        Store();
        Surroundings.noted();
      }
      transaction.Commit();
    }
    if (supplierIsMissing && !Surroundings.putSupplierBack()) return false;
    if (missing) PutBackOrForget();
    if (!met.empty() && !Surroundings.decide(met)) return false;
    Decide(met);
  }
  return true;
}

std::vector<MetField> ContactsPanel::Meet() {
  if (!ContactChanged || CurrentContactId == 0) return {};
  now_ = ReadContact(database_, CurrentContactId, shown_.CurrentSupplierId);
  if (!now_.Found()) return {};
  std::vector<MetField> met = fields_.Meet(now_);
  for (MetField& field : met) {
    for (int i = 0; i < kContactFields; ++i) {
      if (field.control == &TxtContact(i)) field.words = Tr("Contact: %1", {PlainCaption(LblContact(i).Caption())});
    }
  }
  return met;
}

void ContactsPanel::Decide(const std::vector<MetField>& met) {
  if (ContactChanged && CurrentContactId != 0) fields_.Decide(now_, met);
}

void ContactsPanel::ClearContacts() {
  LstContacts.Clear();
  Surroundings.cleared();
  ClearContactFields();
}

void ContactsPanel::ClearContactFields() {
  CurrentContactId = 0;
  for (int i = 0; i < kContactFields; ++i) TxtContact(i).SetText("");
  ContactChanged = false;
}

}  // namespace tarvolinex
