// The supplier list and fields on the sample database.
#include "platform/RuntimeError.h"
#include "store/Suppliers.h"
#include "support/Fixture.h"

namespace tarvolinex {

class SupplierPanelTest : public SampleTest {
 protected:
  TextBox& Field(int field) { return form->supplier.TxtSupplier(field); }
  void Execute(const std::string& statement) {
    form->database.Plain().Execute(statement);
    form->menus.MnuRefresh.Choose();
  }
  void ChooseSaxonholt() { Choose("Saxonholt Dental Systems Ltd"); }
  std::string Name(int id) { return Ask("SELECT CompanyName FROM suppliers WHERE ID=" + std::to_string(id)); }
  std::string Town() { return Ask("SELECT Town FROM suppliers WHERE ID=3"); }
  std::string Count(const std::string& what) { return Ask("SELECT COUNT(*) FROM " + what); }
  const ListView::Row& Row() { return form->LvwSuppliers.At(form->LvwSuppliers.Selected()); }
  std::string Said(std::size_t box = 0) { return desktop.boxes.at(box).text; }
  // As the user adds a supplier, with nothing pending.
  void Add(const std::string& name) {
    form->Toolbar1.Press("SAVE");
    form->menus.MnuAdd.Choose();
    ASSERT_EQ(form->shown.CurrentSupplierId, 0);
    Type(Field(kSupplierName), name);
  }
  void Remove() {
    desktop.answers = {Answer::Yes};
    form->Toolbar1.Press("REMSUPP");
  }
};

TEST_F(SupplierPanelTest, WhateverLeavesASupplierStoresItAndItsContactWithoutAsking) {
  const TemporaryFolder other;
  if (!OnServer()) std::filesystem::copy_file(DataFolder + "/Tarvolinex.mdb", other.Path() + "/Tarvolinex.mdb");
  const std::pair<std::string, std::function<void()>> ways[] = {
      {"another", [&] { Choose("Millrace Laundry Systems Ltd"); }},
      {"new", [&] { form->Toolbar1.Press("ADDNEW"), form->Toolbar1.Press("REMSUPP"); }},
      {"refresh", [&] { form->menus.MnuRefresh.Choose(); }},
      {"another database",
       [&, first = DataFolder] {
         desktop.files = {other.Path() + "/Tarvolinex.mdb", first + "/Tarvolinex.mdb"};
         form->menus.MnuOpen.Choose();
         EXPECT_EQ(Town(), "Reading");
         form->menus.MnuOpen.Choose();
       }},
      {"close", [&] { form->Close(), form->Reopen(); }}};
  for (const bool contactAlone : {false, true}) {
    for (const auto& [name, leave] : ways) {
      if (OnServer() && name == "another database") continue;
      ChooseSaxonholt();
      form->Toolbar1.Press("SAVE");
      const std::string typed = name + (contactAlone ? "'s contact" : "'s"), stored = EscapeQuotes(typed);
      Type(form->contacts.TxtContact(2), typed);
      if (!contactAlone) Type(Field(3), typed);
      leave();
      EXPECT_EQ(Count("contacts WHERE Supplierid=3 AND jobtitle='" + stored + "'"), "1") << stored;
      EXPECT_TRUE(contactAlone || Town() == stored) << stored;
      EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Find("ID3")).cells[3], Town());
      EXPECT_TRUE(desktop.boxes.empty());
    }
  }
  EXPECT_EQ(Count("suppliers"), "12");  // a nameless new one is abandoned
  Add("Young Ltd");
  ChooseSaxonholt();
  EXPECT_EQ(Name(13), "Young Ltd");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
}

TEST_F(SupplierPanelTest, TheQuoteFollowsAStoredRateCardAndKeepsWhatWasTypedIntoIt) {
  ChooseSaxonholt();
  Type(Box(kBoxCapitalCost), "1000000");
  Type(form->rateCard.TxtRangeYield(0), "20");
  form->TabMain.Choose(kTabDetails);
  EXPECT_EQ(Box(kBoxYield).Text(), "20.00");
  Type(Box(kBoxYield), "12.5");
  const std::string payment = Box(kBoxPayment).Text();
  form->TabMain.Choose(kTabDetails);
  Type(Field(6), "0118 000");
  form->TabMain.Choose(kTabQuote);
  EXPECT_EQ(Box(kBoxYield).Text() + " " + Box(kBoxPayment).Text(), "12.50 " + payment);
  // A locked cost stays, whatever becomes of the rates.
  Type(Box(kBoxPayment), "300");
  form->quote.ckCapLock.SetValue(true);
  const std::string cost = Box(kBoxCapitalCost).Text();
  Type(form->rateCard.TxtRangeYield(3), "20");
  form->TabMain.Choose(kTabDetails);
  EXPECT_EQ(Box(kBoxCapitalCost).Text() + " " + Box(kBoxPayment).Text(), cost + " 300.00");
}

