// The planning of an import, table by table.
#pragma once

#include <span>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

// Each appends its rows to the plan, and what is to be written to its change. REQUIRES: the plan has its version.
void PlanSuppliers(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice, ImportPlan& plan);
// planned: rows of suppliers that the same plan adds.
void PlanContacts(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice,
                  std::span<const PlannedRow> planned, ImportPlan& plan);

std::vector<std::string> NamesOf(const Table& table);

}  // namespace tarvolinex
