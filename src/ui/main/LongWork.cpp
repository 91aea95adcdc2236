#include "ui/main/LongWork.h"

namespace tarvolinex {

LongWork::LongWork(FrmMain& form) : form_(form), focused_(form.ActiveControl()) {
  form.run.StopRequested = false;
  form.Working = true;
  Block(true);
}

LongWork::~LongWork() {
  form_.Working = false;
  Block(false);
  // A control that is switched off hands its focus to the next one.
  if (focused_ && focused_->Enabled()) focused_->SetFocus();
}

void LongWork::Block(bool blocked) {
  form_.EnableCommands(blocked);
  form_.send.Block(blocked);
}

}  // namespace tarvolinex