TEST_F(SupplierPanelTest, AddingWithPendingEditsOnlySavesThemFirst) {
  ChooseSaxonholt();
  Type(Field(3), "Elsewhere");
  form->menus.MnuAdd.Choose();
  EXPECT_EQ(std::to_string(form->shown.CurrentSupplierId) + Town(), "3Elsewhere");
  form->menus.MnuAdd.Choose();
  EXPECT_EQ(form->shown.CurrentSupplierId, 0);
  EXPECT_EQ(form->TabMain.Selected(), kTabDetails);
  EXPECT_EQ(form->ActiveControl(), &Field(kSupplierName));
  EXPECT_FALSE(form->menus.MnuEdit.Enabled());
  EXPECT_TRUE(form->TabMain.Tabs()[kTabDetails].enabled && form->Toolbar1.Buttons()[1].enabled);
}

TEST_F(SupplierPanelTest, ANewSupplierIsSeededStoredAndSelected) {
  Add("Aardvark Ltd");
  EXPECT_NE(form->rateCard.TxtRangeYield(0).Text(), "");
  form->forms.LvwForms.SetChecked(0, false);
  form->forms.LvwForms.ToggleCheck(0);
  const std::string defaults = Count("SupplierFormLink WHERE SupplierId=0");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Name(13), "Aardvark Ltd");
  EXPECT_EQ(form->shown.CurrentSupplierId, 13);
  EXPECT_EQ(Row().key, "ID13");
  EXPECT_EQ(form->LvwSuppliers.Find("ID0"), -1);
  EXPECT_NE(Count("SupplierFormLink WHERE SupplierId=13"), "0");
  EXPECT_EQ(Count("SupplierFormLink WHERE SupplierId=0"), defaults);
}

TEST_F(SupplierPanelTest, AnEmptiedNameIsNeverStored) {
  ChooseSaxonholt();
  Type(Field(kSupplierName), " ");
  for (int button = 0; button < 2; ++button) form->contacts.CmdContact(button).Press();
  form->contacts.TxtContact(0).SetFocus();
  EXPECT_EQ(form->ActiveControl(), &Field(kSupplierName));
  form->Close();
  EXPECT_EQ(Name(3), "Saxonholt Dental Systems Ltd");
  EXPECT_NE(Count("contacts WHERE Supplierid=3"), "0");
}

TEST_F(SupplierPanelTest, TheMenusRemoveUndoesWhatTheToolbarsRemoves) {
  ChooseSaxonholt();
  Type(Field(kSupplierName), "Wrong");
  form->menus.MnuRemove.Choose();
  EXPECT_EQ(Field(kSupplierName).Text(), "Saxonholt Dental Systems Ltd");
  EXPECT_TRUE(desktop.boxes.empty());
  Type(Field(3), "Kept Town");
  Remove();
  EXPECT_EQ(Said(), "Are you sure you want to delete this Dealer:\nSaxonholt Dental Systems Ltd\nContinue?");
  EXPECT_EQ(desktop.boxes[0].title, "Remove Dealer");
  EXPECT_EQ(Count("suppliers WHERE ID=3") + Count("contacts WHERE Supplierid=3") +
                Count("SupplierFormLink WHERE SupplierId=3"),
            "000");
  EXPECT_EQ(form->shown.CurrentSupplierId, IdOfKey(form->LvwSuppliers.At(0).key));
}

TEST_F(SupplierPanelTest, AStoredNameIsTheOneThatUndoAndRemoveGoBy) {
  EXPECT_FALSE(form->menus.MnuUndoRemove.Enabled());
  Add("Zoe Ltd");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->Caption(), "Tarvolinex - Zoe Ltd");
  Type(Field(kSupplierName), "Zoe & Co");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->Caption() + Row().toolTip, "Tarvolinex - Zoe & CoDouble click to view <Zoe & Co> calculator");
  Type(Field(3), "Wrong");
  form->menus.MnuRemove.Choose();
  EXPECT_EQ(Row().text, "Zoe & Co");
  form->Toolbar1.Press("REMSUPP");
  EXPECT_NE(Said().find("Zoe & Co"), std::string::npos);
  EXPECT_EQ(Name(13), "Zoe & Co");  // nobody has agreed
  // Of two suppliers with one name the removed one comes back.
  Execute("UPDATE suppliers SET CompanyName='Zoe & Co' WHERE ID=2");
  form->LvwSuppliers.ClickRow(form->LvwSuppliers.Find("ID2"));
  Remove();
  EXPECT_TRUE(form->menus.MnuUndoRemove.Enabled());
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(form->shown.CurrentSupplierId, 2);
  EXPECT_FALSE(form->menus.MnuUndoRemove.Enabled());
}

