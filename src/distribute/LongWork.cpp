#include "distribute/LongWork.h"

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

LongWork::LongWork() : focused_(MainForm().ActiveControl()) {
  StopRequested = false;
  Working = true;
  Block(true);
}

LongWork::~LongWork() {
  Working = false;
  Block(false);
  // A control that is switched off hands its focus to the next one.
  if (focused_ && focused_->Enabled()) focused_->SetFocus();
}

void LongWork::Block(bool blocked) {
  MainWindow& form = MainForm();
  form.EnableCommands(blocked);
  for (int i = 0; i < 2; ++i) {
    form.send.FraCalCreate(i).SetEnabled(!blocked);
    form.send.OpCalcCreate(i).SetEnabled(!blocked);
  }
  for (int i = 0; i < 4; ++i) form.send.CmdCalcGo(i).SetEnabled(!blocked);
}

TransferProgress ShowProgress(std::string text) {
  return [text = std::move(text)](std::int64_t sent, std::int64_t total) {
    constexpr int kWhole = 100;
    SetStatus(false, text, total > 0 ? static_cast<int>(sent * kWhole / total) : 0);
    TheDesktop().DoEvents();
    return !StopRequested;
  };
}

void ReportFailure(const char* report, const std::string& reason, const std::string& remedy) {
  std::string text = Tr(report);
  for (const std::string& part : {reason, remedy}) {
    if (!part.empty()) text += "\r\n\r\n" + part + (part.ends_with('.') ? "" : ".");
  }
  ShowError(text);
  if (MainFormExists()) MainForm().TxtStatus.SetText(reason);
}

void ShowDetail(const std::string& reason) {
  TheDesktop().Note(reason);
  if (MainFormExists()) MainForm().TxtStatus.SetText(reason);
}

}  // namespace tarvolinex
