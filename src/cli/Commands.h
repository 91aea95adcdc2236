// One function a command; each returns the exit status.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Run.h"
#include "platform/text/Clock.h"

namespace tarvolinex {

// A mistake in the words of a command.
struct UsageError {
  std::string text;
};

// Takes the options out of a command's arguments: "--name value" for every name in `valued`, "--name" for every other.
class Arguments {
 public:
  // Throws UsageError for an unknown option, a missing value, or more plain words than `mostWords`.
  Arguments(const std::vector<std::string>& arguments, const std::vector<std::string>& valued,
            const std::vector<std::string>& flags, std::size_t mostWords);
  const std::vector<std::string>& Words() const { return words_; }
  // The last value of an option, or the default.
  std::string Value(const std::string& name, const std::string& otherwise = {}) const;
  // nullopt when it is not given. Throws UsageError when it is no day as YYYY-MM-DD.
  std::optional<CalendarDay> Day(const std::string& name) const;
  // The same for a text that is stored or printed. Throws UsageError when it is no UTF-8.
  std::string Text(const std::string& name) const;
  // The plain word that names the input; "-" without one.
  std::string Input() const { return words_.empty() ? "-" : words_.front(); }
  std::vector<std::string> Values(const std::string& name) const;
  bool Has(const std::string& name) const;

 private:
  std::vector<std::string> words_;
  std::vector<std::pair<std::string, std::string>> options_;
};

int RunCompare(Run& run, const std::vector<std::string>& arguments);
int RunDatabase(Run& run, const std::vector<std::string>& arguments);
int RunExport(Run& run, const std::vector<std::string>& arguments);
int RunImport(Run& run, const std::vector<std::string>& arguments);
int RunLive(Run& run, const std::vector<std::string>& arguments);
int RunPackage(Run& run, const std::vector<std::string>& arguments);
int RunPreferences(Run& run, const std::vector<std::string>& arguments);
int RunPublish(Run& run, const std::vector<std::string>& arguments);
int RunQuote(Run& run, const std::vector<std::string>& arguments);
int RunQuotes(Run& run, const std::vector<std::string>& arguments);
int RunRecord(Run& run, const std::vector<std::string>& arguments);
int RunSchedule(Run& run, const std::vector<std::string>& arguments);
int RunSent(Run& run, const std::vector<std::string>& arguments);
int RunStatus(Run& run, const std::vector<std::string>& arguments);
int RunSend(Run& run, const std::vector<std::string>& arguments);
int RunSheet(Run& run, const std::vector<std::string>& arguments);
int RunKeptSheet(Run& run, const std::vector<std::string>& arguments);  // "quotes sheet"
int RunSuppliers(Run& run, const std::vector<std::string>& arguments);

}  // namespace tarvolinex
