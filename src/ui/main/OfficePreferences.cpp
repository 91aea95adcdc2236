// The preferences of the organisation where several desks share them: this desk's follow the office's, and what is
// changed here meets what another desk has stored meanwhile.
#include <algorithm>

#include "controls/Desktop.h"
#include "core/Limits.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "publish/Organisation.h"
#include "ui/main/FrmConflict.h"
#include "ui/main/FrmMain.h"
#include "ui/main/OrganisationFields.h"

namespace tarvolinex {

namespace {

// One look at what is stored: what it comes to with what is changed here, and what the user has to choose.
struct OfficeLook {
  OfficeFields now, merged;
  std::vector<std::string> met;
  bool limits = false;  // those among them are chosen together
};

OfficeLook LookAtOffice(const OfficeFields& now, const OfficeFields& before, const OfficeFields& mine) {
  OfficeLook look = {now, MergedOffice(now, before, mine), MetInOffice(now, before, mine)};
  Organisation both;
  TakeFields(look.merged, both);
  if (ContradictoryLimits(both.prefs).empty()) return look;
  for (const auto& [name, text] : now) {
    if (!IsLimit(name) || text == mine.at(name)) continue;
    look.limits = true;
    if (std::ranges::count(look.met, name) == 0) look.met.push_back(name);
  }
  return look;
}

std::vector<MetField> FieldsToChoose(const Run& run, const OfficeLook& look, const OfficeFields& before,
                                     const OfficeFields& mine) {
  std::vector<MetField> fields;
  for (const std::string& name : look.met) {
    MetField& field = fields.emplace_back();
    field.words = WordsOfField(run, name);
    field.was = ShownField(run, name, before.at(name));
    field.mine = ShownField(run, name, mine.at(name));
    field.theirs = ShownField(run, name, look.now.at(name));
    field.inOrder = look.limits && IsLimit(name);
  }
  return fields;
}

}  // namespace

void FrmMain::TakePreferences() {
  Branding branding = OwnBranding();
  if (ShareOrganisation(database, {branding, run.KeepsAppFolder}, run)) UsePreferencesOf(branding);
}

void FrmMain::UsePreferencesOf(const Branding& branding) {
  run.CalculatorPreferences = branding.prefs;
  UsePreferences();
}

void FrmMain::FollowPreferences() {
  Branding branding = OwnBranding();
  try {
    if (!TakeOffice(database, {branding, run.KeepsAppFolder}, run)) return;
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDatabaseGone) throw;
    return;  // what cannot be taken now is taken with the next change, or told when the database is opened
  }
  UsePreferencesOf(branding);
  SetNote(Tr("The preferences of your organisation have been changed by another program"));
}

// The transaction is over while the user chooses; then it is looked at again.
bool FrmMain::AgreeWithOffice(const Organisation& before, Organisation& mine) {
  if (database.ReadOnly() && mine != before) return MayStore();
  if (!IsShared(database) || database.ReadOnly()) return true;
  const GoesOnWithout server(database);
  OfficeFields was = OfficeFieldsOf(before), wanted = OfficeFieldsOf(mine);
  OfficeLook look;
  const auto change = [&](const OfficeFields& now) -> std::optional<OfficeFields> {
    look = LookAtOffice(now, was, wanted);
    return look.met.empty() ? std::optional(look.merged) : std::nullopt;
  };
  try {
    while (wanted != was && !ChangeOffice(database, change)) {
      std::vector<MetField> fields = FieldsToChoose(run, look, was, wanted);
      if (!Decide(fields, Tr("The preferences of your organisation have been changed by another program since they "
                             "were loaded here, in fields that you have changed too. Choose what is to be stored."))) {
        return false;
      }
      for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string &name = look.met[i], &theirs = look.now.at(name);
        was[name] = theirs;
        if (fields[i].choice == MetField::Choice::Theirs) wanted[name] = theirs;
      }
    }
    // Where nothing is changed here, nobody had to be waited for.
    TakeFields(wanted == was ? ReadOffice(database) : look.merged, mine);
  } catch (const RuntimeError& failure) {
    ReportFailure(run, Marked("The preferences could not be stored in the shared database"), failure.Description());
    return false;
  }
  return true;
}

bool FrmMain::AgreeOnDetails(CalculatorPreferencesRecord& edited) {
  if (!IsShared(database)) return MayStore();
  try {
    const PageOptions page = ReadPageOptions(run.AppFolder);
    Organisation mine = {edited, page};
    if (!AgreeWithOffice({run.CalculatorPreferences, page}, mine)) return false;
    if (mine.page != page) WritePageOptions(run.AppFolder, mine.page);
    edited = mine.prefs;
    return true;
  } catch (const RuntimeError& failure) {
    ReportFailure(run, Marked("The options of the calculator page could not be saved"), failure.Description());
    return false;
  }
}

}  // namespace tarvolinex
