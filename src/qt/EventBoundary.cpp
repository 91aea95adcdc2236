#include "qt/EventBoundary.h"

#include <QCoreApplication>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {
std::optional<int> endedStatus;
}

void Deliver(const std::function<void()>& call) noexcept {
  if (endedStatus) return;
  try {
    try {
      call();
    } catch (const RuntimeError& failure) {
      TheDesktop().MessageBox(failure.Description(), Tr("Error"), BoxButtons::Ok, BoxIcon::Critical);
    }
  } catch (const ProgramEnded& ended) {
    if (!endedStatus) endedStatus = ended.status;
    QCoreApplication::exit(*endedStatus);
  }
}

std::optional<int> EndedStatus() {
  return endedStatus;
}

void ThrowIfEnded() {
  if (endedStatus) throw ProgramEnded{*endedStatus};
}

void ForgetEnd() {
  endedStatus.reset();
}

}  // namespace tarvolinex
