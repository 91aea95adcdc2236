// The window that shows what an import would do.
#include "ui/batch/FrmImport.h"

#include "support/Fixture.h"
#include "ui/batch/FrmRates.h"

namespace tarvolinex {

class ImportWindowTest : public SampleTest {
 protected:
  void InImport(const std::string& file, const std::function<void(FrmImport&)>& play) {
    desktop.files = {folder.File("in.csv", file)};
    desktop.modal = [&](Window& window) {
      auto& import = dynamic_cast<FrmImport&>(window);
      import.CmdFile.Press();
      play(import);
    };
    form->menus.MnuImport.Choose();
  }
  static std::string Seen(const FrmImport& import) {
    std::string rows;
    for (int row = 0; row < import.LvwRows.Count(); ++row) rows += import.LvwRows.RowLine(row) + "|";
    return rows + import.LblSummary.Caption();
  }
};

TEST_F(ImportWindowTest, RowsAreShownImportedAndTakenBack) {
  const auto bring = [](FrmImport& window) { window.CmdImport.Press(); };
  Connection other;
  other.Open(Where());
  const std::string before = Ask("SELECT Town||Yield0||RangeEquipFROM0||AdditionalPremium FROM suppliers WHERE ID=3");
  Choose("Saxonholt Dental Systems Ltd");
  InImport("ID,Town,Yield0,RangeEquipFROM0,AdditionalPremium\n3,York,7.77,123456.78,1\n", bring);
  EXPECT_NE(Ask("SELECT Town||Yield0||RangeEquipFROM0||AdditionalPremium FROM suppliers WHERE ID=3"), before);
  other.Execute("UPDATE suppliers SET Town='Theirs' WHERE ID=4");  // in no way of the import
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(Ask("SELECT Town||Yield0||RangeEquipFROM0||AdditionalPremium FROM suppliers WHERE ID=3"), before);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(form->shown.CurrentSupplierId, 3) << "the user stays where he was";
  other.Execute("UPDATE suppliers SET Town='Boston' WHERE ID=4");
  InImport("ID,Town\n3,York\n4,Boston\n", [](FrmImport& import) {
    EXPECT_EQ(Seen(import),
              "2\tchanged\tTown from \"Reading\" to \"York\"|3\tunchanged\t|0 new, 1 changed, 1 unchanged, 0 refused");
    import.CmdImport.Press();
  });
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "York");
  EXPECT_EQ(form->menus.MnuUndoRemove.Caption(), "&Undo Import or Changes");
  other.Execute("UPDATE suppliers SET Town='Theirs' WHERE ID=3");
  desktop.answers = {Answer::No, Answer::Yes};
  for (const char* town : {"Theirs", "Theirs", "Reading"}) {
    EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), town);
    form->menus.MnuUndoRemove.Choose();
  }
  ASSERT_EQ(desktop.boxes.size(), 2U);
  EXPECT_NE(desktop.boxes[0].text.find("lost:\n\nSaxonholt Dental Systems Ltd\n\nUndo"), std::string::npos);
  InImport("ID,Yield0\n3,101\n4,7\n", [](FrmImport& import) { EXPECT_FALSE(import.CmdImport.Enabled()); });
}

TEST_F(ImportWindowTest, TheChoiceOfAColumnIsRemembered) {
  const auto choose = [](FrmImport& import, int column, const char* field) {
    import.CboColumn.Choose(column);
    for (int i = 0; i < static_cast<int>(import.CboField.Items().size()); ++i) {
      if (import.CboField.Items()[static_cast<std::size_t>(i)].text == field) import.CboField.Choose(i);
    }
  };
  InImport("Nr;Ort\n3;York\n", [&](FrmImport& import) {
    EXPECT_FALSE(import.ChkHeading.Value());
    import.ChkHeading.SetValue(true);
    choose(import, 0, "ID");
    choose(import, 1, "Town");
    EXPECT_NE(Seen(import).find("Town from"), std::string::npos) << Seen(import);
  });
  InImport("Nr;Ort;ID\n3;York;4\n", [&](FrmImport& import) {
    // The file's own name goes before what was chosen.
    EXPECT_EQ(Seen(import).rfind("2\tchanged\tTown from \"Boston\" to \"York\"", 0), 0U) << Seen(import);
  });
  InImport("3,York\n", [&](FrmImport& import) {
    choose(import, 0, "ID");
    choose(import, 1, "Town");
    EXPECT_EQ(Seen(import).rfind("1\tchanged\tTown from \"Reading\" to \"York\"", 0), 0U) << Seen(import);
  });
  desktop.files = {folder.Path() + "/out.csv"};
  form->menus.MnuExportContacts.Choose();
  EXPECT_NE(ReadFile(folder.Path() + "/out.csv").find("SupplierID,CompanyName,firstname"), std::string::npos);
}

TEST_F(ImportWindowTest, RatesOfSeveralSuppliersChangeTogether) {
  const auto card = [this](int id) {
    return Ask(
        "SELECT Yield0||' '||Yield1||' '||Com0||' '||RangeEquipFROM0||' '||AdditionalPremiumMsg FROM suppliers "
        "WHERE ID=" +
        std::to_string(id));
  };
  const std::string first = card(1), second = card(2), third = card(3);
  const auto rates = [&](Menu& menu, const std::function<void(FrmRates&)>& play) {
    desktop.modal = [&](Window& window) { play(dynamic_cast<FrmRates&>(window)); };
    menu.Choose();
  };
  rates(form->menus.MnuChangeRates, [](FrmRates& window) {
    window.TxtAmount.Type("0.1");
    window.LvwSuppliers.ToggleCheck(window.LvwSuppliers.Find("1"));
    window.LvwSuppliers.ToggleCheck(window.LvwSuppliers.Find("3"));
    EXPECT_EQ(window.LvwSuppliers.At(window.LvwSuppliers.Find("3")).cells[1].rfind("Yield0 from 6.5 to 6.6; ", 0), 0U);
    EXPECT_EQ(window.LblSummary.Caption(), "2 changed, 0 refused");
    window.TxtAmount.Type("99");
    EXPECT_FALSE(window.CmdApply.Enabled());
    window.TxtAmount.Type("0.1");
    window.CmdApply.Press();
  });
  EXPECT_EQ(card(1).rfind("6.85 7.6 1.5 ", 0), 0U) << card(1);
  EXPECT_EQ(card(2), second);
  EXPECT_EQ(card(3).rfind("6.6 7.35 1.25 ", 0), 0U) << card(3);
  form->menus.MnuUndoRemove.Choose();
  EXPECT_EQ(card(1) + card(3), first + third);
  Choose("Saxonholt Dental Systems Ltd");
  rates(form->menus.MnuCopyRates, [](FrmRates& window) {
    window.CmdAll.Press();
    window.CmdApply.Press();
  });
  EXPECT_EQ(card(1), third);
  EXPECT_EQ(card(2), third);
}

}  // namespace tarvolinex
