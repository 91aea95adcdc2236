#include <iostream>
#include <iterator>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Limits.h"
#include "core/RecordJson.h"
#include "platform/RuntimeError.h"
#include "publish/Organisation.h"
#include "publish/Preferences.h"

namespace tarvolinex {

namespace {

// Of a shared database, which has them first. The run's preferences are then what it has come to.
void ChangeOfOffice(Run& run, Database& database, const JsonObject& changes) {
  database.DemandWritable();
  const Organisation before = {run.CalculatorPreferences, ReadPageOptions(run.AppFolder)};
  Organisation changed = before;
  ChangeRecord(changed.prefs, changes);
  const OfficeFields was = OfficeFieldsOf(before), wanted = OfficeFieldsOf(changed);
  ChangeOffice(database, [&](const OfficeFields& now) {
    const auto met = MetInOffice(now, was, wanted);
    if (!met.empty()) {
      throw RuntimeError(kDatabase, "Another desk has changed " + met.front() + " meanwhile; nothing was stored");
    }
    const OfficeFields merged = MergedOffice(now, was, wanted);
    TakeFields(merged, changed);
    CheckLimits(changed.prefs);
    return merged;
  });
  run.CalculatorPreferences = changed.prefs;
}

}  // namespace

int RunPreferences(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 1);
  if (parsed.Words() != std::vector<std::string>{"write"}) throw UsageError{"expected \"write\""};
  const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
  const JsonObject changes = ParseJsonObject(text);
  Database database(run);
  if (run.SharedDatabase.empty()) {
    ChangeRecord(run.CalculatorPreferences, changes);
    CheckLimits(run.CalculatorPreferences);
  } else {
    if (!OpenDatabaseForCommand(run, database)) return kFailed;
    ChangeOfOffice(run, database, changes);
  }
  SaveCalculatorPreferences(OwnBranding(run), run);
  NoteAgreed(database, OwnBranding(run));
  return kDone;
}

}  // namespace tarvolinex
