// The contact people of the shown supplier, and the fields of one of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "store/Contacts.h"
#include "store/Database.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

class ContactsPanel {
 public:
  ContactsPanel(Window& window, Run& run, Database& database, const ShownSupplier& shown);
  Frame FraContacts;
  ListBox LstContacts;
  ControlArray<Label> LblContact;
  ControlArray<TextBox> TxtContact;        // first name, surname, job title, tel, fax, e-mail
  ControlArray<CommandButton> CmdContact;  // add or save, remove

  int CurrentContactId = 0;  // 0 for none or a new contact
  bool ContactChanged = false;
  bool ContactListStale = false;  // a contact has been saved since the list was filled

  // What the panel asks of its window.
  struct Around {
    std::function<void()> cleared;                               // nobody is listed
    std::function<void(const std::vector<ContactRow>&)> listed;  // the list was filled anew
    std::function<bool()> supplierHasName;                       // goes to the name when it has none
    std::function<void()> savePendingChanges;
    std::function<bool()> storeNewSupplier;  // false when there is none that waits with a name
    std::function<void(RemovedRows)> removed;
  };
  Around Surroundings;

  // Saves the shown contact if it was edited, then refills the list for the shown supplier.
  void ListContacts();
  // As ListContacts, but the contact that was shown stays so.
  void RefreshContacts();
  // Saves the shown contact if it was edited, then shows the one selected in the list.
  void GetContact();
  // Stores the shown contact when it was edited and has a name. One whose supplier is not stored, or that somebody else
  // has removed, is reported and not stored.
  void SaveContact();
  // Selects the contact in the list, which shows it; nothing when it is not there.
  void SelectContact(int contactId);
  // Empties the list and the six fields.
  void ClearContacts();
  void ClearContactFields();

 private:
  void Wire();
  void LstContacts_Click();
  void TxtContact_Change();
  void TxtContact_GotFocus();
  void CmdContact_Click(int button);
  bool ContactHasName() const;
  void RemoveContact();
  void FillContactList();
  void Store();
  std::string WhatContactLacks();

  Run& run_;
  Database& database_;
  const ShownSupplier& shown_;
};

}  // namespace tarvolinex
