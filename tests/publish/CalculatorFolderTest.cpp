#include "publish/CalculatorFolder.h"

#include "platform/RuntimeError.h"
#include "publish/CalculatorData.h"
#include "publish/Template.h"
#include "store/Statements.h"
#include "store/Suppliers.h"
#include "support/Fixture.h"

namespace tarvolinex {

class CalculatorFolderTest : public SampleTest {
 protected:
  CalculatorFolderTest() {
    for (const char* page : {"calc.html", "calc_test.html", "general.dat"}) folder.File(page, page);
    for (const auto& file : ListFiles(folder.Path() + "/logo/*.*")) DeleteFile(folder.Path() + "/logo/" + file);
    form->database.ExecuteStatement("DELETE FROM SupplierFormLink");
    form->database.ExecuteStatement("DELETE FROM Forms");
    desktop.boxes.clear();
  }
  void Link(int id, const std::string& linkName, const std::string& page) {
    form->database.ExecuteStatement("INSERT INTO Forms (ID,Description,LinkName,available) VALUES(" +
                                    std::to_string(id) + ",'Form " + std::to_string(id) + "','" + linkName + "',1)");
    form->database.ExecuteStatement("INSERT INTO SupplierFormLink VALUES(" + std::to_string(id) + "," +
                                    std::to_string(form->shown.CurrentSupplierId) + ")");
    const std::string name = "Forms/" + std::to_string(id) + ".HTML";
    if (page == "none") {
      std::filesystem::remove(folder.Path() + "/" + name);
    } else {
      folder.File(name, page);
    }
  }
  std::string InFolder(const std::string& name) { return ReadFile(CalculatorFolder() + name); }
  std::vector<std::string> Names(const std::string& pattern = "*.*") { return ListFiles(CalculatorFolder() + pattern); }
};

TEST_F(CalculatorFolderTest, HoldsPagesRecordsAndDataAndLeavesOtherFilesAlone) {
  folder.File("calculator/calc.ico", "icon");
  folder.File("calculator/old!0.html", "another supplier's");
  folder.File("calculator/logo.bmp", "another supplier's");
  BuildCalculatorFolder(form->Calculator(), run);
  EXPECT_EQ(Names(), (std::vector<std::string>{"calc.html", "calc.ico", "calc_test.html", "calcdata.txt", "general.dat",
                                               "setup.exe", "Supplier.dat"}));
  EXPECT_EQ(InFolder("Supplier.dat"), RecordBytes(SupplierCalcSettings));
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(form->TxtStatus.Text(), "");
}

TEST_F(CalculatorFolderTest, PicturesComeUnderTheirOwnNames) {
  folder.File("logo/logo.jpg", "jpg");
  folder.File("logo/logo.gif", "gif");
  folder.File("logo/BACKGROUND.png", "png");
  BuildCalculatorFolder(form->Calculator(), run);
  EXPECT_EQ(Names("logo.*"), std::vector<std::string>{"logo.gif"});
  EXPECT_EQ(LogoFileName(DataFolder), "logo.gif");
  EXPECT_EQ(InFolder("background.png"), "png");
}

TEST_F(CalculatorFolderTest, FormsTakeTheirLinkNamesAndTheNumberOfThoseBefore) {
  Link(1, "Quote", "one");
  Link(2, "Quote", "two");
  Link(3, "Form2", "three");
  Link(4, "Form", "four");
  Link(5, "a.html", "five");
  Link(6, "Tariff.HTML", "six");
  Link(7, "tariff.html", "seven");
  BuildCalculatorFolder(form->Calculator(), run);
  EXPECT_EQ(InFolder("Quote!0.html") + InFolder("Quote!1.html"), "onetwo");
  EXPECT_EQ(InFolder("Form2!0.html") + InFolder("Form!1.html"), "threefour");
  EXPECT_EQ(InFolder("a!0.html!0.html"), "five");
  EXPECT_EQ(InFolder("Tariff!0.html!0.html") + InFolder("tariff!1.html!1.html"), "sixseven");
  EXPECT_NE(InFolder("calcdata.txt").find(R"({"name":"Form","file":"Form!1.html","text":"\r\nfour"})"),
            std::string::npos);
}

TEST_F(CalculatorFolderTest, AFormThatCannotBePublishedIsNamedAndTheRestIs) {
  struct Case {
    const char *linkName, *page;
    std::string warning;
  };
  const std::string longName(300, 'n');
  for (const Case& c : {Case{"Gone", "none", "Warning: Form <Form 2> was not found please check and try again"},
                        Case{"Empty", "", "Warning: Form <Form 2> is empty please check and try again"},
                        Case{"..\\x", "p", "no file can be called"}, Case{"/tmp/x", "p", "no file can be called"},
                        Case{"a:b", "p", "no file can be called"}, Case{"Con.ditions", "p", "no file can be called"},
                        Case{"Цена", "p", "no file can be called"}, Case{longName.c_str(), "p", longName}}) {
    form->database.ExecuteStatement("DELETE FROM Forms");
    form->database.ExecuteStatement("DELETE FROM SupplierFormLink");
    Link(1, "Good", "good");
    Link(2, c.linkName, c.page);
    const auto before = ListFiles(AppFolder + "\\*.*");
    BuildCalculatorFolder(form->Calculator(), run);
    ASSERT_FALSE(desktop.boxes.empty()) << c.linkName;
    EXPECT_NE(desktop.boxes.back().text.find(c.warning), std::string::npos) << desktop.boxes.back().text;
    EXPECT_EQ(desktop.boxes.back().title, "Warning");
    EXPECT_EQ(InFolder("Good!0.html"), "good");
    EXPECT_EQ(ListFiles(AppFolder + "\\*.*"), before);
    desktop.boxes.clear();
  }
  form->database.ExecuteStatement("UPDATE Forms SET LinkName='Gone' WHERE ID=2");
  Link(3, "Gone too", "none");
  BuildCalculatorFolder(form->Calculator(), run);
  Link(4, "Empty", "");
  Link(5, "Empty too", "");
  BuildCalculatorFolder(form->Calculator(), run);
  ASSERT_EQ(desktop.boxes.size(), 2U);
  const std::string missing = "Warning: Form <Form 3> was not found please check and try again";
  EXPECT_EQ(desktop.boxes[0].text, missing);
  EXPECT_EQ(desktop.boxes[1].text, missing +
                                       "\r\n\r\nWarning: Form <Form 4> is empty please check and try again"
                                       "\r\n\r\nWarning: Form <Form 5> is empty please check and try again");
}

TEST_F(CalculatorFolderTest, AMissingPageOrFolderEndsTheProgram) {
  std::filesystem::remove(folder.Path() + "/calc_test.html");
  EXPECT_THROW(BuildCalculatorFolder(form->Calculator(), run), ProgramEnded);
  EXPECT_EQ(desktop.boxes.back().text, "File Copy Failed. \n\n" + CalculatorFolder() + "calc_test.html");
  std::filesystem::remove_all(folder.Path() + "/calculator");
  EXPECT_THROW(BuildCalculatorFolder(form->Calculator(), run), ProgramEnded);
  EXPECT_EQ(desktop.boxes.back().text, "Supplier Preferences Save Failed");
}

TEST_F(CalculatorFolderTest, EveryPreviewOpensTheTestPageWithWhatWasTypedLast) {
  const std::string opened = "open " + CalculatorFolder() + "calc_test.html||" + AppFolder + "\\calculator";
  folder.File("calculator/LastCalc.dat", "x");
  form->TabMain.Choose(kTabSettings);
  Type(form->rateCard.TxtRangeYield(4), "12.5");
  form->menus.MnuPreview.Choose();
  EXPECT_EQ(desktop.launched, std::vector<std::string>{opened});
  SupplierCalcSettingsRecord published;
  ReadRecord(CalculatorFolder() + "Supplier.dat", published);
  EXPECT_EQ(published.Yield[4], 12.5F);
  EXPECT_TRUE(Names("LastCalc.dat").empty());
  form->Toolbar1.Press("PREVIEW");
  form->LvwSuppliers.DoubleClickRow(0);
  EXPECT_EQ(desktop.launched, (std::vector<std::string>{opened, opened, opened}));
}

TEST_F(CalculatorFolderTest, TheIconIsCopiedWhenOneIsChosen) {
  CalculatorPreferences.IconName = "";
  CopyInstallIcon(OwnBranding(), run);
  EXPECT_EQ(desktop.boxes.back().text, "Warning: No icon has been selected");
  EXPECT_TRUE(Names("calc.ico").empty());
  CalculatorPreferences.IconName = "coins";
  CopyInstallIcon(OwnBranding(), run);
  EXPECT_EQ(InFolder("calc.ico").size(), 766U);
  CalculatorPreferences.IconName = "none";
  EXPECT_THROW(CopyInstallIcon(OwnBranding(), run), ProgramEnded);
}

TEST_F(CalculatorFolderTest, PagesFollowWhatTheyNameUnlessSomebodyElseWroteThem) {
  CalculatorPreferences.ShowHeaderLogo = true;
  MakePages(OwnBranding(), run);
  folder.File("logo/logo.PNG", "picture");
  BuildCalculatorFolder(form->Calculator(), run);
  EXPECT_NE(InFolder("calc.html").find("<img src=logo.PNG>"), std::string::npos);
  EXPECT_NE(InFolder("calc_test.html").find("<img src=logo.PNG>"), std::string::npos);
  folder.File("calc.html", "<p>mine</p>");
  CustomerReference = "99";
  BuildCalculatorFolder(form->Calculator(), run);
  EXPECT_EQ(InFolder("calc.html"), "<p>mine</p>");
}

TEST(CalculatorDataTest, NothingInAValueLeavesItsString) {
  const std::string data =
      CalculatorData({}, std::string("\0\xFF", 2), "", {{"\"</script><!--", "a\\\n", "\u2028\u20AC\u0001"}});
  EXPECT_NE(data.find(R"("general":"AP8=","supplier":"")"), std::string::npos);
  EXPECT_NE(data.find(R"({"name":"\"\u003c/script>\u003c!--","file":"a\\\n","text":"\u2028\u20ac\u0001"}]};)"),
            std::string::npos)
      << data;
}

}  // namespace tarvolinex
