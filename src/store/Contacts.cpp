#include "store/Contacts.h"

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/DailyCopy.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

std::string FieldText(const Recordset& records, std::string_view column) {
  return std::string(Trim(ValueText(records.Field(column))));
}

std::string ContactName(const Recordset& records) {
  const std::string name = FieldText(records, "firstname") + " " + FieldText(records, "surname");
  return std::string(Trim(name));
}

void FillContactLists() {
  SupplierPanel& panel = MainForm().supplier;
  ListView& sendTo = MainForm().send.lvSendContacts;
  Recordset& records = TheStore->ContactRecords;
  OpenRecordset(FillStatement(statements::kContacts, "<SUPPLIERID>", CurrentSupplierId), records);
  sendTo.BeginFill();
  panel.LstContacts.Clear();
  sendTo.Clear();
  CurrentContactId = 0;
  for (; !records.EndOfFile(); records.MoveNext()) {
    const std::string name = ContactName(records);
    const std::string email = FieldText(records, "email");
    panel.LstContacts.Add(name, static_cast<int>(ValueNumber(records.Field("id"))));
    if (email.empty()) continue;
    sendTo.Add({"ID" + FieldText(records, "id"), name, {email, FieldText(records, "datelastsent")}, name});
  }
  sendTo.EndFill();
  // No tick is left that could be taken away.
  MainForm().send.CmdCalcGo(kGoCheckAll).SetCaption(Tr(kCheckAll));
}

std::string ContactStatement() {
  constexpr const char* kPlaceholders[] = {"<FIRSTNAME>", "<SURNAME>", "<JOBTITLE>", "<TEL>", "<FAX>", "<EMAIL>"};
  std::vector<Filling> fillings = {{"<SUPPLIERID>", std::int64_t{CurrentSupplierId}},
                                   {"<ID>", std::int64_t{CurrentContactId}}};
  for (int i = 0; i < 6; ++i) {
    fillings.push_back({kPlaceholders[i], EscapeQuotes(MainForm().supplier.TxtContact(i).Text())});
  }
  return FillStatement(CurrentContactId == 0 ? statements::kInsertContact : statements::kUpdateContact, fillings);
}

// Why the shown contact cannot be stored: it has no supplier, or somebody else has removed it or its supplier. Empty
// when it can.
std::string WhatContactLacks() {
  if (CurrentSupplierId == 0) return ReplaceAliases("Please add a <SUPPLIER> first: the contact has not been stored");
  if (!SupplierIsStored(CurrentSupplierId)) return ReplaceAliases("<SUPPLIER> Not Found Or has been deleted");
  if (CurrentContactId == 0) return {};
  Recordset& records = TheStore->ContactRecords;
  records.Find("ID=" + std::to_string(CurrentContactId));
  return records.EndOfFile() ? "Contact Not Found" : "";
}

std::string DateStatement(std::string_view dateText, int contactId) {
  return FillStatement(statements::kDateSent,
                       {{"<ID>", std::int64_t{contactId}}, {"<DATESENT>", EscapeQuotes(dateText)}});
}

}  // namespace

void RefreshContacts() {
  const int shown = CurrentContactId;
  ListContacts();
  SelectContact(shown);
}

void SelectContact(int contactId) {
  ListBox& list = MainForm().supplier.LstContacts;
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    if (list.Items()[i].data == contactId) return list.SetListIndex(static_cast<int>(i));
  }
}

void ListContacts() {
  SaveContact();
  SetStatus(false, ReplaceAliases("Getting Contact"), 50);
  SupplierPanel& panel = MainForm().supplier;
  try {
    FillContactLists();
    if (panel.LstContacts.Items().empty()) {
      ClearContactFields();
      panel.CmdContact(1).SetEnabled(false);
    } else {
      panel.LstContacts.SetListIndex(0);
    }
  } catch (const RuntimeError&) {
    ShowError("Listing Contacts Failed");
  }
  panel.CmdContact(0).SetCaption(Tr("Add C&ontact"));
  ContactListStale = false;
  ContactChanged = false;
  SetStatus(false, "", -1);
}

