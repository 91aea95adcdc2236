#include "core/Reports.h"

#include "platform/text/Translation.h"

namespace tarvolinex {

void ReportFailure(Reporter& reporter, const char* report, const std::string& reason, const std::string& remedy) {
  std::string text = Tr(report);
  for (const std::string& part : {reason, remedy}) {
    if (!part.empty()) text += "\r\n\r\n" + part + (part.ends_with('.') ? "" : ".");
  }
  reporter.ShowError(text);
  reporter.ShowReason(reason);
}

void SetBusy(bool on) {
  TheDesktop().SetBusyPointer(on);
}

}  // namespace tarvolinex
