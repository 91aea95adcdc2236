#include "publish/Organisation.h"

#include <algorithm>

#include "core/RecordJson.h"
#include "core/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Preferences.h"
#include "store/SharedFiles.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kOfRecord = "General.", kOfPage = "Page.";
constexpr const char *kPrefsFile = "General.dat", *kPageFile = "General.INI";

// A database holds no character 0, and a switch is read back from a number.
struct FieldText {
  std::string operator()(const std::string& text) const { return ReplaceAll(text, std::string_view("\0", 1), " "); }
  std::string operator()(const JsonNumber& number) const { return number.text; }
  std::string operator()(bool truth) const { return truth ? "1" : "0"; }
};

std::string PrefixedName(std::string_view prefix, std::string_view name) {
  return std::string(prefix) + std::string(name);
}

// Only such an organisation's calculators have a sender.
bool HasSender(const CalculatorPreferencesRecord& prefs) {
  return !prefs.OrgCompanyName.Trimmed().empty() && !prefs.OrgEmail.Trimmed().empty();
}

// What the desk has agreed on with an office last: a print of each of the two files' fields, in General.INI.
class Agreed {
 public:
  explicit Agreed(const std::string& appFolder) : app_(appFolder) {}
  // Whether the desk's are others than the office's, and it has not got them from there.
  bool IsOwn(const Organisation& mine, const Organisation& office) const {
    const std::string before = Read();
    const auto had = [&](std::string_view prefix) { return before.find(PrintOf(mine, prefix)) != std::string::npos; };
    return (mine.prefs != office.prefs && !had(kOfRecord)) || (mine.page != office.page && !had(kOfPage));
  }
  // Before the files are written: from here on they may be these, or still those before.
  void Expect(const Organisation& organisation) const {
    const std::string prints = PrintsOf(organisation), before = Read();
    if (before != prints) Write(prints + " " + before.substr(0, prints.size()));
  }
  void Remember(const Organisation& organisation) const {
    const std::string prints = PrintsOf(organisation);
    if (Read() != prints) Write(prints);
  }

 private:
  static constexpr const char *kSection = "DATABASE", *kKey = "Preferences";
  std::string Read() const { return ReadIni(app_, "General", kSection, kKey, ""); }
  void Write(const std::string& prints) const { WriteIni(app_, "General", kSection, kKey, prints); }
  static std::string PrintsOf(const Organisation& organisation) {
    return PrintOf(organisation, kOfRecord) + " " + PrintOf(organisation, kOfPage);
  }
  static std::string PrintOf(const Organisation& organisation, std::string_view prefix) {
    std::string all;
    for (const auto& [name, text] : OfficeFieldsOf(organisation)) {
      if (name.starts_with(prefix)) all += name + "\t" + text + "\n";
    }
    constexpr std::size_t kDigits = 32;  // a setting holds only so much
    return Fingerprint(all).substr(0, kDigits);
  }
  const std::string& app_;
};

void SetFilesAside(const Folders& folders, Reporter& reporter) {
  const std::string aside = SetAsideFolder(folders.data);
  if (!FolderExists(aside)) MakeFolder(aside);
  for (const char* name : {kPrefsFile, kPageFile}) {
    const std::string path = folders.app + "\\" + name;
    if (FileExists(path)) CopyFile(path, aside + "\\" + name);
  }
  reporter.MessageBox(
      Tr("The preferences of your organisation on the shared database are others than this desk's. Those "
         "are used now; your own lie in %1.",
         {NativePath(aside)}),
      Tr("Shared Database"), BoxButtons::Ok, BoxIcon::Information);
}

// The office's; the desk's own where it has none yet, which it then gets. Empty when it may not have them.
OfficeFields FieldsOfOffice(Database& database, const Organisation& mine) {
  OfficeFields office = ReadOffice(database);
  if (!office.empty() || database.ReadOnly() || !HasSender(mine.prefs)) return office;
  ChangeOffice(database, [&](const OfficeFields& now) {
    office = now.empty() ? OfficeFieldsOf(mine) : now;  // another desk may have been faster
    return office;
  });
  return office;
}

}  // namespace

OfficeFields OfficeFieldsOf(const Organisation& organisation) {
  OfficeFields fields;
  for (const auto& [name, value] : RecordToJson(organisation.prefs)) {
    fields[PrefixedName(kOfRecord, name)] = std::visit(FieldText{}, value);
  }
  for (const auto& [name, text] : TextsOf(organisation.page)) fields[PrefixedName(kOfPage, name)] = FieldText{}(text);
  return fields;
}

void TakeFields(const OfficeFields& fields, Organisation& organisation) {
  OfficeFields page;
  for (const auto& [name, text] : TextsOf(organisation.page)) page[PrefixedName(kOfPage, name)] = text;
  for (const auto& [name, text] : fields) {
    if (page.contains(name)) page[name] = text;
    if (!name.starts_with(kOfRecord)) continue;
    try {
      ChangeRecord(organisation.prefs, JsonObject{{name.substr(kOfRecord.size()), text}});
    } catch (const RuntimeError&) {
      // Another program may have stored anything.
    }
  }
  organisation.page = PageOptionsOf([&](std::string_view key) { return page[PrefixedName(kOfPage, key)]; });
}

bool IsLimit(const std::string& name) {
  static const std::vector<std::string> limits = {"MinTerm",
                                                  "MaxTerm",
                                                  "MinCapitalCost",
                                                  "MaxCapitalCost",
                                                  "MinDepositPercent",
                                                  "MaxDepositPercent",
                                                  "MinResidualPercent",
                                                  "MaxResidualPercent",
                                                  "MinAdvancedPayments",
                                                  "DepositOptions"};
  return name.starts_with(kOfRecord) && std::ranges::count(limits, name.substr(kOfRecord.size())) > 0;
}

bool TakeOffice(Database& database, const DeskCopy& desk, Reporter& reporter) {
  if (!IsShared(database)) return false;
  const Folders& folders = desk.branding.folders;
  const Organisation mine = {desk.branding.prefs, ReadPageOptions(folders.app)};
  Organisation office = mine;
  const OfficeFields fields = FieldsOfOffice(database, mine);
  if (fields.empty()) return false;
  TakeFields(fields, office);
  const bool different = mine != office;
  if (desk.keep && different && HasSender(mine.prefs) && Agreed(folders.app).IsOwn(mine, office)) {
    SetFilesAside(folders, reporter);
  }
  desk.branding.prefs = office.prefs;
  if (!desk.keep) return different;
  Agreed(folders.app).Expect(office);
  if (mine.page != office.page) WritePageOptions(folders.app, office.page);
  if (mine.prefs != office.prefs) SaveCalculatorPreferences(desk.branding, reporter);
  Agreed(folders.app).Remember(office);
  return different;
}

bool ShareOrganisation(Database& database, const DeskCopy& desk, Reporter& reporter) {
  try {
    return TakeOffice(database, desk, reporter);
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("The preferences could not be brought together with the shared database"),
                  failure.Description());
    return false;
  }
}

void NoteAgreed(Database& database, const Branding& branding) {
  if (!IsShared(database)) return;
  try {
    Agreed(branding.folders.app).Remember({branding.prefs, ReadPageOptions(branding.folders.app)});
  } catch (const RuntimeError&) {
    // The next opening finds them the same.
  }
}

}  // namespace tarvolinex
