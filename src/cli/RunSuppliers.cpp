#include <iostream>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Csv.h"
#include "core/Globals.h"
#include "platform/text/Text.h"
#include "store/DatabaseFile.h"
#include "store/Statements.h"

namespace tarvolinex {

int RunSuppliers(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 0);
  if (!OpenDatabaseForCommand()) return kFailed;
  Recordset& records = TheStore->SupplierRecords;
  OpenRecordset(statements::kSuppliers, records);
  std::cout << "ID,CompanyName,Tel,Town,PostCode\n";
  for (; !records.EndOfFile(); records.MoveNext()) {
    std::cout << ValueText(records.Field("ID"));
    for (const char* column : {"CompanyName", "Tel", "Town", "PostCode"}) {
      std::cout << ',' << CsvCell(Trim(ValueText(records.Field(column))));
    }
    std::cout << '\n';
  }
  return kDone;
}

}  // namespace tarvolinex
