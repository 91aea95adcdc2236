#include "publish/Template.h"

#include "publish/Preferences.h"
#include "support/Fixture.h"

namespace tarvolinex {

class TemplateTest : public ProgramTest {
 protected:
  TemplateTest() {
    CustomerReference = "104233";
    prefs.AliasCalcName = " Lease Tool ";
    prefs.OrgEmail = "lease@example.com";
    prefs.PageBackColour = 0x4080FF;
  }
  std::string Fill(const std::string& text, bool isTestPage = false) {
    return FillPlaceholders(text, OwnBranding(), isTestPage);
  }
  std::string Page(const std::string& name) { return ReadFile(folder.Path() + "/" + name); }
  CalculatorPreferencesRecord& prefs = CalculatorPreferences;
};

TEST_F(TemplateTest, TokensAreFilledEverywhereAndTheTwoPictureTokensOnlyAsWritten) {
  for (const char* name : {"logo/logo.jpg", "logo/LOGO.gif", "logo/Background.png"}) folder.File(name, "");
  EXPECT_EQ(Fill("|colourbackground| |CalculatorName|,|CALCULATORNAME| |leaseorgemail|"),
            "#FF8040 Lease Tool,Lease Tool lease@example.com");
  EXPECT_EQ(Fill("<|HEADERPIC||headerpic||PICBACKGROUND||picbackground|>"), "<<BR>|headerpic||picbackground|>");
  prefs.ShowHeaderLogo = prefs.ShowBackground = true;
  EXPECT_EQ(Fill("|HEADERPIC| |PICBACKGROUND|"), "<img src=LOGO.gif><br> Background=Background.png");
  EXPECT_EQ(Fill("|ClassId| |CustRef| |asptags| |OTHER|"),
            "4B2D91E0-7C3A-4F15-9E62-1A8C5D0F37B4 104233 &ver=" TARVOLINEX_VERSION " |OTHER|");
  EXPECT_EQ(Fill("|CLASSID|", true), "A71C5E08-3D42-11D7-8C19-0004AC6E2F51");
}

TEST_F(TemplateTest, ValuesAreWrittenInThePagesCharacterSet) {
  prefs.AliasCalcName = "Größe €";
  const std::pair<std::string, std::string> written[] = {
      {"<meta charset=\"utf-8\">", "Größe €"},
      {"", "Gr\xF6\xDF\x65 \x80"},
      {"<meta http-equiv=a content='text/html; charset=ISO-8859-2'>", "Gr\xF6\xDF\x65 &#8364;"}};
  for (const auto& [head, name] : written) EXPECT_EQ(Fill(head + "|CALCULATORNAME|"), head + name);
}

TEST_F(TemplateTest, SavingWritesTheRecordAndBothPagesLineByLine) {
  folder.File("CalcTemplate.html", "a|CLASSID|\nb\xE9\r\nc\rd");
  SaveCalculatorPreferences(OwnBranding(), run);
  EXPECT_EQ(Page("General.dat").size(), 824U);
  EXPECT_EQ(Page("calc.html"), "\r\na4B2D91E0-7C3A-4F15-9E62-1A8C5D0F37B4\r\nb\xE9\r\nc\r\nd\r\n");
  EXPECT_EQ(Page("calc_test.html"), "\r\naA71C5E08-3D42-11D7-8C19-0004AC6E2F51\r\nb\xE9\r\nc\r\nd\r\n");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(TemplateTest, WithoutATemplateTheRecordIsSavedAndThePagesStay) {
  folder.File("Calc.Html", "old");
  SaveCalculatorPreferences(OwnBranding(), run);
  EXPECT_EQ(Page("General.dat").size(), 824U);
  EXPECT_TRUE(desktop.boxes.empty());
  folder.File("CalcTemplate.html", std::string("MZ\0\0", 4));  // no text
  SaveCalculatorPreferences(OwnBranding(), run);
  EXPECT_EQ(desktop.boxes.at(0).text, "HTML creation failed");
  EXPECT_EQ(Page("Calc.Html"), "old");
}

}  // namespace tarvolinex
