// Pages that a user imports, and the template of the calculator page.
#include "fuzz/Targets.h"
#include "platform/text/Encoding.h"
#include "publish/LivePage.h"
#include "publish/PageText.h"
#include "publish/Template.h"

namespace tarvolinex::fuzz {

namespace {

void ReadForm(std::string_view bytes) {
  const std::string path = Put("form.html", bytes);
  const std::string text = ReadPageText(path), title = PageTitle(text);
  Expect(text.find(title) != std::string::npos && title.find_first_of("\r\n") == std::string::npos,
         "a title is a part of one line");
  const std::string tag = "<br>", written = EncodeForPage("§ é €" + tag, PageCharset(bytes));
  Expect(written.ends_with(tag), "what follows a text keeps its meaning");
  CalculatorPreferencesRecord preferences;
  SupplierCalcSettingsRecord supplier;
  supplier.CompanyName = "Größe & Söhne €";
  supplier.Town = "|Calculator Term|";
  preferences.ShowHeaderLogo = true;
  const QuoteRecord quote;
  const Enquiry enquiry = {preferences, supplier, quote, TheRun().AppFolder};
  CreateLivePage(path, TheRun().AppFolder, enquiry, TheRun());
}

void ReadTemplate(std::string_view bytes) {
  CalculatorPreferencesRecord preferences;
  preferences.AliasCalcName = "Größe |ASPTAGS| €";
  const Branding branding = {TheRun().Places(), preferences, "1"};
  FillTemplate(Put("template.html", bytes), Scratch() + "/Calc", branding, "_test", TheRun());
}

}  // namespace

std::vector<Target> PageTargets() {
  return {{"form", ReadForm}, {"template", ReadTemplate}};
}

}  // namespace tarvolinex::fuzz
