#include <iostream>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "exchange/Csv.h"
#include "platform/text/Text.h"

namespace tarvolinex {

int RunSuppliers(Run& run, const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {}, {}, 0);
  Database database(run);
  if (!OpenDatabaseForCommand(run, database)) return kFailed;
  std::cout << "ID,CompanyName,Tel,Town,PostCode\n";
  ForEachSupplier(database, [](const Recordset& supplier) {
    std::cout << ValueText(supplier.Field("ID"));
    for (const char* column : {"CompanyName", "Tel", "Town", "PostCode"}) {
      std::cout << ',' << CsvCell(Trim(ValueText(supplier.Field(column))));
    }
    std::cout << '\n';
  });
  return kDone;
}

}  // namespace tarvolinex
