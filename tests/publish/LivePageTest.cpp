#include "publish/LivePage.h"

#include <map>

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
  // A quote of the table; the currency symbol and the premium's text may come with it.
  void Show(const JsonObject& row) {
    const std::map<std::string, Currency*> money = {{"CapitalCost", &Quote.CapitalCost},
                                                    {"DepositValue", &Quote.DepositValue},
                                                    {"ResidualValue", &Quote.ResidualValue},
                                                    {"Maintenance", &Quote.Maintenance},
                                                    {"Payment", &Quote.Payment}};
    const std::map<std::string, std::int16_t*> counts = {{"AdvancedPayments", &Quote.AdvancedPayments},
                                                         {"NumberOfPayments", &Quote.NumberOfPayments}};
    for (const auto& [name, value] : row) {
      if (const auto* text = std::get_if<std::string>(&value)) {
        if (name == "CurrencySymbol") CalculatorPreferences.CurrencySymbol = *text;
        if (name == "AdditionalPremiumMsg") SupplierCalcSettings.AdditionalPremiumMsg = *text;
        continue;
      }
      const std::string number = std::get<JsonNumber>(value).text;
      if (name == "Quarterly") {
        Quote.Quarterly = number == "1";
      } else if (name == "ApplyPremium") {
        Quote.ApplyPremium = number == "1";
      } else if (name == "ResidualPercent") {
        Quote.ResidualPercent = std::stof(number);
      } else if (counts.count(name) > 0) {
        *counts.at(name) = static_cast<std::int16_t>(std::stoi(number));
      } else {
        *money.at(name) = *Currency::FromText(number);
      }
    }
  }
  // What a page with this content becomes, without the line ends around it.
  std::string Live(const std::string& content) {
    const std::string path = CreateLivePage(folder.File("Quote.html", content), "", Filled(), run);
    const std::string page = ReadFile(path);
    EXPECT_EQ(page.substr(0, 2) + page.substr(page.size() - 2), "\r\n\r\n");
    return page.substr(2, page.size() - 4);
  }
  QuoteRecord Quote;
};

TEST_F(LivePageTest, APageWithoutMarkersGetsNothingButTheLineEndsAroundIt) {
  EXPECT_EQ(Live("one\r\n\r\n|two| \x93\xE9\x94"), "one\r\n\r\n|two| \x93\xE9\x94");
}

// The table is the calculator page's as well (tests/page/enquiry.test.mjs), so that both fill markers alike.
TEST_F(LivePageTest, MarkersOfTheSharedQuotes) {
  std::ifstream table(LIVE_QUOTES);
  int markers = 0;
  for (std::string line; std::getline(table, line);) {
    const JsonObject row = ParseJsonObject(line);
    Quote = {};
    CalculatorPreferences.CurrencySymbol = "$";
    SupplierCalcSettings.AdditionalPremiumMsg = "";
    Show(row);
    for (const auto& [name, value] : row) {
      if (name.rfind("Calculator ", 0) != 0) continue;
      EXPECT_EQ(Live("|" + FoldCase(name) + "|"), ToWindows1252(std::get<std::string>(value))) << line;
      ++markers;
    }
  }
  EXPECT_GT(markers, 30);
}

TEST_F(LivePageTest, TheResponseFormCarriesEveryValueToTheOrganisation) {
  EXPECT_EQ(Live("a<formstart>b"),
            "a<FORM name=\"FrmData\" method=\"POST\" ACTION=\"mailto:lease@example.com?subject=Lease Calculator "
            "Response\" ENCTYPE=\"text/plain\">b");
  EXPECT_EQ(Live("<FORMSTART>|Supplier Company Name|<FormEnd>"),
            "<FORM name=\"FrmData\" method=\"POST\" ACTION=\"mailto:lease@example.com?subject=Lease Calculator "
            "Response\" ENCTYPE=\"text/plain\">O`Neill Ltd\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Name\" VALUE=\"O'Neill Ltd\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Address 1\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Address 2\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Town \" VALUE=\"Ashford\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer County\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Postcode\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Tel\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Fax\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer Email\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Dealer WWW\" VALUE=\"\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Capital Cost\" VALUE=\"$10000.00\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Regular Payment\" VALUE=\"$287.42\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Payment Period\" VALUE=\"Monthly\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Residual\" VALUE=\"\xA3"
            "0.00 (0.00%)\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Term\" VALUE=\"36 Months (3 Years)\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Deposit\" VALUE=\"$1000.00 (10.00%)\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Additional Rate Yes/No\" VALUE=\"NO\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Additional Rate Text\" VALUE=\"Additional Rate\">\r\n"
            "<INPUT TYPE=HIDDEN Name=\"Calculator Maintenance\" VALUE=\"$0.00\">\r\n"
            "<INPUT type=\"submit\" name=\"Tarvolinx Response\" Value=\"Email Form\">"
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
  const std::string page = folder.File("a.html", "|HEADERPIC|");
  EXPECT_EQ(ReadFile(CreateLivePage(page, folder.Path() + "\\pictures #1", Filled(), run)),
            "\r\n<img src=\"" + folder.Path() + "/pictures %231/logo.png\"><br>\r\n");
}

TEST_F(LivePageTest, EveryEndingInThePathIsReplacedAndAPageIsNeverWrittenOver) {
  const std::string page = folder.File("my.html pages/Form.HTML", "x");
  std::filesystem::create_directories(folder.Path() + "/my_live.html pages");
  EXPECT_EQ(CreateLivePage(page, "", Filled(), run), folder.Path() + "/my_live.html pages/Form_live.html");
  for (const std::string& bad : {folder.File("page.htm", "x"), folder.Path() + "/none.html"}) {
    EXPECT_THROW(CreateLivePage(bad, "", Filled(), run), ProgramEnded);
    EXPECT_EQ(desktop.boxes.back().text, "HTML file creation failed");
  }
  EXPECT_EQ(ReadFile(folder.Path() + "/page.htm"), "x");
}

TEST_F(LivePageTest, APageInUtf16BecomesOneInUtf8) {
  const std::string path =
      CreateLivePage(folder.File("u.html", std::string("\xFF\xFE|\0X\0|\0\xE9\0", 10)), "", Filled(), run);
  EXPECT_EQ(ReadFile(path), "\xEF\xBB\xBF\r\n|X|é\r\n");
}

}  // namespace tarvolinex
