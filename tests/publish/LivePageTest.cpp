#include "publish/LivePage.h"

#include "cli/QuoteRows.h"
#include "platform/RuntimeError.h"
#include "platform/text/Json.h"
#include "platform/text/Text.h"
#include "support/Fixture.h"

namespace tarvolinex {

class LivePageTest : public ProgramTest {
 protected:
  LivePageTest() {
    CalculatorPreferences.CurrencySymbol = "$";
    CalculatorPreferences.AliasSupplier = "Dealer";
    CalculatorPreferences.OrgEmail = "lease@example.com";
    SupplierCalcSettings.CompanyName = "O'Neill Ltd";
    SupplierCalcSettings.Town = "Ashford";
    Quote.CapitalCost = *Currency::FromText("10000");
    Quote.DepositValue = *Currency::FromText("1000");
    Quote.Payment = *Currency::FromText("287.415");
    Quote.NumberOfPayments = 36;
  }
  Enquiry Filled() const { return {CalculatorPreferences, SupplierCalcSettings, Quote, AppFolder}; }
  std::string Create(const std::string& page, const std::string& pictures = "") {
    return CreateLivePage(page, pictures, Filled(), run);
  }
  // What a page with this content becomes, without the line ends around it.
  std::string Live(const std::string& content) {
    const std::string page = ReadFile(Create(folder.File("Quote.html", content)));
    EXPECT_EQ(page.substr(0, 2) + page.substr(page.size() - 2), "\r\n\r\n");
    return page.substr(2, page.size() - 4);
  }
  QuoteRecord Quote;
};

TEST_F(LivePageTest, APageWithoutMarkersGetsNothingButTheLineEndsAroundIt) {
  EXPECT_EQ(Live("one\r\n\r\n|two| \x93\xE9\x94"), "one\r\n\r\n|two| \x93\xE9\x94");
  EXPECT_EQ(ReadFile(Create(folder.File("u.html", std::string("\xFF\xFE|\0X\0|\0\xE9\0", 10)))),
            "\xEF\xBB\xBF\r\n|X|é\r\n");  // UTF-16 becomes UTF-8
}

// The table is the calculator page's as well (tests/page/enquiry.test.mjs), so that both fill markers alike.
TEST_F(LivePageTest, MarkersOfTheSharedQuotes) {
  std::ifstream table(LIVE_QUOTES);
  int markers = 0;
  for (std::string line; std::getline(table, line);) {
    const JsonObject row = ParseJsonObject(line);
    QuoteRow given;
    CalculatorPreferences.CurrencySymbol = "$";
    SupplierCalcSettings.AdditionalPremiumMsg = "";
    for (const auto& [name, value] : row) {
      if (const auto* number = std::get_if<JsonNumber>(&value)) {
        QuoteColumns({name}, line).Read({number->text}, given, [&] { return line; });
      } else if (name == "CurrencySymbol") {
        CalculatorPreferences.CurrencySymbol = std::get<std::string>(value);
      } else if (name == "AdditionalPremiumMsg") {
        SupplierCalcSettings.AdditionalPremiumMsg = std::get<std::string>(value);
      }
    }
    Quote = given.quote;
    for (const auto& [name, value] : row) {
      if (name.rfind("Calculator ", 0) != 0) continue;
      EXPECT_EQ(Live("|" + FoldCase(name) + "|"), ToWindows1252(std::get<std::string>(value))) << line;
      ++markers;
    }
  }
  EXPECT_GT(markers, 30);
}

TEST_F(LivePageTest, TheResponseFormCarriesEveryValueToTheOrganisation) {
  const std::string start =
      "<FORM name=\"FrmData\" method=\"POST\" ACTION=\"mailto:lease@example.com?subject=Lease Calculator "
      "Response\" ENCTYPE=\"text/plain\">";
  EXPECT_EQ(Live("a<formstart>b"), "a" + start + "b");
  std::string expected = start + "O`Neill Ltd";
  const std::pair<const char*, const char*> hidden[] = {{"Dealer Name", "O'Neill Ltd"},
                                                        {"Dealer Address 1", ""},
                                                        {"Dealer Address 2", ""},
                                                        {"Dealer Town ", "Ashford"},
                                                        {"Dealer County", ""},
                                                        {"Dealer Postcode", ""},
                                                        {"Dealer Tel", ""},
                                                        {"Dealer Fax", ""},
                                                        {"Dealer Email", ""},
                                                        {"Dealer WWW", ""},
                                                        {"Calculator Capital Cost", "$10000.00"},
                                                        {"Calculator Regular Payment", "$287.42"},
                                                        {"Calculator Payment Period", "Monthly"},
                                                        {"Calculator Residual", "\xA3\x30.00 (0.00%)"},
                                                        {"Calculator Term", "36 Months (3 Years)"},
                                                        {"Calculator Deposit", "$1000.00 (10.00%)"},
                                                        {"Calculator Additional Rate Yes/No", "NO"},
                                                        {"Calculator Additional Rate Text", "Additional Rate"},
                                                        {"Calculator Maintenance", "$0.00"}};
  for (const auto& [name, value] : hidden) {
    expected += std::string("\r\n<INPUT TYPE=HIDDEN Name=\"") + name + "\" VALUE=\"" + value + "\">";
  }
  EXPECT_EQ(Live("<FORMSTART>|Supplier Company Name|<FormEnd>"),
            expected +
                "\r\n<INPUT type=\"submit\" name=\"Tarvolinx Response\" Value=\"Email Form\">"
                "<INPUT TYPE=\"BUTTON\" VALUE=\" Back \" ONCLICK=\"history.back(-1)\"></FORM>");
  const std::string own = Live("<form action=x><FORMEND>");
  EXPECT_NE(own.find("Value=\"Email Form\"><FORM><INPUT TYPE=\"BUTTON\""), std::string::npos);
}

TEST_F(LivePageTest, TheLogoComesFromThePictureFolderOrTheAppFolder) {
  EXPECT_EQ(Live("|headerpic||HEADERPIC|"), "|headerpic|<BR>");
  CalculatorPreferences.ShowHeaderLogo = true;
  folder.File("logo.gif", "g");
  EXPECT_EQ(Live("|HEADERPIC|"), "<img src=\"logo.gif\"><br>");
  folder.File("pictures #1/logo.png", "p");
  EXPECT_EQ(ReadFile(Create(folder.File("a.html", "|HEADERPIC|"), folder.Path() + "\\pictures #1")),
            "\r\n<img src=\"" + folder.Path() + "/pictures %231/logo.png\"><br>\r\n");
}

TEST_F(LivePageTest, EveryEndingInThePathIsReplacedAndAPageIsNeverWrittenOver) {
  std::filesystem::create_directories(folder.Path() + "/my_live.html pages");
  EXPECT_EQ(Create(folder.File("my.html pages/Form.HTML", "x")), folder.Path() + "/my_live.html pages/Form_live.html");
  for (const std::string& bad : {folder.File("page.htm", "x"), folder.Path() + "/none.html"}) {
    EXPECT_THROW(Create(bad), ProgramEnded);
    EXPECT_EQ(desktop.boxes.back().text, "HTML file creation failed");
  }
  EXPECT_EQ(ReadFile(folder.Path() + "/page.htm"), "x");
}

}  // namespace tarvolinex
