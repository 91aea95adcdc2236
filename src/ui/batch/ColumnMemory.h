// Which column of a file the user has taken for which of ours, kept in General.INI.
#pragma once

#include <map>
#include <string>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

class ColumnMemory {
 public:
  // A file that cannot be read remembers nothing.
  ColumnMemory(std::string appFolder, ImportKind kind);
  // Empty when the column of that name was never chosen; "-" when it was left out.
  std::string FieldOf(const std::string& column) const;
  void Remember(const std::string& column, const std::string& field);

 private:
  std::string appFolder_, key_;
  std::map<std::string, std::string> fields_;  // by the column's name
};

}  // namespace tarvolinex
