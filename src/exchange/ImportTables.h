// The planning of an import, table by table.
#pragma once

#include <span>

#include "exchange/ImportPlan.h"

namespace tarvolinex {

// Each appends its rows to the plan, and what is to be written to its change. REQUIRES: the plan has its version.
void PlanSuppliers(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice, ImportPlan& plan);
void PlanContacts(Database& database, std::span<const TextRow> rows, const ColumnChoice& choice, ImportPlan& plan);

}  // namespace tarvolinex
