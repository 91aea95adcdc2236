#include "publish/LivePage.h"

#include "calc/InputRules.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/Reports.h"
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
std::string TermText() {
  const int count = Quote.AdvancedPayments + Quote.NumberOfPayments, aYear = Quote.Quarterly ? 4 : 12;
  const int years = count % aYear == 0 ? count / aYear : 0;
  return Count(count) + (Quote.Quarterly ? " Quarters" : " Months") +
         (years > 0 ? " (" + Count(years) + " Year" + (years >= 2 ? "s" : "") + ")" : "");
}

// The deposit's share of the capital cost, which the quote keeps only of a deposit that was given as one.
float DepositPercentage() {
  const double cost = Quote.CapitalCost.ToDouble();
  return cost > 0 ? static_cast<float>(Quote.DepositValue.ToDouble() / cost * 100) : 0.0F;
}

std::string DepositText(const std::string& symbol) {
  const std::string amount = Amount(Quote.DepositValue), percent = Percent(DepositPercentage());
  if (Quote.AdvancedPayments > 0) {
    return Count(Quote.AdvancedPayments) + " Advanced Payments (£" + amount + ", " + percent + "%)";
  }
  return symbol + amount + " (" + percent + "%)";
}

struct CalculatorMarker {
  const char* name;
  std::string value;
};

std::vector<CalculatorMarker> CalculatorMarkers() {
  const std::string symbol = ReplaceAliases("£");
  const std::string premium = SupplierCalcSettings.AdditionalPremiumMsg.Trimmed();
  return {
      {"Calculator Capital Cost", symbol + Amount(Quote.CapitalCost)},
      {"Calculator Regular Payment", symbol + Amount(Quote.Payment)},
      {"Calculator Payment Period", Quote.Quarterly ? "Quarterly" : "Monthly"},
      {"Calculator Residual", "£" + Amount(Quote.ResidualValue) + " (" + Percent(Quote.ResidualPercent) + "%)"},
      {"Calculator Term", TermText()},
      {"Calculator Deposit", DepositText(symbol)},
      {"Calculator Additional Rate Yes/No", Quote.ApplyPremium ? "YES" : "NO"},
      {"Calculator Additional Rate Text", premium.empty() ? "Additional Rate" : premium},
      {"Calculator Maintenance", symbol + Amount(Quote.Maintenance)},
  };
}

// The logo as the address of a picture that the page on disk can show.
std::string LogoAddress(const std::string& pictureFolder) {
  if (pictureFolder.empty()) return NewestFile(AppFolder + "\\logo.*");
  const auto names = ListFiles(pictureFolder + "\\logo.*");
  std::string path = NativePath(pictureFolder + "\\" + (names.empty() ? std::string() : names.front()));
  for (const auto& [character, code] :
       {std::pair("%", "%25"), std::pair("#", "%23"), std::pair("?", "%3F"), std::pair("\"", "%22")}) {
    path = ReplaceAll(path, character, code);
  }
  return path;
}

void InsertLogo(std::string& text, const std::string& pictureFolder) {
  const std::string picture =
      CalculatorPreferences.ShowHeaderLogo
          ? "<img src=\"" + EncodeForPage(LogoAddress(pictureFolder), PageCharset(text)) + "\"><br>"
          : "<BR>";
  text = ReplaceAll(text, "|HEADERPIC|", picture);
}

}  // namespace

void ReplaceFieldMarker(std::string& text, std::string_view marker, int kind, std::string_view value) {
  text = ReplaceAllNoCase(text, "|" + std::string(marker) + "|",
                          EncodeForPage(FormatNumberInput(kind, value), PageCharset(text)));
}

void FillSupplierMarkers(std::string& text) {
  for (const SupplierDetail& detail : kSupplierDetails) {
    ReplaceFieldMarker(text, detail.marker, kInputFreeText, (SupplierCalcSettings.*detail.field).Trimmed());
  }
}

void FillCalculatorMarkers(std::string& text) {
  for (const CalculatorMarker& marker : CalculatorMarkers()) {
    ReplaceFieldMarker(text, marker.name, kInputFreeText, marker.value);
  }
}

std::string BuildHiddenFields() {
  std::string block;
  for (const SupplierDetail& detail : kSupplierDetails) {
    block += "\r\n<INPUT TYPE=HIDDEN Name=\"" + CalculatorPreferences.AliasSupplier.Trimmed() + detail.label +
             (SupplierCalcSettings.*detail.field).Trimmed() + "\">";
  }
  for (const CalculatorMarker& marker : CalculatorMarkers()) {
    block += std::string("\r\n<INPUT TYPE=HIDDEN Name=\"") + marker.name + "\" VALUE=\"|" + marker.name + "|\">";
  }
  return block;
}

void InsertResponseForm(std::string& text) {
  constexpr const char *kStart = "<FORMSTART>", *kEnd = "<FORMEND>";
  const std::string charset = PageCharset(text);
  const std::string open = R"html(<FORM name="FrmData" method="POST" ACTION="mailto:)html" +
                           CalculatorPreferences.OrgEmail.Trimmed() +
                           R"html(?subject=Lease Calculator Response" ENCTYPE="text/plain">)html";
  const std::string opened = ReplaceAllNoCase(text, kStart, EncodeForPage(open, charset));
  const bool hadStart = opened != text;
  const std::string close =
      BuildHiddenFields() + "\r\n<INPUT type=\"submit\" name=\"Tarvolinx Response\" Value=\"Email Form\">" +
      (hadStart ? "" : "<FORM>") + R"html(<INPUT TYPE="BUTTON" VALUE=" Back " ONCLICK="history.back(-1)"></FORM>)html";
  text = ReplaceAllNoCase(opened, kEnd, EncodeForPage(close, charset));
}

std::string CreateLivePage(const std::string& pagePath, const std::string& pictureFolder) {
  const std::string livePath = ReplaceAllNoCase(pagePath, ".html", "_live.html");
  try {
    if (livePath == pagePath) throw RuntimeError(kBadFileName, Tr("%1 is no \".html\" page", {pagePath}));
    std::string text = ReadPage(pagePath);
    FillSupplierMarkers(text);
    InsertResponseForm(text);
    FillCalculatorMarkers(text);
    InsertLogo(text, pictureFolder);
    WritePage(livePath, text);
  } catch (const RuntimeError&) {
    ShowError("HTML file creation failed", true);
  }
  return livePath;
}

void PreviewFormPage(const std::string& pagePath) {
  LaunchDocument(CreateLivePage(pagePath, DataFolder + "\\logo"));
}

}  // namespace tarvolinex