TEST_F(SupplierPanelTest, WithoutASupplierThereIsNothingOldToTypeIntoNorToPublish) {
  Type(Box(kBoxCapitalCost), "10000");
  ASSERT_NE(form->quote.Quote.Yield, 0);
  Execute("DELETE FROM suppliers");
  EXPECT_EQ(Field(kSupplierName).Text() + Field(3).Text() + SupplierCalcSettings.CompanyName.Trimmed(), "");
  EXPECT_EQ(form->shown.CurrentSupplierId, 0);
  EXPECT_EQ(form->quote.LblResult(kResultYield).Caption(), "0.00");
  EXPECT_TRUE(form->send.lvSendContacts.Rows().empty());
  form->Toolbar1.Press("PREVIEW");
  for (const int go : {kGoSend, kGoCreate}) form->send.CmdCalcGo(go).Press();
  EXPECT_EQ(desktop.boxes.size(), 3U);
  EXPECT_TRUE(desktop.launched.empty());
  Type(Field(3), "Town");
  form->Toolbar1.Press("HELP");
  EXPECT_EQ(desktop.launched.size(), 1U);
  form->Toolbar1.Press("ADDNEW");
  EXPECT_EQ(form->LvwSuppliers.Find("ID0"), 0);
  Type(Field(kSupplierName), "First");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Ask("SELECT MIN(CompanyName)||MAX(CompanyName) FROM suppliers"), "FirstFirst");
}

TEST_F(SupplierPanelTest, AFailedRemovalIsReportedAndRemovesNothing) {
  form->Toolbar1.Press("SAVE");
  form->database.Plain().Execute("ALTER TABLE suppliers RENAME TO elsewhere");
  Remove();
  form->database.Plain().Execute("ALTER TABLE elsewhere RENAME TO suppliers");
  EXPECT_EQ(Said(1), "Delete Dealer Failed");
  EXPECT_EQ(Count("suppliers") + Count("contacts"), "1230");
}

TEST_F(SupplierPanelTest, TheLastSupplierStays) {
  Execute("DELETE FROM suppliers WHERE ID<>3");
  form->Toolbar1.Press("REMSUPP");
  EXPECT_EQ(Said() + desktop.boxes[0].title, "You can not delete the last supplier.Dealer &  Delete");
  EXPECT_EQ(Count("suppliers"), "1");
}

TEST_F(SupplierPanelTest, TheDefaultSupplierTakesTheRatesAndTheTicksOnly) {
  const std::string links = "SELECT SUM(FormId) FROM SupplierFormLink WHERE SupplierId=0", before = Ask(links);
  form->database.Plain().Execute("DELETE FROM SupplierFormLink WHERE SupplierId=3");
  ChooseSaxonholt();
  Type(form->rateCard.TxtRangeYield(4), "33");
  form->menus.MnuSaveDefault.Choose();  // and Cancel
  EXPECT_NE(Ask("SELECT Yield4 FROM DefaultSupplier"), "33");
  desktop.answers = {Answer::Ok, Answer::Ok};
  form->menus.MnuSaveDefault.Choose();
  EXPECT_EQ(desktop.boxes.at(0).title, "Save as Default Dealer");
  EXPECT_EQ(Count("DefaultSupplier"), "1");
  EXPECT_EQ(Ask("SELECT Yield4||coalesce(CompanyName,'')||coalesce(Town,'')||coalesce(www,'') FROM DefaultSupplier "
                "WHERE AdditionalPremium=NO AND ResidualOption=NO AND MaintenanceOption=NO"),
            "33");
  EXPECT_EQ(Ask(links), before);  // nobody has touched a tick
  form->forms.LvwForms.ToggleCheck(2);
  form->Toolbar1.Press("SAVE");
  form->menus.MnuSaveDefault.Choose();
  EXPECT_EQ("ID" + Ask(links), form->forms.LvwForms.At(2).key);
  form->LvwSuppliers.ClickRow(0);  // with other forms
  Add("Next");
  EXPECT_EQ(form->rateCard.TxtRangeYield(4).Text(), "33.00");
  for (const auto& row : form->forms.LvwForms.Rows()) EXPECT_EQ(row.checked, row.key == "ID" + Ask(links)) << row.key;
}

