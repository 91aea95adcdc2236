// The supplier list and fields on the sample database.
#include "platform/RuntimeError.h"
#include "store/Suppliers.h"
#include "support/Fixture.h"

namespace tarvolinex {

class SupplierPanelTest : public SampleTest {
 protected:
  TextBox& Field(int field) { return form->supplier.TxtSupplier(field); }
  std::string Name(int id) { return Ask("SELECT CompanyName FROM suppliers WHERE ID=" + std::to_string(id)); }
  std::string Count(const std::string& what) { return Ask("SELECT COUNT(*) FROM " + what); }
  // As the user adds a supplier, with nothing pending.
  void Add(const std::string& name) {
    form->Toolbar1.Press("SAVE");
    form->menus.MnuAdd.Choose();
    ASSERT_EQ(form->shown.CurrentSupplierId, 0);
    Type(Field(kSupplierName), name);
  }
};

TEST_F(SupplierPanelTest, SelectingAnotherStoresTheEditsWithoutAsking) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(3), "Sláinte's Town");
  Type(form->rateCard.TxtRangeYield(0), "7.5x");
  Choose("Millrace Laundry Systems Ltd");
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Sláinte`s Town");
  EXPECT_EQ(Ask("SELECT Yield0 FROM suppliers WHERE ID=3"), "7.5");
  EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Find("ID3")).cells[3], "Sláinte`s Town");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(SupplierPanelTest, TheQuoteFollowsAStoredRateCard) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Box(kBoxCapitalCost), "1000000");
  Type(form->rateCard.TxtRangeYield(0), "20");
  form->TabMain.Choose(kTabDetails);
  EXPECT_EQ(Box(kBoxYield).Text(), "20.00");
}

TEST_F(SupplierPanelTest, AddingWithPendingEditsOnlySavesThemFirst) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(3), "Elsewhere");
  form->menus.MnuAdd.Choose();
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Elsewhere");
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
  EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).key, "ID13");
  EXPECT_EQ(form->LvwSuppliers.Find("ID0"), -1);
  EXPECT_NE(Count("SupplierFormLink WHERE SupplierId=13"), "0");
  EXPECT_EQ(Count("SupplierFormLink WHERE SupplierId=0"), defaults);
}

TEST_F(SupplierPanelTest, RemoveAbandonsANamelessNewSupplier) {
  Add("");
  form->Toolbar1.Press("REMSUPP");
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(Count("suppliers"), "12");
  EXPECT_EQ(form->LvwSuppliers.Find("ID0"), -1);
  EXPECT_EQ(form->shown.CurrentSupplierId, 1);
  EXPECT_TRUE(form->LvwSuppliers.Enabled());
}

TEST_F(SupplierPanelTest, AnEmptiedNameIsNeverStored) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(kSupplierName), " ");
  for (int button = 0; button < 2; ++button) form->contacts.CmdContact(button).Press();
  form->contacts.TxtContact(0).SetFocus();
  EXPECT_EQ(form->ActiveControl(), &Field(kSupplierName));
  form->Close();
  EXPECT_EQ(Name(3), "Saxonholt Dental Systems Ltd");
  EXPECT_NE(Count("contacts WHERE Supplierid=3"), "0");
}

TEST_F(SupplierPanelTest, TheMenusRemoveUndoesWhatTheToolbarsRemoves) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(kSupplierName), "Wrong");
  form->menus.MnuRemove.Choose();
  EXPECT_EQ(Field(kSupplierName).Text(), "Saxonholt Dental Systems Ltd");
  EXPECT_TRUE(desktop.boxes.empty());
  Type(Field(3), "Kept Town");
  desktop.answers = {Answer::Yes};
  form->Toolbar1.Press("REMSUPP");
  EXPECT_EQ(desktop.boxes.at(0).text,
            "Are you sure you want to delete this Dealer:\nSaxonholt Dental Systems Ltd\nContinue?");
  EXPECT_EQ(desktop.boxes.at(0).title, "Remove Dealer");
  EXPECT_EQ(Count("suppliers WHERE ID=3") + Count("contacts WHERE Supplierid=3") +
                Count("SupplierFormLink WHERE SupplierId=3"),
            "000");
  EXPECT_EQ(form->shown.CurrentSupplierId, IdOfKey(form->LvwSuppliers.At(0).key));
}

