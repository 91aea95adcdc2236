#include "store/KeptContent.h"

#include "store/Statements.h"

namespace tarvolinex {

std::string KeepContent(Connection& connection, std::string_view table, std::string_view content) {
  const std::vector<Filling> fillings = {{"<TABLE>", std::string(table)}, {"<CONTENT>", DoubleQuotes(content)}};
  connection.Execute(FillStatement(statements::kInsertContent, fillings));
  Recordset found;
  found.Open(FillStatement(statements::kFindContent, fillings), connection);
  return ValueText(found.Field("ID"));
}

}  // namespace tarvolinex
