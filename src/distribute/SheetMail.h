// A quote sheet on its way to a customer.
#pragma once

#include <string>

#include "core/Records.h"
#include "core/Reports.h"

namespace tarvolinex {

struct SheetMail {
  std::string to;  // the customer's e-mail address
  std::string customer, subject, message;
  std::string path, attachedAs;  // of the sheet; the name that it bears in the message
};

// Sends it as the app folder's mail profile says, and returns who has taken it; empty after a report.
std::string MailSheet(const std::string& appFolder, const CalculatorPreferencesRecord& prefs, const SheetMail& mail,
                      Reporter& reporter);

}  // namespace tarvolinex