TEST_F(SupplierPanelTest, TheListIsInTheOrderOfTheNamesAndANamelessOneLeadsToItsName) {
  for (const char* change : {"='' WHERE ID=3", "='ÉCLAIR' WHERE ID=4", "='éclair' WHERE ID=2", "=NULL WHERE ID=5",
                             "='aldermoor PRINT', Town=NULL WHERE ID=6"}) {
    form->database.Plain().Execute(std::string("UPDATE suppliers SET CompanyName") + change);
  }
  form->menus.MnuRefresh.Choose();
  const ListView& list = form->LvwSuppliers;
  ASSERT_EQ(list.Count(), 12);
  EXPECT_EQ(list.At(0).key + list.At(1).key + list.At(2).key + list.At(3).key, "ID3ID5ID6ID1");
  EXPECT_EQ(list.At(0).text + list.At(0).toolTip, "<NEW>Double click to view <> calculator");
  EXPECT_EQ(list.At(2).cells[3], "");
  EXPECT_EQ(list.At(3).toolTip, "Double click to view <Aldermoor Print Finishing Ltd> calculator");
  EXPECT_EQ(list.At(10).key + list.At(11).key, "ID2ID4");  // the same to the order: by ID
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->TabMain.Selected(), kTabDetails);
  EXPECT_EQ(form->ActiveControl(), &Field(kSupplierName));
}

TEST_F(SupplierPanelTest, TheFilterHidesRowsByNameTownPostCodeOrContact) {
  const auto& rows = form->LvwSuppliers.Rows();
  const std::pair<std::string, int> filters[] = {
      {"LEEDS", 1},  {"ls10", 1},    {Ask("SELECT surname FROM contacts WHERE Supplierid=5"), 1},
      {"nobody", 0}, {"systems", 2}, {"", 12}};
  for (const auto& [filter, shown] : filters) {
    form->TxtFilter.Type(filter);
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](const auto& row) { return !row.hidden; }), shown) << filter;
    EXPECT_EQ(form->LvwSuppliers.NoMatchText, "No Dealer matches");
    if (shown == 0) continue;
    form->menus.MnuRefresh.Choose();
    EXPECT_FALSE(Row().hidden);
  }
  form->TxtFilter.Type("saxon");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->LvwSuppliers.RowLine(0).substr(0, 44), "Aldermoor Print Finishing Ltd\t0113 496 0210\t");
}

TEST_F(SupplierPanelTest, ClosingAfterAnErrorSavesNothing) {
  ChooseSaxonholt();
  Type(Field(3), "Lost");
  form->Working = true;  // while a calculator travels the window stays, and the work is asked to stop
  EXPECT_FALSE(form->MayClose());
  EXPECT_TRUE(run.StopRequested);
  form->Working = false;
  ErrorShown = true;
  form->Close();
  EXPECT_EQ(Town(), "Reading");
}

TEST_F(SupplierPanelTest, AFailedSaveEndsTheProgramAndChangesNothing) {
  ChooseSaxonholt();
  Type(Field(3), "Half");
  form->forms.FormLinksChanged = true;
  form->database.Plain().Execute("DROP TABLE SupplierFormLink");
  EXPECT_THROW(form->Toolbar1.Press("SAVE"), ProgramEnded);
  EXPECT_EQ(Town(), "Reading");
  EXPECT_EQ(Said().substr(0, 25), "Database update failed.\n\n");
}

TEST_F(SupplierPanelTest, AFormIsOpenedAsACopyOfItsPage) {
  form->forms.LvwForms.DoubleClickRow(0);
  EXPECT_EQ(desktop.launched.at(0).substr(0, 5 + AppFolder.size()), "open " + AppFolder);
  const std::string page = DataFolder + "\\forms\\" + form->forms.LvwForms.At(0).key.substr(2) + ".html";
  EXPECT_EQ(ReadFile(AppFolder + "\\temp.html"), ReadFile(page));
  DeleteFile(page);
  form->forms.LvwForms.DoubleClickRow(0);
  EXPECT_EQ(Said(), "File Not Found");
  EXPECT_EQ(form->forms.LvwForms.Count(), 4);
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(form->forms.LvwForms.Count(), 3);  // without a page it is not offered
}

}  // namespace tarvolinex