TEST_F(SupplierPanelTest, TheLastRemovalCanBeTakenBack) {
  Choose("Saxonholt Dental Systems Ltd");
  const std::string contacts = Count("contacts WHERE Supplierid=3"),
                    links = Count("SupplierFormLink WHERE SupplierId=3");
  const std::string card =
      Ask("SELECT Yield0||','||Com4||','||RangeEquipFROM2||','||ResidualOption FROM suppliers WHERE ID=3");
  EXPECT_FALSE(form->menus.MnuUndoRemove.Enabled());
  desktop.answers = {Answer::Yes};
  form->Toolbar1.Press("REMSUPP");
  ASSERT_TRUE(form->menus.MnuUndoRemove.Enabled());
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(Count("contacts WHERE Supplierid=3"), contacts);
  EXPECT_EQ(Count("SupplierFormLink WHERE SupplierId=3"), links);
  EXPECT_EQ(Ask("SELECT Yield0||','||Com4||','||RangeEquipFROM2||','||ResidualOption FROM suppliers WHERE ID=3"), card);
  EXPECT_FALSE(form->menus.MnuUndoRemove.Enabled());
}

TEST_F(SupplierPanelTest, AStoredNameIsTheOneThatUndoAndRemoveGoBy) {
  const auto row = [&] { return form->LvwSuppliers.At(form->LvwSuppliers.Selected()); };
  Add("Zoe Ltd");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->Caption(), "Tarvolinex - Zoe Ltd");
  Type(Field(kSupplierName), "Zoe & Co");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->Caption() + row().toolTip, "Tarvolinex - Zoe & CoDouble click to view <Zoe & Co> calculator");
  Type(Field(3), "Wrong");
  form->menus.MnuRemove.Choose();
  EXPECT_EQ(row().text, "Zoe & Co");
  form->Toolbar1.Press("REMSUPP");
  EXPECT_NE(desktop.boxes.at(0).text.find("Zoe & Co"), std::string::npos);
  // Of two suppliers with one name the removed one comes back.
  form->database.Plain().Execute("UPDATE suppliers SET CompanyName='Zoe & Co' WHERE ID=2");
  form->menus.MnuRefresh.Choose();
  form->LvwSuppliers.ClickRow(form->LvwSuppliers.Find("ID2"));
  desktop.answers = {Answer::Yes};
  form->Toolbar1.Press("REMSUPP");
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(form->shown.CurrentSupplierId, 2);
}

TEST_F(SupplierPanelTest, WhatLeavesASupplierStoresItAndItsContact) {
  Choose("Saxonholt Dental Systems Ltd");
  form->TabMain.Choose(kTabDetails);
  const std::string contact = std::to_string(form->contacts.CurrentContactId);
  Type(form->contacts.TxtContact(2), "Archivist");
  form->Toolbar1.Press("ADDNEW");
  EXPECT_EQ(Ask("SELECT jobtitle FROM contacts WHERE ID=" + contact), "Archivist");
  Type(Field(kSupplierName), "Zoe Ltd");
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(Name(13), "Zoe Ltd");
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(3), "Edited");
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Edited");
  Add("Young Ltd");
  Choose("Saxonholt Dental Systems Ltd");
  EXPECT_EQ(Name(14), "Young Ltd");
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
}

TEST_F(SupplierPanelTest, WithoutASupplierThereIsNothingOldToTypeInto) {
  form->database.Plain().Execute("DELETE FROM suppliers");
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(Field(kSupplierName).Text() + Field(3).Text(), "");
  EXPECT_EQ(form->shown.CurrentSupplierId, 0);
  Type(Field(3), "Town");
  form->Toolbar1.Press("HELP");
  EXPECT_EQ(desktop.launched.size(), 1U);
  form->Toolbar1.Press("ADDNEW");
  EXPECT_EQ(form->LvwSuppliers.Find("ID0"), 0);
  Type(Field(kSupplierName), "First");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Ask("SELECT group_concat(CompanyName) FROM suppliers"), "First");
}

TEST_F(SupplierPanelTest, ARateThatIsOnlyPassedThroughKeepsItsDigits) {
  form->database.Plain().Execute("UPDATE suppliers SET Yield0=9.125, Com0=1.375 WHERE ID=3");
  form->menus.MnuRefresh.Choose();
  Choose("Saxonholt Dental Systems Ltd");
  form->rateCard.TxtRangeYield(0).SetFocus();
  Type(form->rateCard.txtComPerc(0), "1.255");
  Type(Field(3), "Town");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(Ask("SELECT Yield0||' '||Com0 FROM suppliers WHERE ID=3"), "9.125 1.26");
}

