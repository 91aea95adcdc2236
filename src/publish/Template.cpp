#include "publish/Template.h"

#include <cstdio>

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

std::string FirstFile(const std::string& dataFolder, const std::string& pattern) {
  const auto names = ListFiles(dataFolder + "\\logo\\" + pattern);
  return names.empty() ? std::string() : names.front();
}

constexpr const char *kMainPage = "Calc.Html", *kTestPage = "Calc_test.Html";

// What "Pages.INI" tells: the prints of the pages that are there, of those that are about to take their place (blank
// once both have), and what they were made of.
constexpr const char *kMarks = "PAGES", *kMade = "MADE", *kMaking = "MAKING", *kOf = "OF";
constexpr const char* kNoPage = "-";

// The app folder's pages, its template, and the marks that tell what the pages were made of.
class PagesFolder {
 public:
  explicit PagesFolder(const Folders& folders) : app_(folders.app) {}
  std::string TemplatePath() const { return app_ + "\\CalcTemplate.html"; }
  std::string PagePath(const char* name) const { return app_ + "\\" + name; }
  std::string MarksPath() const { return app_ + "\\Pages.INI"; }
  std::string PrintOf(const char* page) const {
    try {
      return FileExists(PagePath(page)) ? Fingerprint(ReadFile(PagePath(page))) : kNoPage;
    } catch (const RuntimeError&) {
      return {};
    }
  }
  std::string Mark(const char* key) const {
    try {
      return GetProfileString(MarksPath(), kMarks, key, "");
    } catch (const RuntimeError&) {
      return {};
    }
  }
  // Whether the program has put the page there, or nobody has: its print is at the same place of one of the marks.
  bool IsOurs(const char* page, bool main) const {
    const std::string print = PrintOf(page);
    if (print.empty() || print == kNoPage) return print == kNoPage;
    for (const char* key : {kMade, kMaking}) {
      const std::string prints = Mark(key);
      if (main ? prints.starts_with(print + " ") : prints.ends_with(" " + print)) return true;
    }
    return false;
  }

 private:
  const std::string& app_;
};

std::string Prints(const std::string& main, const std::string& test) {
  return main + " " + test;
}

// Tells whether the pages would read otherwise now.
std::string InputsOfPages(const Branding& branding) {
  const std::string& data = branding.folders.data;
  return Fingerprint(Fingerprint(ReadFile(PagesFolder(branding.folders).TemplatePath())) + "|" + LogoFileName(data) +
                     "|" + BackgroundFileName(data) + "|" + branding.customerReference + "|" TARVOLINEX_VERSION "|" +
                     RecordBytes(branding.prefs));
}

struct Token {
  const char* name;
  std::string value;
  bool anyCase = true;
};

}  // namespace

std::string LogoFileName(const std::string& dataFolder) {
  return FirstFile(dataFolder, "logo.*");
}

std::string BackgroundFileName(const std::string& dataFolder) {
  return FirstFile(dataFolder, "background.*");
}

std::string ColourToHtml(Colour colour) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "#%02X%02X%02X", colour & 0xFFu, (colour >> 8) & 0xFFu, (colour >> 16) & 0xFFu);
  return digits;
}

std::string FillPlaceholders(std::string_view text, const Branding& branding, bool isTestPage) {
  const CalculatorPreferencesRecord& prefs = branding.prefs;
  const std::string& data = branding.folders.data;
  const Token tokens[] = {
      {"|ColourBackGround|", ColourToHtml(prefs.PageBackColour)},
      {"|CALCULATORNAME|", prefs.AliasCalcName.Trimmed()},
      {"|LEASEORGEMAIL|", prefs.OrgEmail.Trimmed()},
      {"|PICBACKGROUND|", prefs.ShowBackground ? "Background=" + BackgroundFileName(data) : "", false},
      {"|HEADERPIC|", prefs.ShowHeaderLogo ? "<img src=" + LogoFileName(data) + "><br>" : "<BR>", false},
      {"|CLASSID|", isTestPage ? kTestPageClass : kMainPageClass},
      {"|CUSTREF|", branding.customerReference},
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

bool FillTemplate(std::string_view templatePath, const std::string& outputBase, const Branding& branding,
                  const std::string& testSuffix, Reporter& reporter,
                  const std::function<void(const std::string&, const std::string&)>& before) {
  try {
    const std::string text = ReadPage(templatePath);
    if (text.find('\0') != std::string::npos) {
      throw RuntimeError(kDeviceError, Tr("%1 holds no text", {templatePath}));
    }
    const std::string page = FillPlaceholders(text, branding, false), testPage = FillPlaceholders(text, branding, true);
    if (before) before(page, testPage);
    WritePage(outputBase + ".Html", page);
    WritePage(outputBase + testSuffix + ".Html", testPage);
  } catch (const RuntimeError&) {
    reporter.ShowError("HTML creation failed");
    return false;
  }
  reporter.DoEvents();
  return true;
}

bool PagesAreDue(const Branding& branding) {
  const PagesFolder pages(branding.folders);
  if (!FileExists(pages.TemplatePath())) return false;
  const bool cutOff = !pages.Mark(kMaking).empty();
  if (!cutOff) {
    if (!FileExists(pages.PagePath(kMainPage)) || !FileExists(pages.PagePath(kTestPage))) return false;
    if (pages.Mark(kOf) == InputsOfPages(branding)) return false;
  }
  // Pages that somebody else has put there stay.
  return pages.IsOurs(kMainPage, true) && pages.IsOurs(kTestPage, false);
}

void MakePages(const Branding& branding, Reporter& reporter) {
  const PagesFolder pages(branding.folders);
  if (!FileExists(pages.TemplatePath())) return;
  std::string made;
  // Whatever happens between the two pages, they are known as ours, and as unfinished.
  const auto mark = [&](const std::string& page, const std::string& testPage) {
    made = Prints(Fingerprint(PageBytes(page)), Fingerprint(PageBytes(testPage)));
    WriteProfileStrings(pages.MarksPath(), kMarks,
                        {{kMade, Prints(pages.PrintOf(kMainPage), pages.PrintOf(kTestPage))}, {kMaking, made}});
  };
  const std::string base = branding.folders.app + "\\Calc";
  if (!FillTemplate(pages.TemplatePath(), base, branding, "_test", reporter, mark)) return;
  try {
    WriteProfileStrings(pages.MarksPath(), kMarks, {{kMade, made}, {kMaking, ""}, {kOf, InputsOfPages(branding)}});
  } catch (const RuntimeError&) {
    // The next start or publish makes the same pages once more.
  }
}

bool RefreshPages(const Branding& branding, Reporter& reporter) {
  if (PagesAreDue(branding)) MakePages(branding, reporter);
  const PagesFolder pages(branding.folders);
  const std::string prints = Prints(pages.PrintOf(kMainPage), pages.PrintOf(kTestPage)), making = pages.Mark(kMaking);
  return making.empty() || prints == making || prints == pages.Mark(kMade);
}

}  // namespace tarvolinex
