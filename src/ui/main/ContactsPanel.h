// The contact people of the shown supplier, and the fields of one of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "platform/RuntimeError.h"
#include "store/Contacts.h"
#include "store/Database.h"
#include "ui/main/BoundFields.h"
#include "ui/main/ShownSupplier.h"

namespace tarvolinex {

class ContactsPanel {
 public:
  ContactsPanel(Window& window, Run& run, Database& database, ShownSupplier& shown);
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
    std::function<bool()> savePendingChanges;                    // false when the user wants to look at it first
    std::function<bool(std::vector<MetField>&)> decide;          // lets the user choose; false when he does not
    std::function<bool()> putSupplierBack;                       // it has been removed; false when it stays so
    std::function<bool()> storeNewSupplier;                      // false when there is none that waits with a name
    std::function<void()> noted;                                 // a contact is being changed here, in a transaction
    std::function<void(RemovedRows)> removed;
    std::function<void(const std::vector<ContactRow>&)> renewed;  // another program has changed them
    std::function<void(const RuntimeError&)> gone;                // the server is, and what was typed stays
    std::function<void()> settle;                                 // what came of a save that nobody has told of
  };
  Around Surroundings;

  // Saves the shown contact if it was edited, then refills the list for the shown supplier and shows the contact of
  // this ID, or else the first. Where it is not saved, or they cannot be read, the list stays.
  void ListContacts(int shown = 0);
  // As ListContacts, but the contact that was shown stays so.
  void RefreshContacts();
  // Stores what was edited of the shown contact when it has a name. One that somebody else has removed, alone or with
  // its supplier, is put back or forgotten, as the user wants. Returns false when nobody should go on: it meets what
  // somebody else has stored and the user does not choose, so that it stays edited, or its supplier has been left.
  [[nodiscard]] bool SaveContact();
  // The same in the transaction of its supplier, after Meet has found nothing. Throws RuntimeError.
  void SaveWithSupplier();
  // As the fields' of the supplier (BoundFields).
  std::function<void()> WayBack();
  // Whether somebody else has removed the contact that is edited here.
  bool IsMissing() const;
  // Asks whether it is to be put back; otherwise it is forgotten.
  void PutBackOrForget();
  // The contacts as they were last read.
  const std::vector<Row>& LoadedContacts() const { return loadedContacts_; }
  // What of the shown contact was edited here and by somebody else; none while nothing is edited.
  std::vector<MetField> Meet();
  void Decide(const std::vector<MetField>& met);
  // Selects the contact in the list, which shows it; nothing when it is not there.
  void SelectContact(int contactId);
  // Shows what another program has changed of the supplier's contacts. What is typed, selected and ticked stays.
  // Returns whether something has changed.
  bool Follow();
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
  bool IsNamed() const;
  void RemoveContact();
  void FillContactList(const std::vector<ContactRow>& contacts);
  void GetContact();
  void Show(const Row& contact);
  void StayAtShownContact();
  bool StoreUnlessMet();
  bool FollowShown(const std::vector<ContactRow>& contacts);
  void TellThatSupplierIsMissing();
  void Store();

  Run& run_;
  Database& database_;
  ShownSupplier& shown_;
  BoundFields fields_;
  Row now_;  // the shown contact as it was last found stored
  std::vector<Row> loadedContacts_;
  bool following_ = false;  // what changes meanwhile was not typed
};

}  // namespace tarvolinex
