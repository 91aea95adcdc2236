#include "cli/ChosenSupplier.h"

#include "core/Limits.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Translation.h"
#include "publish/Organisation.h"
#include "store/Contacts.h"
#include "store/DatabaseFile.h"
#include "store/Forms.h"
#include "store/SharedFiles.h"

namespace tarvolinex {

bool IsIdOrNumber(const std::string& text) {
  constexpr std::size_t kMostDigits = 9;
  return !text.empty() && text.size() <= kMostDigits && text.find_first_not_of("0123456789") == std::string::npos;
}

std::string SupplierIdOf(const Arguments& arguments) {
  const std::string id = arguments.Value("--supplier");
  if (!IsIdOrNumber(id)) throw UsageError{"--supplier ID is needed; \"tarvolinex suppliers\" lists them"};
  return id;
}

bool OpenDatabaseForCommand(Run& run, Database& database) {
  run.DataFolder = WithoutTrailingSeparator(run.DataFolder);
  const Unpacked unpacked = run.SharedDatabase.empty() ? UnpackDatabase(run.Places(), run) : Unpacked::No;
  if (unpacked == Unpacked::Failed) return false;
  if (run.SharedDatabase.empty() && !FileExists(DatabasePath(run.DataFolder))) {
    run.ShowError(Tr("Database Could not be found :-\n\n%1", {run.DataFolder}));
    return false;
  }
  try {
    database.Open(run.DataFolder, run.SharedDatabase);
  } catch (const RuntimeError& failure) {
    run.ShowError(std::to_string(failure.Number()) + " " + failure.Description(), true);
  }
  ShareFiles(database, run);
  Branding branding = OwnBranding(run);
  ShareOrganisation(database, {branding, run.KeepsAppFolder}, run);
  run.CalculatorPreferences = branding.prefs;
  // Until the organisation has an address the sample contacts keep their own, which lead nowhere.
  const std::string email = run.CalculatorPreferences.OrgEmail.Trimmed();
  if (unpacked == Unpacked::Yes && !email.empty()) PointContactsAtOrganisation(database, email);
  run.SetStatus(false, "", -1);
  return true;
}

SupplierRow ChooseSupplier(Run& run, Database& database, const std::string& id) {
  if (!OpenDatabaseForCommand(run, database)) {
    throw RuntimeError(kFileNotFound, "There is no database to look for supplier " + id);
  }
  SupplierRow supplier = ReadSupplier(database, std::stoi(id));
  if (!supplier.Found()) throw RuntimeError(kItemNotFound, "There is no supplier with the ID " + id);
  if (!supplier.rateCardFault.empty()) throw RuntimeError(kItemNotFound, supplier.rateCardFault);
  return supplier;
}

void OpenQuotes(Run& run, Database& database) {
  if (!OpenDatabaseForCommand(run, database)) throw RuntimeError(kFileNotFound, "There is no database of quotes");
}

KeptQuote ChooseQuote(Run& run, const Arguments& arguments) {
  const std::string number = arguments.Words().empty() ? std::string() : arguments.Words().front();
  if (!IsIdOrNumber(number)) throw UsageError{"expected the quote's number"};
  Database database(run);
  OpenQuotes(run, database);
  auto quote = ReadQuote(database, std::stoi(number));
  if (!quote) throw RuntimeError(kItemNotFound, "There is no quote with the number " + number);
  return std::move(*quote);
}

Branding OwnBranding(const Run& run) {
  return {run.Places(), run.CalculatorPreferences, run.CustomerReference};
}

Publication ChooseCalculator(Run& run, Database& database, const std::string& id) {
  const SupplierRow supplier = ChooseSupplier(run, database, id);
  CheckLimits(run.CalculatorPreferences);
  const Branding branding = OwnBranding(run);
  BringInstallIcon(branding);
  Publication calculator = {branding, supplier.settings, {}};
  try {
    calculator.forms = LinkedForms(database, supplier.id);
  } catch (const RuntimeError&) {
    run.ShowError("Failed setting up calculator", true);
  }
  return calculator;
}

}  // namespace tarvolinex
