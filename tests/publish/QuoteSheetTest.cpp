#include "publish/QuoteSheet.h"

#include "calc/Schedule.h"
#include "platform/text/Text.h"
#include "publish/SheetTemplate.h"
#include "support/Failure.h"
#include "support/Fixture.h"

namespace tarvolinex {

class QuoteSheetTest : public ::testing::Test {
 protected:
  QuoteSheetTest() {
    contents.prefs.CurrencySymbol = "£";
    contents.prefs.TaxRate = 20;
    contents.prefs.AliasVat = "VAT & duty";
    contents.prefs.AliasDeposit = "Initial <CALCNAME>";
    contents.prefs.AliasCalcName = "rental";
    contents.prefs.AliasSupplier = "Dealer";
    contents.prefs.AliasCapEquip = "Equipment";
    contents.prefs.OrgCompanyName = "North & Gate";
    contents.prefs.OrgAddress1 = "1 High <Street>";
    contents.prefs.OrgTown = "Lincoln";
    contents.supplier.CompanyName = "Aldermoor";
    contents.supplier.Yield.fill(10);
    contents.supplier.Com.fill(2);
    contents.date = contents.start = std::chrono::year(2027) / 1 / 31;
    AddVariant(1, 1234567);
  }
  void AddVariant(std::int16_t payments, double cost, double deposit = 0) {
    QuoteRecord asked;
    asked.CapitalCost = *Currency::FromDouble(cost);
    asked.DepositValue = *Currency::FromDouble(deposit);
    asked.NumberOfPayments = payments;
    contents.variants.push_back(*Priced(kModeForward, asked, {contents.supplier, contents.prefs.TaxRate}));
  }
  std::string Fill(const std::string& text) { return FillSheet(text, "Sheet.html", contents).html; }
  // What is read: cells with a bar behind them, without empty lines.
  static std::string WordsOf(const std::string& html) {
    std::string words;
    bool tag = false;
    for (const char c : ReplaceAll(html, "</td>", "|")) {
      if (c == '<') tag = true;
      if (!tag && (c != '\n' || (!words.empty() && words.back() != '\n'))) words += c;
      if (c == '>') tag = false;
    }
    return words;
  }
  SheetContents contents;
};

TEST_F(QuoteSheetTest, MarkersBecomeWordsAmountsAndDays) {
  contents.customer = "Smith <b>& Co</b> £ <VAT>";
  const std::pair<const char*, const char*> filled[] = {
      {"<ORGNAME>|<ORGADDRESS>|<SUPPLIERNAME>", "North &amp; Gate|1 High &lt;Street&gt;<br>Lincoln|Aldermoor"},
      {"<DEPOSIT>, <VAT> in £", "Initial rental, VAT &amp; duty in £"},
      {"<CUSTOMER>", "Smith &lt;b&gt;&amp; Co&lt;/b&gt; £ &lt;VAT&gt;"},
      {"<PAYMENTS> of <PAYMENT>, <PAYMENTINCTAX> at <TAXRATE>", "1 of £1,269,752.16, £1,523,702.59 at 20%"},
      {"<COST> <TOTALTAX> <DEPOSITAMOUNT> <TODAY> <FIRSTPAYMENT>",
       "£1,234,567.00 £253,950.43 \xE2\x80\x93 31 January 2027 28 February 2027"},
      {"<SHOW DEPOSIT>a</SHOW><SHOW NOT DEPOSIT>b</SHOW><SHOW SEVERAL>c<SHOW TAX>d</SHOW></SHOW>", "b"},
      {"a<!-- <NOBODY> -->b <td bgcolor=\"<BRAND>\">1 < 2</TD>", "ab <td bgcolor=\"#1F3A5F\">1 < 2</TD>"},
  };
  for (const auto& [text, html] : filled) EXPECT_EQ(Fill(text), html);
  contents.prefs.CurrencySymbol = "EUR";
  contents.prefs.BorderColour = 0x00643200;
  EXPECT_EQ(Fill("<COST> £ <BRAND>"),
            "EUR\xC2\xA0"
            "1,234,567.00 EUR #003264");
}

TEST_F(QuoteSheetTest, WhatOnlyTheOrganisationSeesIsAskedFor) {
  const std::string all =
      "<YIELD>|<COMMISSION>|<COMMISSIONPERCENT>|<TOTALINTEREST>|<OPENINGBALANCE>|<EACH VARIANT><EACH LINE>"
      "<LINEINTEREST>|<LINEPRINCIPAL>|<LINEBALANCE></EACH></EACH><SHOW INTERNAL>!</SHOW>";
  EXPECT_EQ(Fill(all), "|||||||");
  contents.internal = true;
  EXPECT_EQ(Fill(all), "10.00%|£24,691.34|2.00%|£10,493.82|£1,259,258.34|£10,493.82|£1,259,258.34|\xE2\x80\x93!");
}

TEST_F(QuoteSheetTest, ManyVariantsFillSeveralTablesOfTheSameWidth) {
  for (std::int16_t payments = 2; payments <= 12; ++payments) AddVariant(payments, 12500, 500);
  EXPECT_EQ(Fill("<EACH TABLE>[<EACH VARIANT><OPTION><SHOW DEPOSIT>d</SHOW> </EACH>]</EACH>"),
            "[1 2d 3d ][4d 5d 6d ][7d 8d 9d ][10d 11d 12d ]");
  EXPECT_EQ(Fill("<EACH VARIANT><SHOW NOT DEPOSIT><EACH LINE><LINEDATE>:<SHOW LINEISPAYMENT><LINENUMBER></SHOW></EACH>"
                 "</SHOW></EACH>"),
            "28 February 2027:1");
}

TEST_F(QuoteSheetTest, TheHeadNamesTheDocumentAndTheFooterIsOfEachPage) {
  const RichDocument document = FillSheet(
      "<html lang=\"en-GB\"><head><title>For <ORGNAME></title><meta name=\"author\" content=\"<ORGNAME>\"></head>"
      "<body>x<Footer>Page <PAGE> of <PAGES></FOOTER></body></html>",
      "Sheet.html", contents);
  EXPECT_EQ(document.title + "|" + document.author + "|" + document.language, "For North & Gate|North & Gate|en-GB");
  EXPECT_EQ(document.html.find("Page"), std::string::npos);
  EXPECT_NE(document.footer(2, 3).find("Page 2 of 3"), std::string::npos);
}

TEST_F(QuoteSheetTest, WhatIsWrittenWrongIsNamedWithItsFileAndLine) {
  const std::pair<const char*, const char*> wrong[] = {
      {"<p>\n<ORGNMAE></p>", "Sheet.html, line 2: the marker <ORGNMAE> is not known"},
      {"<orgname>", "Sheet.html, line 1: the marker <orgname> is not known"},
      {"<SHOW NOTHING>x</SHOW>", "Sheet.html, line 1: the marker <SHOW NOTHING> is not known"},
      {"<b title=\"<WHAT>\">", "Sheet.html, line 1: the marker <WHAT> is not known"},
      {"\n\n<SHOW TAX>\n<b>", "Sheet.html, line 3: <SHOW> is not closed"},
      {"a</EACH>", "Sheet.html, line 1: </EACH> closes nothing"},
      {"<EACH VARIANT></SHOW>", "Sheet.html, line 1: </SHOW> closes nothing"},
      {"<LINEDATE>", "Sheet.html, line 1: <LINEDATE> stands outside <EACH LINE>"},
  };
  for (const auto& [text, failure] : wrong) {
    EXPECT_EQ(FailureOf([&, page = text] { Fill(page); }).Description(), failure);
  }
}

// The sheet as it is delivered, of everything that it can show.
TEST_F(QuoteSheetTest, TheDeliveredSheetReadsAsTheGoldenOne) {
  contents.customer = "Harbour Print Works";
  contents.equipment = "Digital press";
  contents.reference = "Q-17";
  contents.validUntil = std::chrono::year(2027) / 2 / 28;
  AddVariant(2, 12500, 1000);
  contents.schedule = contents.internal = true;
  const std::string page = ReadFile(DELIVERED_FOLDER "/QuoteSheet.html");
  const std::string html = FillSheet(page, "QuoteSheet.html", contents).html;
  EXPECT_EQ(WordsOf(html.substr(html.find("<body>"))), ReadFile(GOLDEN_SHEET));
}

}  // namespace tarvolinex