TEST_F(SupplierPanelTest, AFailedRemovalIsReportedAndRemovesNothing) {
  form->Toolbar1.Press("SAVE");
  form->database.Plain().Execute("ALTER TABLE suppliers RENAME TO elsewhere");
  desktop.answers = {Answer::Yes};
  form->Toolbar1.Press("REMSUPP");
  form->database.Plain().Execute("ALTER TABLE elsewhere RENAME TO suppliers");
  EXPECT_EQ(desktop.boxes.at(1).text, "Delete Dealer Failed");
  EXPECT_EQ(Count("suppliers") + Count("contacts"), "1230");
}

TEST_F(SupplierPanelTest, TheLastSupplierStays) {
  form->database.Plain().Execute("DELETE FROM suppliers WHERE ID<>3");
  form->menus.MnuRefresh.Choose();
  form->Toolbar1.Press("REMSUPP");
  EXPECT_EQ(desktop.boxes.at(0).text, "You can not delete the last supplier.");
  EXPECT_EQ(desktop.boxes.at(0).title, "Dealer &  Delete");
  EXPECT_EQ(Count("suppliers"), "1");
}

TEST_F(SupplierPanelTest, TheDefaultSupplierTakesTheRatesAndTheTicksOnly) {
  const std::string links = "SELECT group_concat(FormId) FROM SupplierFormLink WHERE SupplierId=0", before = Ask(links);
  form->database.Plain().Execute("DELETE FROM SupplierFormLink WHERE SupplierId=3");
  Choose("Saxonholt Dental Systems Ltd");
  Type(form->rateCard.TxtRangeYield(4), "33");
  desktop.answers = {Answer::Ok, Answer::Ok};
  form->menus.MnuSaveDefault.Choose();
  EXPECT_EQ(desktop.boxes.at(0).title, "Save as Default Dealer");
  EXPECT_EQ(Count("DefaultSupplier"), "1");
  EXPECT_EQ(Ask("SELECT Yield4 FROM DefaultSupplier"), "33");
  EXPECT_EQ(Ask("SELECT coalesce(CompanyName,'')||coalesce(Town,'')||coalesce(www,'') FROM DefaultSupplier"), "");
  EXPECT_EQ(Ask("SELECT max(AdditionalPremium,ResidualOption,MaintenanceOption) FROM DefaultSupplier"), "0");
  EXPECT_EQ(Ask(links), before);  // nobody has touched a tick
  form->forms.LvwForms.ToggleCheck(2);
  form->Toolbar1.Press("SAVE");
  form->menus.MnuSaveDefault.Choose();
  EXPECT_EQ("ID" + Ask(links), form->forms.LvwForms.At(2).key);
  Add("Next");
  EXPECT_EQ(form->rateCard.TxtRangeYield(4).Text(), "33.00");
}

TEST_F(SupplierPanelTest, SortingTwiceByAColumnReversesIt) {
  constexpr int kTown = 4;
  Choose("Saxonholt Dental Systems Ltd");
  form->LvwSuppliers.ClickColumn(kTown);
  EXPECT_EQ(form->LvwSuppliers.At(0).cells[3], "Birmingham");
  form->LvwSuppliers.ClickColumn(kTown);
  EXPECT_EQ(form->LvwSuppliers.At(11).cells[3], "Birmingham");
  EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).key, "ID3");
  Type(Field(3), "Ayr");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Find("ID3")).cells[3], "Ayr");
}

TEST_F(SupplierPanelTest, TheFilterHidesRowsByNameTownOrPostCode) {
  const auto shown = [&] {
    const auto& rows = form->LvwSuppliers.Rows();
    return std::count_if(rows.begin(), rows.end(), [](const auto& row) { return !row.hidden; });
  };
  form->TxtFilter.SetText("LEEDS");
  EXPECT_EQ(shown(), 1);
  form->TxtFilter.SetText("ls10");
  EXPECT_EQ(shown(), 1);
  form->TxtFilter.SetText("systems");
  EXPECT_EQ(shown(), 2);
  form->menus.MnuRefresh.Choose();
  EXPECT_EQ(shown(), 2);
  EXPECT_FALSE(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).hidden);
  form->TxtFilter.SetText("");
  EXPECT_EQ(shown(), 12);
  EXPECT_EQ(form->LvwSuppliers.RowLine(0).substr(0, 44), "Aldermoor Print Finishing Ltd\t0113 496 0210\t");
}

