// What a day at the window must not lose or mix up: list, title, fields and ID agree, and only what a person typed is
// stored.
#include <random>

#include "core/Aliases.h"
#include "platform/text/Text.h"
#include "publish/Template.h"
#include "store/Suppliers.h"
#include "support/Fixture.h"
#include "ui/main/FrmSearch.h"

namespace tarvolinex {

class NothingLostTest : public SampleTest {
 protected:
  TextBox& Name() { return form->supplier.TxtSupplier(kSupplierName); }
  // Another program changes the database.
  void Elsewhere(const std::string& statement) {
    Connection other;
    other.Open(Where());
    other.Execute(statement);
  }
  // Two yields, a threshold and more columns of one supplier.
  std::string Stored(const std::string& columns, const std::string& where) {
    return AskAll("SELECT Yield0,Yield1,RangeEquipFROM0," + columns + " FROM suppliers WHERE " + where);
  }
  void Search(const std::string& surname) {
    FrmSearch search(run, form->database, Goes());
    search.TxtSearch(1).Type(surname);
    search.CmdFind.Press();
  }
  void ExpectAgreement(const std::string& after) {
    const ListView& list = form->LvwSuppliers;
    if (form->shown.CurrentSupplierId == 0 && list.Find("ID0") < 0) {
      EXPECT_EQ(list.Count(), 0) << after;
      return;
    }
    ASSERT_GE(list.Selected(), 0) << after;
    const ListView::Row& row = list.At(list.Selected());
    EXPECT_EQ(IdOfKey(row.key), form->shown.CurrentSupplierId) << after;
    EXPECT_EQ(form->shown.CurrentSupplierIndex, list.Selected()) << after;
    const std::string name = Name().Text().empty() ? "<NEW>" : Name().Text();
    EXPECT_EQ(row.text, name) << after;
    EXPECT_EQ(form->Caption(), "Tarvolinex - " + name) << after;
    EXPECT_EQ(form->LblCompany.Caption(), "*" + ReplaceAll(Name().Text(), "&", "&&") + "*") << after;
    if (form->shown.CurrentSupplierId == 0) return;
    EXPECT_EQ(SupplierCalcSettings.ID, form->shown.CurrentSupplierId) << after;
    EXPECT_EQ(form->contacts.LstContacts.Items().size(),
              static_cast<std::size_t>(std::stoi(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid=" +
                                                     std::to_string(form->shown.CurrentSupplierId)))))
        << after;
  }
};

TEST_F(NothingLostTest, ListTitleFieldsAndIdAgreeAfterEveryWay) {
  std::mt19937 random(1);
  const auto any = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(std::max(below, 1))); };
  form->database.Plain().Execute("INSERT INTO contacts (Supplierid, surname) VALUES(0, 'Nobodys')");
  form->database.Plain().Execute("INSERT INTO contacts (Supplierid, surname) VALUES(4711, 'Gone')");
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"choose", [&] { form->LvwSuppliers.ClickRow(any(form->LvwSuppliers.Count())); }},
      {"rename", [&] { Type(Name(), "Firm " + std::to_string(any(50))); }},
      {"town", [&] { Type(form->supplier.TxtSupplier(3), "Town " + std::to_string(any(50))); }},
      {"add", [&] { form->menus.MnuAdd.Choose(); }},
      {"new", [&] { form->Toolbar1.Press("ADDNEW"); }},
      {"remove", [&] { form->Toolbar1.Press("REMSUPP"); }},
      {"remove, yes",
       [&] { desktop.answers = {Answer::Yes}, form->Toolbar1.Press("REMSUPP"), desktop.answers.clear(); }},
      {"delete key",
       [&] { desktop.answers = {Answer::Yes}, form->LvwSuppliers.KeyUp(Key::Delete), desktop.answers.clear(); }},
      {"undo", [&] { form->menus.MnuUndoRemove.Choose(); }},
      {"escape", [&] { form->KeyUp(Key::Escape); }},
      {"sort", [&] { form->LvwSuppliers.ClickColumn(any(7)); }},
      {"filter", [&] { form->TxtFilter.Type(std::string(1, "aeo1"[any(4)])); }},
      {"no filter", [&] { form->TxtFilter.Type(""); }},
      {"refresh", [&] { form->menus.MnuRefresh.Choose(); }},
      {"search nobody", [&] { Search("Nobodys"); }},
      {"search gone", [&] { Search("Gone"); }},
      {"search", [&] { Search("b"); }},
      {"removed elsewhere",
       [&] {
         const std::string id = std::to_string(form->shown.CurrentSupplierId);
         Elsewhere("DELETE FROM SupplierFormLink WHERE SupplierId=" + id);
         Elsewhere("DELETE FROM contacts WHERE Supplierid<>0 AND Supplierid=" + id);
         Elsewhere("DELETE FROM suppliers WHERE ID=" + id);
         Type(form->supplier.TxtSupplier(3), "Late");
         form->Toolbar1.Press("SAVE");
       }},
      {"tab", [&] { form->TabMain.SelectTab(any(4)); }},
      {"contact",
       [&] {
         Type(form->contacts.TxtContact(1), "Person");
         form->Toolbar1.Press("SAVE");
       }},
      {"remove contact", [&] { form->contacts.CmdContact(1).Press(); }},
      {"save", [&] { form->Toolbar1.Press("SAVE"); }},
  };
  for (int step = 0; step < 400; ++step) {
    const auto& [name, way] = ways[any(static_cast<int>(std::size(ways)))];
    way();
    ExpectAgreement(std::to_string(step) + " " + name);
    if (HasFailure()) return;
  }
  EXPECT_EQ(
      Ask("SELECT COUNT(*) FROM SupplierFormLink WHERE SupplierId NOT IN (SELECT ID FROM suppliers) AND SupplierId<>0"),
      "0");
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE Supplierid NOT IN (SELECT ID FROM suppliers)"), "2");
}

