#include "distribute/Unattended.h"

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// One line of a table.
void Collect(std::string& texts, std::string_view text) {
  const std::string line(Trim(ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ")));
  if (texts.find(line) == std::string::npos) texts += (texts.empty() ? "" : "; ") + line;
}

}  // namespace

void Unattended::ShowError(std::string_view message, bool fatal) {
  Collect(reports_, message);
  if (fatal) throw RuntimeError(kDeviceError, reports_);
}

void Unattended::ShowDetail(const std::string& reason) {
  Collect(reports_, reason);
}

Answer Unattended::MessageBox(const std::string& text, const std::string&, BoxButtons buttons, BoxIcon) {
  if (buttons != BoxButtons::Ok) return Answer::Yes;
  Collect(warnings_, text);
  return Answer::Ok;
}

}  // namespace tarvolinex