TEST_F(SupplierPanelTest, ClosingSavesUnlessAnErrorWasShown) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(3), "Saved");
  form->Close();
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Saved");
  form->Reopen();
  Choose("Millrace Laundry Systems Ltd");
  Type(Field(3), "Lost");
  ErrorShown = true;
  form->Close();
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=10"), "Leicester");
}

TEST_F(SupplierPanelTest, AFailedSaveEndsTheProgramAndChangesNothing) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Field(3), "Half");
  form->forms.FormLinksChanged = true;
  form->database.Plain().Execute("DROP TABLE SupplierFormLink");
  EXPECT_THROW(form->Toolbar1.Press("SAVE"), ProgramEnded);
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Reading");
  EXPECT_EQ(desktop.boxes.at(0).text.substr(0, 25), "Database update failed.\n\n");
}

TEST_F(SupplierPanelTest, ADailyCopyIsMadeBeforeTheFirstWriteAndFiveAreKept) {
  const std::string pattern = DataFolder + "\\Backup\\*.mdb";
  for (const char* killed : {".tmp", ".77.tmp", ".77.tmp-journal"}) {
    folder.File("Backup/Tarvolinex 2020-01-01.mdb" + std::string(killed), "half");
  }
  using std::chrono::hours;
  desktop.now = std::chrono::system_clock::from_time_t(1800000000);
  Choose("Saxonholt Dental Systems Ltd");
  for (int day = 0; day < 7; ++day) {
    desktop.now += hours(24);
    Type(Field(3), "Town " + std::to_string(day));
    form->Toolbar1.Press("SAVE");
    form->Toolbar1.Press("SAVE");
  }
  const auto copies = ListFiles(pattern);
  EXPECT_EQ(copies.size(), 5U);
  EXPECT_EQ(ListFiles(DataFolder + "\\Backup\\*.*").size(), 5U);
  const auto townIn = [this](const std::string& name) {
    Connection copy;
    copy.Open("dbq=" + DataFolder + "\\Backup\\" + name);
    Recordset town;
    town.Open("SELECT Town FROM suppliers WHERE ID=3", copy);
    return ValueText(town.Field(0));
  };
  EXPECT_EQ(townIn(copies.back()), "Town 5");
  desktop.now -= hours(24 * 400);  // it was wrong
  Type(Field(3), "Town 7");
  form->Toolbar1.Press("SAVE");
  EXPECT_EQ(townIn(ListFiles(pattern).front()), "Town 6");
  EXPECT_EQ(ListFiles(pattern).size(), 5U);
}

TEST_F(SupplierPanelTest, AFormIsOpenedAsACopyOfItsPage) {
  form->forms.LvwForms.DoubleClickRow(0);
  EXPECT_EQ(desktop.launched.at(0).substr(0, 5 + AppFolder.size()), "open " + AppFolder);
  const std::string key = form->forms.LvwForms.At(0).key;
  EXPECT_EQ(ReadFile(AppFolder + "\\temp.html"), ReadFile(DataFolder + "\\forms\\" + key.substr(2) + ".html"));
  DeleteFile(DataFolder + "\\forms\\" + key.substr(2) + ".html");
  form->forms.LvwForms.DoubleClickRow(0);
  EXPECT_EQ(desktop.boxes.at(0).text, "File Not Found");
}

TEST_F(SupplierPanelTest, WhatWasTypedIntoTheQuoteOutlivesASaveOfOtherFields) {
  Choose("Saxonholt Dental Systems Ltd");
  Type(Box(kBoxCapitalCost), "10000");
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

TEST_F(SupplierPanelTest, ANamelessSupplierOfTheDatabaseLeadsToItsName) {
  form->database.Plain().Execute("UPDATE suppliers SET CompanyName=NULL WHERE ID=3");
  form->menus.MnuRefresh.Choose();  // nothing sorts before it
  EXPECT_EQ(form->shown.CurrentSupplierId, 3);
  EXPECT_EQ(form->TabMain.Selected(), kTabDetails);
  EXPECT_EQ(form->ActiveControl(), &Field(kSupplierName));
}

}  // namespace tarvolinex
