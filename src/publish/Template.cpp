#include "publish/Template.h"

#include <cstdio>

#include "core/Globals.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "platform/Desktop.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "publish/PageText.h"

namespace tarvolinex {

namespace {

constexpr const char* kMainPageClass = "4B2D91E0-7C3A-4F15-9E62-1A8C5D0F37B4";
constexpr const char* kTestPageClass = "A71C5E08-3D42-11D7-8C19-0004AC6E2F51";

std::string FirstFile(const std::string& pattern) {
  const auto names = ListFiles(DataFolder + "\\logo\\" + pattern);
  return names.empty() ? std::string() : names.front();
}

constexpr const char *kMainPage = "Calc.Html", *kTestPage = "Calc_test.Html";

std::string TemplatePath() {
  return AppFolder + "\\CalcTemplate.html";
}

std::string PagePath(const char* name) {
  return AppFolder + "\\" + name;
}

std::string BothPages() {
  return ReadFile(PagePath(kMainPage)) + ReadFile(PagePath(kTestPage));
}

// Tells whether the pages would read otherwise now.
std::string InputsOfPages(const CalculatorPreferencesRecord& prefs) {
  return Fingerprint(LogoFileName() + "|" + BackgroundFileName() + "|" + CustomerReference +
                     "|" TARVOLINEX_VERSION "|" + RecordBytes(prefs));
}

struct Token {
  const char* name;
  std::string value;
  bool anyCase = true;
};

}  // namespace

std::string LogoFileName() {
  return FirstFile("logo.*");
}

std::string BackgroundFileName() {
  return FirstFile("background.*");
}

std::string ColourToHtml(Colour colour) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "#%02X%02X%02X", colour & 0xFFu, (colour >> 8) & 0xFFu, (colour >> 16) & 0xFFu);
  return digits;
}

std::string FillPlaceholders(std::string_view text, const CalculatorPreferencesRecord& prefs, bool isTestPage) {
  const Token tokens[] = {
      {"|ColourBackGround|", ColourToHtml(prefs.PageBackColour)},
      {"|CALCULATORNAME|", prefs.AliasCalcName.Trimmed()},
      {"|LEASEORGEMAIL|", prefs.OrgEmail.Trimmed()},
      {"|PICBACKGROUND|", prefs.ShowBackground ? "Background=" + BackgroundFileName() : "", false},
      {"|HEADERPIC|", prefs.ShowHeaderLogo ? "<img src=" + LogoFileName() + "><br>" : "<BR>", false},
      {"|CLASSID|", isTestPage ? kTestPageClass : kMainPageClass},
      {"|CUSTREF|", CustomerReference},
      {"|ASPTAGS|", "&ver=" TARVOLINEX_VERSION},
  };
  const std::string charset = PageCharset(text);
  std::string page(text);
  for (const Token& token : tokens) {
    const std::string value = EncodeForPage(token.value, charset);
    page = token.anyCase ? ReplaceAllNoCase(page, token.name, value) : ReplaceAll(page, token.name, value);
  }
  return page;
}

bool FillTemplate(std::string_view templatePath, const std::string& outputBase,
                  const CalculatorPreferencesRecord& prefs, const std::string& testSuffix) {
  try {
    const std::string text = ReadPage(templatePath);
    if (text.find('\0') != std::string::npos) {
      throw RuntimeError(kDeviceError, Tr("%1 holds no text", {templatePath}));
    }
    const std::string page = FillPlaceholders(text, prefs, false), testPage = FillPlaceholders(text, prefs, true);
    WritePage(outputBase + ".Html", page);
    WritePage(outputBase + testSuffix + ".Html", testPage);
  } catch (const RuntimeError&) {
    ShowError("HTML creation failed");
    return false;
  }
  TheDesktop().DoEvents();
  return true;
}

void MakePages(const CalculatorPreferencesRecord& prefs) {
  if (!FileExists(TemplatePath())) return;
  if (FillTemplate(TemplatePath(), AppFolder + "\\Calc", prefs, "_test")) {
    WriteIni("General", "PAGES", "MADE", Fingerprint(BothPages()));
    WriteIni("General", "PAGES", "OF", InputsOfPages(prefs));
  }
}

void RefreshPages(const CalculatorPreferencesRecord& prefs) {
  if (!FileExists(TemplatePath()) || !FileExists(PagePath(kMainPage)) || !FileExists(PagePath(kTestPage))) return;
  if (ReadIni("General", "PAGES", "OF", "") == InputsOfPages(prefs)) return;
  // Pages that somebody else has put there stay.
  if (ReadIni("General", "PAGES", "MADE", "") == Fingerprint(BothPages())) MakePages(prefs);
}

}  // namespace tarvolinex