TEST_F(NothingLostTest, SavingStoresTheContactAndARemovedOneComesBack) {
  MakePages(OwnBranding(), run);
  Choose("Saxonholt Dental Systems Ltd");
  form->rateCard.TxtRangeYield(0).SetFocus();
  form->rateCard.TxtRangeYield(0).Type("1234");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->TxtStatus.Text(), "Saved. Yield of band 1: 1234 is more than 100.00. It is 100.00 now.");
  form->Toolbar1.Press("REFRESH");
  EXPECT_EQ(form->TxtStatus.Text(), "");
  form->contacts.LstContacts.SetListIndex(1);
  const int id = form->contacts.CurrentContactId;
  const std::string where = " FROM contacts WHERE ID=" + std::to_string(id);
  for (const char* button : {"PREVIEW", "EDITPROP", "FORMS", "SAVE"}) {
    Type(form->contacts.TxtContact(2), button);
    form->Toolbar1.Press(button);
    EXPECT_EQ(Ask("SELECT jobtitle" + where), button);
    EXPECT_EQ(form->contacts.CurrentContactId, id) << button;
  }
  EXPECT_EQ(form->TxtStatus.Text(), "Saved");
  const std::string before = Ask("SELECT firstname || surname || jobtitle || email" + where);
  form->contacts.CmdContact(1).Press();
  EXPECT_EQ(Ask("SELECT COUNT(*)" + where), "0");
  EXPECT_EQ(form->menus.MnuUndoRemove.Caption(), "&Undo Remove Contact");
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(Ask("SELECT firstname || surname || jobtitle || email" + where), before);
  EXPECT_EQ(form->contacts.CurrentContactId, id);
}

TEST_F(NothingLostTest, OnlyWhatAPersonTypedIsStored) {
  form->database.Plain().Execute(
      "UPDATE suppliers SET Yield0=9.125, Yield1=NULL, RangeEquipFROM0=50000.1234, Com0=1.005 WHERE ID=3");
  form->rateCard.TxtRangeYield(0).SetFocus();  // the cursor stands in a rate box while others are loaded
  form->menus.MnuRefresh.Choose();
  Choose("Saxonholt Dental Systems Ltd");
  EXPECT_EQ(form->rateCard.TxtRangeYield(0).Text(), "9.125");
  Type(form->supplier.TxtSupplier(3), "Elsewhere");
  form->Toolbar1.Press("SAVE");
  Type(form->rateCard.TxtRangeYield(0), "£5");  // no rate: what is on record comes back
  Type(form->rateCard.TxtRangeYield(2), "8.126");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Stored("Com0,Yield2,Town", "ID=3"), "9.125 NULL 50000.1234 1.005 8.13 Elsewhere");
  // The default and whoever is made of it have the same digits.
  desktop.answers = {Answer::Ok};
  form->menus.MnuSaveDefault.Choose();
  form->Toolbar1.Press("ADDNEW");
  Type(Name(), "Made of the default");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Stored("Com0", "CompanyName='Made of the default'"), "9.125 NULL 50000.1234 1.005");
  // Without a default nothing is an empty text where a number belongs: what is shown is stored.
  form->database.Plain().Execute("DELETE FROM DefaultSupplier");
  form->Toolbar1.Press("ADDNEW");
  Type(Name(), "Made of nothing");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Stored("Com4,Town", "CompanyName='Made of nothing'"), "NULL NULL 0 NULL ");
}