void GetContact() {
  SaveContact();
  Recordset& records = TheStore->ContactRecords;
  try {
    records.MoveFirst();
    SetStatus(false, "Getting Contact", 50);
    CurrentContactId = MainForm().supplier.LstContacts.ItemData();
    records.Find("ID=" + std::to_string(CurrentContactId));
    if (records.EndOfFile()) return ShowError("Contact Not Found");
    for (Control* control : MainForm().Controls()) BindFieldToControl(records, *control, "CONTACT", false);
    ContactChanged = false;
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kNoCurrentRecord) ShowError("Contact Not Found");
  }
  SetStatus(false, "", -1);
}

void SaveContact() {
  if (!ContactChanged) return;
  SetStatus(false, "Saving Contact", 50);
  const SupplierPanel& panel = MainForm().supplier;
  if (Trim(panel.TxtContact(0).Text() + panel.TxtContact(1).Text()).empty()) return SetStatus(false, "", -1);
  try {
    Transaction transaction;
    if (const std::string missing = WhatContactLacks(); !missing.empty()) {
      transaction.Abandon();
      ContactChanged = false;
      ContactListStale = true;
      if (CurrentSupplierId != 0) return ShowError(missing);
      // No error of the run: what is typed after it is stored when the window closes.
      TheDesktop().MessageBox(missing, Tr("Contacts"), BoxButtons::Ok, BoxIcon::Exclamation);
      ClearContactFields();
      return SetStatus(false, "", -1);
    }
    ExecuteStatement(ContactStatement());
    const bool isNew = CurrentContactId == 0;
    const int id = TheStore->connection.LastInsertedId();
    transaction.Commit();
    // Typing on after a save is no second new contact.
    if (isNew) CurrentContactId = id;
    ContactListStale = true;
    ContactChanged = false;
  } catch (const RuntimeError&) {
    ShowError("Contact update failed");
  }
  SetStatus(false, "", -1);
}

void SetDateLastSent(std::string_view dateText, int contactId) {
  ExecuteStatement(DateStatement(dateText, contactId));
}

void SetDatesLastSent(const std::vector<ContactDate>& dates, bool keep) {
  KeepDailyCopy();
  Connection& connection = TheStore->connection;
  std::string failed;
  try {
    connection.Begin();
    for (const ContactDate& date : dates) connection.Execute(DateStatement(date.dateText, date.contactId));
    if (keep) connection.Commit();
  } catch (const RuntimeError& failure) {
    failed = connection.Errors().empty() ? failure.Description() : connection.Errors().front();
  }
  try {
    connection.Rollback();
  } catch (const RuntimeError&) {
    // A statement that failed has rolled back by itself.
  }
  if (!failed.empty()) throw RuntimeError(kDatabase, failed);
}

std::set<int> SuppliersOfContacts(std::string_view text) {
  std::set<int> suppliers;
  const auto find = [&](std::string_view firstName, std::string_view surname) {
    Recordset found;
    OpenRecordset(FillStatement(statements::kFindContacts,
                                {{"<FIRSTNAME>", EscapeQuotes(firstName)}, {"<SURNAME>", EscapeQuotes(surname)}}),
                  found);
    for (; !found.EndOfFile(); found.MoveNext()) {
      suppliers.insert(static_cast<int>(ValueNumber(found.Field("Supplierid"))));
    }
  };
  try {
    find(text, "");
    find("", text);
    if (const auto blank = text.find(' '); blank != std::string_view::npos) {
      find(text.substr(0, blank), Trim(text.substr(blank)));
    }
  } catch (const RuntimeError&) {
    // A filter that cannot look at the contacts still looks at the suppliers.
  }
  return suppliers;
}

void ClearContacts() {
  MainForm().supplier.LstContacts.Clear();
  MainForm().send.lvSendContacts.Clear();
  ClearContactFields();
}

void ClearContactFields() {
  CurrentContactId = 0;
  for (int i = 0; i < 6; ++i) MainForm().supplier.TxtContact(i).SetText("");
  ContactChanged = false;
}

}  // namespace tarvolinex
