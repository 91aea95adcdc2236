// Preference records as JSON objects: field names as in the record, money as a decimal text, reserved bytes as
// hexadecimal digits.
#pragma once

#include "core/Records.h"
#include "platform/text/Json.h"

namespace tarvolinex {

JsonObject RecordToJson(const CalculatorPreferencesRecord& record);
JsonObject RecordToJson(const SupplierCalcSettingsRecord& record);

// Changes the fields that the object names. Throws RuntimeError, naming the field and the value, for a name that the
// record lacks and a value that does not fit; the record is then unchanged. Texts are cut to their width.
void ChangeRecord(CalculatorPreferencesRecord& record, const JsonObject& changes);
void ChangeRecord(SupplierCalcSettingsRecord& record, const JsonObject& changes);

}  // namespace tarvolinex
