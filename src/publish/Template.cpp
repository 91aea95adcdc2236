#include "publish/Template.h"

#include <cstdio>

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ProfileFile.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
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

// What "Pages.INI" tells: the prints of the pages that are there, of those that are about to take their place (blank
// once both have), and what they were made of.
constexpr const char *kMarks = "PAGES", *kMade = "MADE", *kMaking = "MAKING", *kOf = "OF";
constexpr const char* kNoPage = "-";

std::string TemplatePath() {
  return AppFolder + "\\CalcTemplate.html";
}

std::string PagePath(const char* name) {
  return AppFolder + "\\" + name;
}

std::string PrintOf(const char* page) {
  try {
    return FileExists(PagePath(page)) ? Fingerprint(ReadFile(PagePath(page))) : kNoPage;
  } catch (const RuntimeError&) {
    return {};
  }
}

std::string MarksPath() {
  return AppFolder + "\\Pages.INI";
}

std::string Mark(const char* key) {
  try {
    return GetProfileString(MarksPath(), kMarks, key, "");
  } catch (const RuntimeError&) {
    return {};
  }
}

std::string Prints(const std::string& main, const std::string& test) {
  return main + " " + test;
}

// Whether the program has put the page there, or nobody has: its print is at the same place of one of the marks.
bool IsOurs(const char* page, bool main) {
  const std::string print = PrintOf(page);
  if (print.empty() || print == kNoPage) return print == kNoPage;
  for (const char* key : {kMade, kMaking}) {
    const std::string prints = Mark(key);
    if (main ? prints.starts_with(print + " ") : prints.ends_with(" " + print)) return true;
  }
  return false;
}

// Tells whether the pages would read otherwise now.
std::string InputsOfPages(const CalculatorPreferencesRecord& prefs) {
  return Fingerprint(Fingerprint(ReadFile(TemplatePath())) + "|" + LogoFileName() + "|" + BackgroundFileName() + "|" +
                     CustomerReference + "|" TARVOLINEX_VERSION "|" + RecordBytes(prefs));
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
                  const CalculatorPreferencesRecord& prefs, const std::string& testSuffix,
                  const std::function<void(const std::string&, const std::string&)>& before) {
  try {
    const std::string text = ReadPage(templatePath);
    if (text.find('\0') != std::string::npos) {
      throw RuntimeError(kDeviceError, Tr("%1 holds no text", {templatePath}));
    }
    const std::string page = FillPlaceholders(text, prefs, false), testPage = FillPlaceholders(text, prefs, true);
    if (before) before(page, testPage);
    WritePage(outputBase + ".Html", page);
    WritePage(outputBase + testSuffix + ".Html", testPage);
  } catch (const RuntimeError&) {
    ShowError("HTML creation failed");
    return false;
  }
  TheDesktop().DoEvents();
  return true;
}

bool PagesAreDue(const CalculatorPreferencesRecord& prefs) {
  if (!FileExists(TemplatePath())) return false;
  const bool cutOff = !Mark(kMaking).empty();
  if (!cutOff) {
    if (!FileExists(PagePath(kMainPage)) || !FileExists(PagePath(kTestPage))) return false;
    if (Mark(kOf) == InputsOfPages(prefs)) return false;
  }
  // Pages that somebody else has put there stay.
  return IsOurs(kMainPage, true) && IsOurs(kTestPage, false);
}

void MakePages(const CalculatorPreferencesRecord& prefs) {
  if (!FileExists(TemplatePath())) return;
  std::string made;
  // Whatever happens between the two pages, they are known as ours, and as unfinished.
  const auto mark = [&](const std::string& page, const std::string& testPage) {
    made = Prints(Fingerprint(PageBytes(page)), Fingerprint(PageBytes(testPage)));
    WriteProfileStrings(MarksPath(), kMarks,
                        {{kMade, Prints(PrintOf(kMainPage), PrintOf(kTestPage))}, {kMaking, made}});
  };
  if (!FillTemplate(TemplatePath(), AppFolder + "\\Calc", prefs, "_test", mark)) return;
  try {
    WriteProfileStrings(MarksPath(), kMarks, {{kMade, made}, {kMaking, ""}, {kOf, InputsOfPages(prefs)}});
  } catch (const RuntimeError&) {
    // The next start or publish makes the same pages once more.
  }
}

bool RefreshPages(const CalculatorPreferencesRecord& prefs) {
  if (PagesAreDue(prefs)) MakePages(prefs);
  const std::string prints = Prints(PrintOf(kMainPage), PrintOf(kTestPage)), making = Mark(kMaking);
  return making.empty() || prints == making || prints == Mark(kMade);
}

}  // namespace tarvolinex
