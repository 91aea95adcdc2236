#include "cli/ChosenSupplier.h"

#include "calc/RateCard.h"
#include "core/Globals.h"
#include "core/Limits.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "publish/CalculatorFolder.h"
#include "store/DatabaseFile.h"
#include "store/Statements.h"

namespace tarvolinex {

bool IsSupplierId(const std::string& text) {
  constexpr std::size_t kMostDigits = 9;
  return !text.empty() && text.size() <= kMostDigits && text.find_first_not_of("0123456789") == std::string::npos;
}

std::string SupplierIdOf(const Arguments& arguments) {
  const std::string id = arguments.Value("--supplier");
  if (!IsSupplierId(id)) throw UsageError{"--supplier ID is needed; \"tarvolinex suppliers\" lists them"};
  return id;
}

void ChooseSupplier(const std::string& id) {
  if (!OpenDatabaseForCommand()) throw RuntimeError(kFileNotFound, "There is no database to look for supplier " + id);
  Recordset& records = TheStore->SupplierRecords;
  OpenRecordset(statements::kSuppliers, records);
  records.Find("ID=" + id);
  if (records.EndOfFile()) throw RuntimeError(kItemNotFound, "There is no supplier with the ID " + id);
  SupplierCalcSettings = ReadSupplierSettings(records);
  CurrentSupplierId = std::stoi(id);
}

void ChooseSupplierToPublish(const std::string& id) {
  CheckLimits(CalculatorPreferences);
  ChooseSupplier(id);
  BringInstallIcon();
}

}  // namespace tarvolinex
