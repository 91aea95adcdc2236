// Contacts and the contact search on the sample database.
#include "platform/files/ZipComponent.h"
#include "store/Contacts.h"
#include "support/Fixture.h"
#include "ui/main/FrmSearch.h"

namespace tarvolinex {

class ContactPanelTest : public SampleTest {
 protected:
  ContactPanelTest() {
    Choose("Saxonholt Dental Systems Ltd");
    form->database.Plain().Execute("DELETE FROM contacts WHERE Supplierid=3");
    form->database.Plain().Execute(
        "INSERT INTO contacts(ID,Supplierid,firstname,surname,email) VALUES(101,3,'Ann','Young','ann@x.example'),"
        "(102,3,'Bob','Adams',NULL)");
    form->menus.MnuRefresh.Choose();
    Choose("Saxonholt Dental Systems Ltd");
  }
  TextBox& Field(int field) { return form->contacts.TxtContact(field); }
  CommandButton& Button(int button) { return form->contacts.CmdContact(button); }
  std::string Names() {
    std::string names;
    for (const auto& item : form->contacts.LstContacts.Items()) names += item.text + ";";
    return names;
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
}

TEST_F(ContactPanelTest, AnEditIsSavedWhenAnotherIsShown) {
  Type(Field(2), "Manager");
  EXPECT_EQ(Button(0).Caption(), "Save &Contact");
  form->contacts.LstContacts.SetListIndex(1);
  EXPECT_EQ(Ask("SELECT jobtitle FROM contacts WHERE ID=102"), "Manager");
  Type(Field(2), "Buyer");
  form->shown.SupplierChanged = false;
  Choose("Millrace Laundry Systems Ltd");
  EXPECT_EQ(Ask("SELECT jobtitle FROM contacts WHERE ID=101"), "Buyer");
}

TEST_F(ContactPanelTest, TypingOnAfterASaveIsNoSecondContact) {
  Button(0).Press();
  Type(Field(1), "Late");
  form->TabMain.Choose(kTabSettings);
  form->TabMain.Choose(kTabDetails);
  Type(Field(5), "late@x.example");
  form->TabMain.Choose(kTabQuote);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE surname='Late'"), "1");
  EXPECT_EQ(Ask("SELECT email FROM contacts WHERE surname='Late'"), "late@x.example");
}

TEST_F(ContactPanelTest, AContactStaysInTheDatabaseInWhichItWasTyped) {
  TemporaryFolder other;
  ZipComponent zip;
  zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
  zip.UnzipToFolder = other.Path();
  zip.Unzip();
  const std::string first = DataFolder, id = "SELECT jobtitle FROM contacts WHERE ID=";
  Choose("Millrace Laundry Systems Ltd");
  form->Toolbar1.Press("SAVE");  // the supplier has no edits of its own
  const std::string statement = id + std::to_string(form->contacts.CurrentContactId), before = Ask(statement);
  Type(Field(2), "Archivist");
  desktop.files = {other.Path() + "/Tarvolinex.mdb"};
  form->menus.MnuOpen.Choose();
  EXPECT_EQ(DataFolder, other.Path());
  EXPECT_EQ(Ask(statement), before);
  desktop.files = {first + "/Tarvolinex.mdb"};
  form->menus.MnuOpen.Choose();
  EXPECT_EQ(Ask(statement), "Archivist");
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
  form->contacts.LstContacts.SetListIndex(-1);
  Button(1).Press();
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid=3"), "2");
  form->contacts.LstContacts.SetListIndex(0);
  Button(1).Press();
  EXPECT_EQ(Names(), "Ann Young;");
  Button(1).Press();
  EXPECT_EQ(Names(), "");
  EXPECT_FALSE(Button(1).Enabled());
  EXPECT_EQ(Field(0).Text(), "");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ContactPanelTest, AContactOfANewSupplierSavesTheSupplierFirst) {
  form->Toolbar1.Press("SAVE");
  form->menus.MnuAdd.Choose();
  Type(form->supplier.TxtSupplier(kSupplierName), "Zebra Ltd");
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
  SetDatesLastSent(form->database, {{101, "05 March 2003 14:07:09"}}, true);
  form->contacts.ListContacts();
  EXPECT_EQ(form->send.lvSendContacts.At(1).cells[1], "05 March 2003 14:07:09");
}

TEST_F(ContactPanelTest, TheSearchFindsOneAfterTheOther) {
  form->database.Plain().Execute(
      "INSERT INTO contacts(ID,Supplierid,firstname,surname) VALUES(103,10,'Anne','O`Young'),(104,10,'Anna','Young')");
  FrmSearch search(run, form->database, Goes());
  EXPECT_FALSE(search.CmdFind.Enabled());
  search.TxtSearch(0).SetText(" ");
  search.CmdFind.Press();
  EXPECT_TRUE(desktop.boxes.empty());
  search.TxtSearch(0).SetText("aNN");
  search.TxtSearch(1).SetText("young");
  search.CmdFind.Press();
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->contacts.CurrentContactId, 101);
  EXPECT_EQ(form->TabMain.Selected(), kTabDetails);
  EXPECT_EQ(search.CmdFind.Caption(), "&Find Next");
  search.TxtSearch(1).KeyUp(Key::Return);
  EXPECT_EQ(form->contacts.CurrentContactId, 104);
  search.CmdFind.Press();
  EXPECT_EQ(desktop.boxes.at(0).text, "No more contacts found");
  EXPECT_EQ(search.CmdFind.Caption(), "&Find First");
  search.TxtSearch(1).SetFocus();
  search.TxtSearch(1).Type("O'Y");
  search.CmdFind.Press();
  EXPECT_EQ(form->contacts.CurrentContactId, 103);
  search.TxtSearch(1).SetText("nobody");
  search.CmdFind.Press();
  EXPECT_EQ(desktop.boxes.at(1).title, "Contract Search");
}

TEST_F(ContactPanelTest, AMatchIsShownWhateverTheListHolds) {
  FrmSearch search(run, form->database, Goes());
  form->Toolbar1.Press("SAVE");
  form->menus.MnuAdd.Choose();
  Type(form->supplier.TxtSupplier(kSupplierName), "Zebra Ltd");
  search.TxtSearch(1).SetText("Young");
  search.CmdFind.Press();
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->contacts.CurrentContactId, 101);
  Choose("Millrace Laundry Systems Ltd");
  form->TxtFilter.SetText("Millrace");
  search.TxtSearch(1).SetText("Young ");
  search.CmdFind.Press();
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_FALSE(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).hidden);
  // Another program has added one supplier and removed another.
  form->database.Plain().Execute("INSERT INTO suppliers(ID,CompanyName) VALUES(77,'New Co')");
  form->database.Plain().Execute(
      "INSERT INTO contacts(Supplierid,firstname,surname) VALUES(77,'New','Person'),(78,'Lost','Person')");
  search.TxtSearch(1).SetText("Person");
  search.CmdFind.Press();
  EXPECT_EQ(form->shown.CurrentSupplierId, 77);
  search.CmdFind.Press();
  EXPECT_EQ(desktop.boxes.at(0).text, "Dealer Not Found Or has been deleted");
}

