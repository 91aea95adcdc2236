// Contacts and the contact search on the sample database.
#include "support/Fixture.h"
#include "ui/main/FrmSearch.h"

namespace tarvolinex {

class ContactPanelTest : public SampleTest {
 protected:
  ContactPanelTest() {
    Choose("Saxonholt Dental Systems Ltd");
    Execute("DELETE FROM contacts WHERE Supplierid=3");
    Execute(
        "INSERT INTO contacts(ID,Supplierid,firstname,surname,email) VALUES(101,3,'Ann','Young','ann@x.example'),"
        "(102,3,'Bob','Adams',NULL),(103,10,'Anne','O`Young',NULL),(104,10,'Anna','Young',NULL)");
    form->menus.MnuRefresh.Choose();
    Choose("Saxonholt Dental Systems Ltd");
  }
  void Execute(const std::string& statement) { form->database.Plain().Execute(statement); }
  TextBox& Field(int field) { return form->contacts.TxtContact(field); }
  CommandButton& Button(int button) { return form->contacts.CmdContact(button); }
  std::string Job(int id) { return Ask("SELECT jobtitle FROM contacts WHERE ID=" + std::to_string(id)); }
  std::string Names() {
    std::string names;
    for (const auto& item : form->contacts.LstContacts.Items()) names += item.text + ";";
    return names;
  }
  void AddZebra() {
    form->Toolbar1.Press("SAVE");
    form->menus.MnuAdd.Choose();
    Type(form->supplier.TxtSupplier(kSupplierName), "Zebra Ltd");
  }
};

TEST_F(ContactPanelTest, ListsAreInSurnameOrderAndSendToNeedsAnAddress) {
  EXPECT_EQ(Names(), "Bob Adams;Ann Young;");
  ASSERT_EQ(form->send.lvSendContacts.Count(), 1);
  EXPECT_EQ(form->send.lvSendContacts.At(0).key, "ID101");
  EXPECT_EQ(Field(1).Text(), "Adams");
  EXPECT_EQ(form->contacts.CurrentContactId, 102);
  form->contacts.LstContacts.SetListIndex(1);
  EXPECT_EQ(Field(0).Text(), "Ann");
  EXPECT_EQ(Button(0).Caption(), "Add &Contact");
  EXPECT_FALSE(form->contacts.ContactChanged);
  Execute("DELETE FROM contacts WHERE ID=102");
  form->contacts.LstContacts.SetListIndex(0);
  EXPECT_EQ(desktop.boxes.at(0).text, "Contact Not Found");
  // The list, the fields and what a save would write are of one and the same.
  EXPECT_EQ(std::to_string(form->contacts.CurrentContactId) + Field(0).Text(), "101Ann");
  EXPECT_EQ(form->contacts.LstContacts.ItemData(), 101);
}

TEST_F(ContactPanelTest, AnEditIsSavedWhenAnotherIsShown) {
  Type(Field(2), "Manager");
  EXPECT_EQ(Button(0).Caption(), "Save &Contact");
  form->contacts.LstContacts.SetListIndex(1);
  EXPECT_EQ(Job(102), "Manager");
  Type(Field(2), "Buyer");
  form->shown.SupplierChanged = false;
  Choose("Millrace Laundry Systems Ltd");
  EXPECT_EQ(Job(101), "Buyer");
}

TEST_F(ContactPanelTest, TypingOnAfterASaveIsNoSecondContact) {
  Button(0).Press();
  Type(Field(1), "Late");
  form->TabMain.Choose(kTabSettings);
  form->TabMain.Choose(kTabDetails);
  Type(Field(5), "late@x.example");
  form->TabMain.Choose(kTabQuote);
  EXPECT_EQ(Ask("SELECT MIN(email)||COUNT(*) FROM contacts WHERE surname='Late'"), "late@x.example1");
}

TEST_F(ContactPanelTest, ANamelessContactIsNeverStored) {
  Button(0).Press();
  Type(Field(5), "x@x.example");
  Button(0).Press();
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid=3"), "2");
  EXPECT_EQ(desktop.boxes.at(0).text, "Please enter a first name or a surname");
  EXPECT_EQ(Field(5).Text(), "x@x.example");  // and nothing that was typed is lost
  Type(Field(0), "Xen");
  form->shown.SupplierChanged = false;
  ErrorShown = true;
  form->menus.MnuExit.Choose();
  EXPECT_EQ(Ask("SELECT email FROM contacts WHERE firstname='Xen'"), "x@x.example");
}

TEST_F(ContactPanelTest, RemovingNeedsASelectedContact) {
  for (const auto& [selected, left] :
       {std::pair{-1, "Bob Adams;Ann Young;"}, std::pair{0, "Ann Young;"}, std::pair{0, ""}}) {
    form->contacts.LstContacts.SetListIndex(selected);
    Button(1).Press();
    EXPECT_EQ(Names(), left);
  }
  EXPECT_FALSE(Button(1).Enabled());
  EXPECT_EQ(Field(0).Text(), "");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ContactPanelTest, AContactOfANewSupplierSavesTheSupplierFirst) {
  AddZebra();
  Field(0).SetFocus();
  EXPECT_EQ(form->shown.CurrentSupplierId, 13);
  EXPECT_EQ(Button(0).Caption(), "Save &Contact");
  Type(Field(0), "Zoe");
  Button(0).Press();
  EXPECT_EQ(Ask("SELECT Supplierid FROM contacts WHERE firstname='Zoe'"), "13");
}

TEST_F(ContactPanelTest, TheSendTabRefillsStaleLists) {
  Type(Field(5), "bob@x.example");
  form->TabMain.Choose(kTabSend);
  EXPECT_EQ(form->send.lvSendContacts.Count(), 2);
  EXPECT_FALSE(form->contacts.ContactListStale);
  form->send.lvSendContacts.DoubleClickRow(1);
  EXPECT_TRUE(form->send.lvSendContacts.At(1).checked);
}

class SearchTest : public ContactPanelTest {
 protected:
  void Find() { search.CmdFind.Press(); }
  void Find(const char* surname) {
    search.TxtSearch(1).SetFocus();
    search.TxtSearch(1).Type(surname);
    Find();
  }
  FrmSearch search{run, form->database, Goes()};
};

TEST_F(SearchTest, FindsOneAfterTheOther) {
  EXPECT_FALSE(search.CmdFind.Enabled());
  search.TxtSearch(0).SetText(" ");
  Find();
  EXPECT_TRUE(desktop.boxes.empty());
  search.TxtSearch(0).SetText("aNN");
  Find("young");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->contacts.CurrentContactId, 101);
  EXPECT_EQ(form->TabMain.Selected(), kTabDetails);
  EXPECT_EQ(search.CmdFind.Caption(), "&Find Next");
  Connection other;  // which can write while a match is shown
  other.Open(Where());
  EXPECT_NO_THROW(other.Execute("UPDATE contacts SET tel='1' WHERE ID=1"));
  search.TxtSearch(1).KeyUp(Key::Return);
  EXPECT_EQ(form->contacts.CurrentContactId, 104);
  Find();
  EXPECT_EQ(desktop.boxes.at(0).text, "No more contacts found");
  EXPECT_EQ(search.CmdFind.Caption(), "&Find First");
  Find("O'Y");
  EXPECT_EQ(form->contacts.CurrentContactId, 103);
  search.TxtSearch(0).SetText("O'");  // never left: it is no statement's end all the same
  Find();
  EXPECT_EQ(desktop.boxes.at(1).text + desktop.boxes[1].title, "No Contacts FoundContract Search");
}

TEST_F(SearchTest, AMatchIsShownWhateverTheListHolds) {
  AddZebra();
  Find("Young");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->contacts.CurrentContactId, 101);
  Choose("Millrace Laundry Systems Ltd");
  form->TxtFilter.SetText("Millrace");
  Find("Young ");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_FALSE(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).hidden);
  // Another program has added one supplier and removed another.
  Execute("INSERT INTO suppliers(ID,CompanyName) VALUES(77,'New Co')");
  Execute("INSERT INTO contacts(Supplierid,firstname,surname) VALUES(77,'New','Person'),(78,'Lost','Person')");
  Find("Person");
  EXPECT_EQ(form->shown.CurrentSupplierId, 77);
  Find();
  EXPECT_EQ(desktop.boxes.at(0).text, "Dealer Not Found Or has been deleted");
}

}  // namespace tarvolinex
