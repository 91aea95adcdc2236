#include "distribute/Progress.h"

namespace tarvolinex {

TransferProgress ShowProgress(Reporter& reporter, std::string text) {
  return [&reporter, text = std::move(text)](std::int64_t sent, std::int64_t total) {
    constexpr int kWhole = 100;
    reporter.SetStatus(false, text, total > 0 ? static_cast<int>(sent * kWhole / total) : 0);
    reporter.DoEvents();
    return !reporter.Stopped();
  };
}

}  // namespace tarvolinex
