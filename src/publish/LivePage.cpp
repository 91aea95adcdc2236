#include "publish/LivePage.h"

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/PageText.h"

namespace tarvolinex {

namespace {

// A supplier's detail: its marker, and what joins its alias and its value in the hidden input.
struct SupplierDetail {
  const char *marker, *label;
  FixedText SupplierCalcSettingsRecord::*field;
};
constexpr SupplierDetail kSupplierDetails[] = {
    {"Supplier Company Name", R"( Name" VALUE=")", &SupplierCalcSettingsRecord::CompanyName},
    {"Supplier Address Line 1", R"( Address 1" VALUE=")", &SupplierCalcSettingsRecord::Address1},
    {"Supplier Address Line 2", R"( Address 2" VALUE=")", &SupplierCalcSettingsRecord::Address2},
    {"Supplier Town", R"( Town " VALUE=")", &SupplierCalcSettingsRecord::Town},
    {"Supplier County", R"( County" VALUE=")", &SupplierCalcSettingsRecord::County},
    {"Supplier Post Code", R"( Postcode" VALUE=")", &SupplierCalcSettingsRecord::PostCode},
    {"Supplier Head Office Tel", R"( Tel" VALUE=")", &SupplierCalcSettingsRecord::Tel},
    {"Supplier Head Office Fax", R"( Fax" VALUE=")", &SupplierCalcSettingsRecord::Fax},
    {"Supplier Head Office email", R"( Email" VALUE=")", &SupplierCalcSettingsRecord::email},
    {"Supplier WWW", R"( WWW" VALUE=")", &SupplierCalcSettingsRecord::www},
};

std::string Amount(Currency amount) {
  return FormatNumberInput(kInputAmount, amount.ToText());
}

std::string Percent(float percent) {
  return FormatNumberInput(kInputPercent, FormatSingle(percent));
}

std::string Count(int count) {
  return FormatNumberInput(kInputCount, std::to_string(count));
}

// The payments in advance are counted with the others, and the years are those of the whole count.
std::string TermText(const QuoteRecord& quote) {
  const int count = quote.AdvancedPayments + quote.NumberOfPayments, aYear = quote.Quarterly ? 4 : 12;
  const int years = count % aYear == 0 ? count / aYear : 0;
  return Count(count) + (quote.Quarterly ? " Quarters" : " Months") +
         (years > 0 ? " (" + Count(years) + " Year" + (years >= 2 ? "s" : "") + ")" : "");
}

// The deposit's share of the capital cost, which the quote keeps only of a deposit that was given as one.
float DepositPercentage(const QuoteRecord& quote) {
  const double cost = quote.CapitalCost.ToDouble();
  return cost > 0 ? static_cast<float>(quote.DepositValue.ToDouble() / cost * 100) : 0.0F;
}

std::string DepositText(const QuoteRecord& quote, const std::string& symbol) {
  const std::string amount = Amount(quote.DepositValue), percent = Percent(DepositPercentage(quote));
  if (quote.AdvancedPayments > 0) {
    return Count(quote.AdvancedPayments) + " Advanced Payments (£" + amount + ", " + percent + "%)";
  }
  return symbol + amount + " (" + percent + "%)";
}

struct CalculatorMarker {
  const char* name;
  std::string value;
};

std::vector<CalculatorMarker> CalculatorMarkers(const Enquiry& enquiry) {
  const QuoteRecord& quote = enquiry.quote;
  const std::string symbol = ReplaceAliases("£", {enquiry.prefs, enquiry.supplier});
  const std::string premium = enquiry.supplier.AdditionalPremiumMsg.Trimmed();
  return {
      {"Calculator Capital Cost", symbol + Amount(quote.CapitalCost)},
      {"Calculator Regular Payment", symbol + Amount(quote.Payment)},
      {"Calculator Payment Period", quote.Quarterly ? "Quarterly" : "Monthly"},
      {"Calculator Residual", "£" + Amount(quote.ResidualValue) + " (" + Percent(quote.ResidualPercent) + "%)"},
      {"Calculator Term", TermText(quote)},
      {"Calculator Deposit", DepositText(quote, symbol)},
      {"Calculator Additional Rate Yes/No", quote.ApplyPremium ? "YES" : "NO"},
      {"Calculator Additional Rate Text", premium.empty() ? "Additional Rate" : premium},
      {"Calculator Maintenance", symbol + Amount(quote.Maintenance)},
  };
}

// The logo as the address of a picture that the page on disk can show.
std::string LogoAddress(const std::string& pictureFolder, const std::string& appFolder) {
  if (pictureFolder.empty()) return NewestFile(appFolder + "\\logo.*");
  const auto names = ListFiles(pictureFolder + "\\logo.*");
  std::string path = NativePath(pictureFolder + "\\" + (names.empty() ? std::string() : names.front()));
  for (const auto& [character, code] :
       {std::pair("%", "%25"), std::pair("#", "%23"), std::pair("?", "%3F"), std::pair("\"", "%22")}) {
    path = ReplaceAll(path, character, code);
  }
  return path;
}

void InsertLogo(std::string& text, const std::string& pictureFolder, const Enquiry& enquiry) {
  const std::string picture =
      enquiry.prefs.ShowHeaderLogo
          ? "<img src=\"" + EncodeForPage(LogoAddress(pictureFolder, enquiry.appFolder), PageCharset(text)) + "\"><br>"
          : "<BR>";
  text = ReplaceAll(text, "|HEADERPIC|", picture);
}

}  // namespace

void ReplaceFieldMarker(std::string& text, std::string_view marker, int kind, std::string_view value) {
  text = ReplaceAllNoCase(text, "|" + std::string(marker) + "|",
                          EncodeForPage(FormatNumberInput(kind, value), PageCharset(text)));
}

void FillSupplierMarkers(std::string& text, const Enquiry& enquiry) {
  for (const SupplierDetail& detail : kSupplierDetails) {
    ReplaceFieldMarker(text, detail.marker, kInputFreeText, (enquiry.supplier.*detail.field).Trimmed());
  }
}

void FillCalculatorMarkers(std::string& text, const Enquiry& enquiry) {
  for (const CalculatorMarker& marker : CalculatorMarkers(enquiry)) {
    ReplaceFieldMarker(text, marker.name, kInputFreeText, marker.value);
  }
}

std::string BuildHiddenFields(const Enquiry& enquiry) {
  std::string block;
  for (const SupplierDetail& detail : kSupplierDetails) {
    block += "\r\n<INPUT TYPE=HIDDEN Name=\"" + enquiry.prefs.AliasSupplier.Trimmed() + detail.label +
             (enquiry.supplier.*detail.field).Trimmed() + "\">";
  }
  for (const CalculatorMarker& marker : CalculatorMarkers(enquiry)) {
    block += std::string("\r\n<INPUT TYPE=HIDDEN Name=\"") + marker.name + "\" VALUE=\"|" + marker.name + "|\">";
  }
  return block;
}

void InsertResponseForm(std::string& text, const Enquiry& enquiry) {
  constexpr const char *kStart = "<FORMSTART>", *kEnd = "<FORMEND>";
  const std::string charset = PageCharset(text);
  const std::string open = R"html(<FORM name="FrmData" method="POST" ACTION="mailto:)html" +
                           enquiry.prefs.OrgEmail.Trimmed() +
                           R"html(?subject=Lease Calculator Response" ENCTYPE="text/plain">)html";
  const std::string opened = ReplaceAllNoCase(text, kStart, EncodeForPage(open, charset));
  const bool hadStart = opened != text;
  const std::string close =
      BuildHiddenFields(enquiry) + "\r\n<INPUT type=\"submit\" name=\"Tarvolinx Response\" Value=\"Email Form\">" +
      (hadStart ? "" : "<FORM>") + R"html(<INPUT TYPE="BUTTON" VALUE=" Back " ONCLICK="history.back(-1)"></FORM>)html";
  text = ReplaceAllNoCase(opened, kEnd, EncodeForPage(close, charset));
}

std::string CreateLivePage(const std::string& pagePath, const std::string& pictureFolder, const Enquiry& enquiry,
                           Reporter& reporter) {
  const std::string livePath = ReplaceAllNoCase(pagePath, ".html", "_live.html");
  try {
    if (livePath == pagePath) throw RuntimeError(kBadFileName, Tr("%1 is no \".html\" page", {pagePath}));
    std::string text = ReadPage(pagePath);
    FillSupplierMarkers(text, enquiry);
    InsertResponseForm(text, enquiry);
    FillCalculatorMarkers(text, enquiry);
    InsertLogo(text, pictureFolder, enquiry);
    WritePage(livePath, text);
  } catch (const RuntimeError&) {
    reporter.ShowError("HTML file creation failed", true);
  }
  return livePath;
}

}  // namespace tarvolinex