TEST_F(ContactPanelTest, OthersCanWriteWhileAMatchIsShown) {
  form->database.Plain().Execute("INSERT INTO contacts(Supplierid,firstname,surname) VALUES(10,'Anna','Young')");
  FrmSearch search(run, form->database, Goes());
  search.TxtSearch(1).SetText("You");
  search.CmdFind.Press();
  EXPECT_EQ(search.CmdFind.Caption(), "&Find Next");
  Connection other;
  other.Open("dbq=" + DataFolder + "/Tarvolinex.mdb");
  EXPECT_NO_THROW(other.Execute("BEGIN EXCLUSIVE"));
  EXPECT_NO_THROW(other.Execute("ROLLBACK"));
  search.CmdFind.Press();
  EXPECT_EQ(form->shown.CurrentSupplierId, 10);
  search.TxtSearch(0).SetText("O'");  // never left: it is no statement's end all the same
  search.CmdFind.Press();
  EXPECT_EQ(desktop.boxes.at(0).text, "No Contacts Found");
}

TEST_F(ContactPanelTest, AContactThatIsGoneIsReported) {
  form->database.Plain().Execute("DELETE FROM contacts WHERE ID=101");
  form->contacts.LstContacts.SetListIndex(1);
  EXPECT_EQ(desktop.boxes.at(0).text, "Contact Not Found");
}

}  // namespace tarvolinex