TEST_F(NothingLostTest, EveryFieldKeepsWhateverIsTypedIntoIt) {
  std::vector<TextBox*> boxes;
  for (int i = 0; i < kSupplierFields; ++i) boxes.push_back(&form->supplier.TxtSupplier(i));
  for (int i = 0; i < kContactFields; ++i) boxes.push_back(&form->contacts.TxtContact(i));
  Choose("Saxonholt Dental Systems Ltd");
  const int contact = form->contacts.CurrentContactId;
  const std::string others = AskAll("SELECT * FROM suppliers WHERE ID<>3");
  for (const std::string odd : {"x'); DROP TABLE suppliers;--", "' OR ''='", "\\'; $1 ? %s \"y\" [z] `w` <ID> <VALUES>",
                                "&amp; ünï €10 \U0001F600", "NULL"}) {
    for (const std::string& text : {odd, odd + std::string(400, 'w')}) {
      std::vector<std::string> typed;
      for (TextBox* box : boxes) {
        Type(*box, text);
        typed.push_back(ReplaceAll(box->Text(), "'", "`"));  // as a statement has it
        EXPECT_FALSE(typed.back().empty());
      }
      form->Toolbar1.Press("SAVE");
      for (const char* key : {"ID4", "ID3"}) form->LvwSuppliers.ClickRow(form->LvwSuppliers.Find(key));
      form->contacts.SelectContact(contact);
      for (std::size_t i = 0; i < boxes.size(); ++i) EXPECT_EQ(boxes[i]->Text(), typed[i]);
    }
  }
  EXPECT_EQ(AskAll("SELECT * FROM suppliers WHERE ID<>3"), others);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(NothingLostTest, NothingIsWrittenForASupplierThatIsNotThere) {
  Elsewhere("DELETE FROM suppliers WHERE ID=2");
  form->LvwSuppliers.ClickRow(form->LvwSuppliers.Find("ID2"));
  EXPECT_EQ(desktop.boxes.at(0).text, "Dealer Not Found Or has been deleted");
  EXPECT_EQ(form->shown.CurrentSupplierId, 1);  // what is shown is the selected supplier
  Choose("Saxonholt Dental Systems Ltd");
  Elsewhere("DELETE FROM suppliers WHERE ID=3");
  Elsewhere("DELETE FROM SupplierFormLink WHERE SupplierId=3");
  Type(form->supplier.TxtSupplier(3), "Late");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(desktop.boxes.at(1).text.substr(0, 53), "Saxonholt Dental Systems Ltd has been removed by anot");
  EXPECT_EQ(form->LvwSuppliers.Find("ID3"), -1);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM SupplierFormLink WHERE SupplierId=3"), "0");
  EXPECT_EQ(form->shown.CurrentSupplierId, 1);
  // Without any supplier there is nobody whose contact it could be, and nobody to publish for.
  Elsewhere("DELETE FROM suppliers");
  form->menus.MnuRefresh.Choose();
  const std::string contacts = Ask("SELECT COUNT(*) FROM contacts");
  Type(form->contacts.TxtContact(1), "Lost");
  desktop.boxes.clear();
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(desktop.boxes.back().title, "Contacts");  // no report that would keep later edits from being stored
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts"), contacts);
}

TEST_F(NothingLostTest, RatesThatAreNoNumbersPriceNothing) {
  const auto set = [this](const std::string& column, const std::string& value) {
    form->database.Plain().Execute("UPDATE suppliers SET " + column + "=" + value + " WHERE ID=3");
    desktop.boxes.clear();
    desktop.launched.clear();
  };
  for (const auto& [column, stored] : {std::pair("Yield2", "'12,5'"), std::pair("RangeEquipFROM1", "'nan'"),
                                       std::pair("AdditionalPremiumYield", "9e999")}) {
    set(column, stored);
    Choose("Saxonholt Dental Systems Ltd");
    ASSERT_FALSE(desktop.boxes.empty()) << column;
    EXPECT_TRUE(desktop.boxes[0].text.starts_with(std::string("Saxonholt Dental Systems Ltd: the column ") + column));
    Type(Box(kBoxCapitalCost), "10000");
    EXPECT_EQ(form->quote.LblResult(kResultPayment).Caption(), "0.00") << column;
    form->Toolbar1.Press("PREVIEW");
    EXPECT_TRUE(desktop.launched.empty()) << column;
    form->LvwSuppliers.ClickRow(0);
    set(column, "1");
  }
}

}  // namespace tarvolinex
