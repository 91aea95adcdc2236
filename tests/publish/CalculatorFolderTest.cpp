#include "publish/CalculatorFolder.h"

#include "platform/RuntimeError.h"
#include "publish/CalculatorData.h"
#include "publish/PageOptions.h"
#include "publish/Template.h"
#include "support/Fixture.h"

namespace tarvolinex {

class CalculatorFolderTest : public ProgramTest {
 protected:
  CalculatorFolderTest() {
    for (const char* page : {"calc.html", "calc_test.html", "general.dat"}) folder.File(page, page);
    MakeFolder(CalculatorFolder());
    supplier.CompanyName = "Zoë Ltd";
  }
  // A form of the supplier's; its page "none" is missing.
  void Link(int id, const std::string& linkName, const std::string& page) {
    forms.push_back({id, "Form " + std::to_string(id), linkName, true});
    if (page != "none") folder.File("Forms/" + std::to_string(id) + ".HTML", page);
  }
  void Build() { BuildCalculatorFolder({OwnBranding(), supplier, forms}, run); }
  std::string InFolder(const std::string& name) { return ReadFile(CalculatorFolder() + name); }
  std::vector<std::string> Names(const std::string& pattern = "*.*") { return ListFiles(CalculatorFolder() + pattern); }
  SupplierCalcSettingsRecord supplier;
  std::vector<FormRow> forms;
};

TEST_F(CalculatorFolderTest, HoldsPagesRecordsDataAndPicturesAndLeavesOtherFilesAlone) {
  folder.File("calculator/calc.ico", "icon");
  folder.File("calculator/old!0.html", "another supplier's");
  folder.File("calculator/logo.bmp", "another supplier's");
  for (const char* picture : {"logo.jpg", "logo.gif", "BACKGROUND.png"})
    folder.File(std::string("logo/") + picture, "x");
  Build();
  EXPECT_EQ(Names(), (std::vector<std::string>{"BACKGROUND.png", "calc.html", "calc.ico", "calc_test.html",
                                               "calcdata.txt", "general.dat", "logo.gif", "Supplier.dat"}));
  EXPECT_EQ(InFolder("Supplier.dat"), RecordBytes(supplier));
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(CalculatorFolderTest, AFailureEndsTheProgram) {
  MakeFolder(CalculatorFolder() + "calcdata.txt");  // no file can take its place
  EXPECT_THROW(Build(), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text, "Failed setting up calculator");
}

TEST_F(CalculatorFolderTest, FormsTakeTheirLinkNamesAndTheNumberOfThoseBefore) {
  int id = 0;
  for (const char* name : {"Quote", "Quote", "Form2", "Form", "a.html", "Tariff.HTML", "tariff.html"}) {
    ++id;
    Link(id, name, std::to_string(id));
  }
  Build();
  EXPECT_EQ(InFolder("Quote!0.html") + InFolder("Quote!1.html") + InFolder("Form2!0.html") + InFolder("Form!1.html") +
                InFolder("a!0.html!0.html") + InFolder("Tariff!0.html!0.html") + InFolder("tariff!1.html!1.html"),
            "1234567");
  EXPECT_NE(InFolder("calcdata.txt").find(R"({"name":"Form","file":"Form!1.html","text":"\r\n4"})"), std::string::npos);
}

TEST_F(CalculatorFolderTest, AFormThatCannotBePublishedIsNamedAndTheRestIs) {
  const std::string longName(300, 'n');
  for (const std::string& name : {std::string("..\\x"), std::string("/tmp/x"), std::string("a:b"),
                                  std::string("Con.ditions"), std::string("Цена"), longName}) {
    forms.clear();
    Link(1, "Good", "good");
    Link(2, name, "p");
    const auto before = ListFiles(AppFolder + "\\*.*");
    Build();
    ASSERT_EQ(desktop.boxes.size(), 1U) << name;
    EXPECT_EQ(desktop.boxes[0].text, "Warning: Form <Form 2> cannot be published, because no file can be called\r\n\"" +
                                         name + "\".\r\n\r\nPlease give the form another name and try again");
    EXPECT_EQ(desktop.boxes[0].title, "Warning");
    EXPECT_EQ(InFolder("Good!0.html"), "good");
    EXPECT_EQ(ListFiles(AppFolder + "\\*.*"), before);
    desktop.boxes.clear();
  }
  forms.clear();
  Link(3, "Gone", "none");
  Link(4, "Gone too", "none");  // of those only the last is named
  Link(5, "Empty", "");
  Link(6, "Empty too", "");
  Build();
  EXPECT_EQ(desktop.boxes.at(0).text,
            "Warning: Form <Form 4> was not found please check and try again"
            "\r\n\r\nWarning: Form <Form 5> is empty please check and try again"
            "\r\n\r\nWarning: Form <Form 6> is empty please check and try again");
  EXPECT_EQ(InFolder("calcdata.txt").find("Empty"), std::string::npos);
}

TEST_F(CalculatorFolderTest, TheDataHoldsWhatIsChosenForThePageAndATextThatTheRecordCannotHoldIsToldOf) {
  Build();
  EXPECT_EQ(InFolder("calcdata.txt").find("options"), std::string::npos);
  PageOptions options = {
      "de", false, 30, 5000, "", "</script>", "\"An\nhonest\" \u20AC\U0001F600", "", std::string(300, 'x')};
  WritePageOptions(AppFolder, options);
  supplier.Town = "\u0141\u00F3d\u017A";
  Build();
  EXPECT_NE(InFolder("calcdata.txt")
                .find(R"(","options":{"language":"de","totals":false,"validDays":30,"ratesDays":3650,"words":{)"
                      R"("deposit":"\u003c/script>","advance":"\"An honest\" \u20ac\ud83d\ude00","maintenance":")" +
                      std::string(kLongestExplanation, 'x') + "\"}},\"general\":"),
            std::string::npos)
      << InFolder("calcdata.txt");
  EXPECT_NE(desktop.boxes.at(0).text.find("\r\n\u0141\u00F3d\u017A - ?\u00F3d?\r\n"), std::string::npos)
      << desktop.boxes[0].text;
  folder.File("General.INI", "[calculator]\nlanguage=xx\ntotals=yes\nvaliddays=-5\nratesdays=7 days\n");
  EXPECT_EQ(ReadPageOptions(AppFolder), (PageOptions{"", true, 0, 7, "", "", "", "", ""}));
}

TEST_F(CalculatorFolderTest, AMissingPageOrFolderEndsTheProgram) {
  std::filesystem::remove(folder.Path() + "/calc_test.html");
  EXPECT_THROW(Build(), ProgramEnded);
  EXPECT_EQ(desktop.boxes.back().text, "File Copy Failed. \n\n" + CalculatorFolder() + "calc_test.html");
  std::filesystem::remove_all(folder.Path() + "/calculator");
  EXPECT_THROW(Build(), ProgramEnded);
  EXPECT_EQ(desktop.boxes.back().text, "Supplier Preferences Save Failed");
}

TEST_F(CalculatorFolderTest, TheIconIsCopiedWhenOneIsChosen) {
  folder.File("icons/COINS.ICO", "icon");
  CopyInstallIcon(OwnBranding(), run);
  EXPECT_EQ(desktop.boxes.back().text, "Warning: No icon has been selected");
  EXPECT_TRUE(Names("calc.ico").empty());
  CalculatorPreferences.IconName = "coins";
  CopyInstallIcon(OwnBranding(), run);
  EXPECT_EQ(InFolder("calc.ico"), "icon");
  CalculatorPreferences.IconName = "none";
  EXPECT_THROW(CopyInstallIcon(OwnBranding(), run), ProgramEnded);
}

TEST_F(CalculatorFolderTest, PagesFollowWhatTheyNameUnlessSomebodyElseWroteThem) {
  folder.File("CalcTemplate.html", "|HEADERPIC|");
  CalculatorPreferences.ShowHeaderLogo = true;
  MakePages(OwnBranding(), run);
  folder.File("logo/logo.PNG", "picture");
  Build();
  EXPECT_EQ(InFolder("calc.html") + InFolder("calc_test.html"),
            "\r\n<img src=logo.PNG><br>\r\n\r\n<img src=logo.PNG><br>\r\n");
  folder.File("calc.html", "<p>mine</p>");
  CustomerReference = "99";
  Build();
  EXPECT_EQ(InFolder("calc.html"), "<p>mine</p>");
}

using PreviewTest = SampleTest;

TEST_F(PreviewTest, EveryOneOpensTheTestPageWithWhatWasTypedLast) {
  const std::string opened = "open " + CalculatorFolder() + "calc_test.html||" + AppFolder + "\\calculator";
  MakePages(OwnBranding(), run);
  folder.File("calculator/LastCalc.dat", "x");
  form->TabMain.Choose(kTabSettings);
  Type(form->rateCard.TxtRangeYield(4), "12.5");
  form->menus.MnuPreview.Choose();
  SupplierCalcSettingsRecord published;
  ReadRecord(CalculatorFolder() + "Supplier.dat", published);
  EXPECT_EQ(published.Yield[4], 12.5F);
  EXPECT_FALSE(FileExists(CalculatorFolder() + "LastCalc.dat"));
  form->Toolbar1.Press("PREVIEW");
  form->LvwSuppliers.DoubleClickRow(0);
  EXPECT_EQ(desktop.launched, (std::vector<std::string>{opened, opened, opened}));
}

TEST(CalculatorDataTest, NothingInAValueLeavesItsString) {
  const std::string data =
      CalculatorData({}, {}, std::string("\0\xFF", 2), "", {{"\"</script><!--", "a\\\n", "\u2028\u20AC\u0001"}});
  EXPECT_NE(data.find(R"("general":"AP8=","supplier":"")"), std::string::npos);
  EXPECT_NE(data.find(R"({"name":"\"\u003c/script>\u003c!--","file":"a\\\n","text":"\u2028\u20ac\u0001"}]};)"),
            std::string::npos)
      << data;
}

}  // namespace tarvolinex
