// Pages that a user imports, and the template of the calculator page.
#include "core/Globals.h"
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
  SupplierCalcSettings.CompanyName = "Größe & Söhne €";
  SupplierCalcSettings.Town = "|Calculator Term|";
  CalculatorPreferences.ShowHeaderLogo = true;
  CreateLivePage(path, AppFolder);
}

void ReadTemplate(std::string_view bytes) {
  CalculatorPreferencesRecord preferences;
  preferences.AliasCalcName = "Größe |ASPTAGS| €";
  FillTemplate(Put("template.html", bytes), Scratch() + "/Calc", preferences, "_test");
}

}  // namespace

std::vector<Target> PageTargets() {
  return {{"form", ReadForm}, {"template", ReadTemplate}};
}

}  // namespace tarvolinex::fuzz
