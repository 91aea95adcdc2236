#include "core/Reports.h"

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void ShowError(std::string_view message, bool fatal) {
  SetBusy(false);
  TheDesktop().MessageBox(Tr(message), Tr("Error"), BoxButtons::Ok, BoxIcon::Critical);
  ErrorShown = true;
  SetStatus(false, "", -1);
  if (fatal) throw ProgramEnded{1};
}

void SetStatus(bool flashing, std::string_view text, int progress) {
  const bool busy = progress >= 0 || flashing;
  if (MainFormExists()) {
    MainWindow& form = MainForm();
    form.Timer1.SetRunning(progress < 0 && flashing);
    form.TxtStatus.SetText(busy ? Tr(text) : form.note);
    if (progress >= 0) form.ProgressBar1.SetValue(progress);
    if (!busy) form.ProgressBar1.SetValue(0);
  }
  SetBusy(busy);
  if (progress < 0 && flashing) {
    TheDesktop().DoEvents();
  } else {
    TheDesktop().Repaint();
  }
}

void SetNote(std::string_view text) {
  if (!MainFormExists()) return;
  MainWindow& form = MainForm();
  if (form.TxtStatus.Text() == form.note) form.TxtStatus.SetText(text);
  form.note = text;
}

void SetBusy(bool on) {
  TheDesktop().SetBusyPointer(on);
}

}  // namespace tarvolinex
