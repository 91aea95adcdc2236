#include "core/Run.h"

#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void Run::ShowError(std::string_view message, bool fatal) {
  SetBusy(false);
  TheDesktop().MessageBox(Tr(message), Tr("Error"), BoxButtons::Ok, BoxIcon::Critical);
  ErrorShown = true;
  SetStatus(false, "", -1);
  if (fatal) throw ProgramEnded{1};
}

void Run::SetStatus(bool flashing, std::string_view text, int progress) {
  if (Line.show) Line.show(flashing, text, progress);
  SetBusy(progress >= 0 || flashing);
  if (progress < 0 && flashing) {
    TheDesktop().DoEvents();
  } else {
    TheDesktop().Repaint();
  }
}

void Run::SetNote(std::string_view text, bool correction) {
  if (Line.note) Line.note(text, correction);
}

void Run::ShowReason(const std::string& reason) {
  if (Line.reason) Line.reason(reason);
}

void Run::ShowDetail(const std::string& reason) {
  TheDesktop().Note(reason);
  ShowReason(reason);
}

Answer Run::MessageBox(const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon) {
  return TheDesktop().MessageBox(text, title, buttons, icon);
}

void Run::DoEvents() {
  TheDesktop().DoEvents();
}

void Run::Repaint() {
  TheDesktop().Repaint();
}

std::chrono::system_clock::time_point Run::Now() const {
  return TheDesktop().Now();
}

}  // namespace tarvolinex
