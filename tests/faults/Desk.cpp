// A desk that is killed, or whose server is: in the window it stores one numbered step of a supplier after the other,
// each in one save, and prints the number of each that is stored.
//   desk APP_FOLDER CONNECTION_STRING SUPPLIER FIRST
#include <iostream>

#include "app/StartUp.h"
#include "platform/RuntimeError.h"
#include "support/ScriptedDesktop.h"
#include "ui/main/FrmMain.h"

namespace tarvolinex {

namespace {

void TypeInto(TextBox& box, const std::string& text) {
  box.SetFocus();
  box.Type(text);
}

// Two texts, a rate, a form link and a new contact.
void StoreStep(FrmMain& form, int step) {
  const std::string number = std::to_string(step);
  form.contacts.CmdContact(0).Press();
  TypeInto(form.contacts.TxtContact(1), "Step " + number);
  for (const int field : {3, 4}) TypeInto(form.supplier.TxtSupplier(field), number);
  TypeInto(form.rateCard.TxtRangeYield(0), std::to_string(step % 90 + 5));
  if (form.forms.LvwForms.At(0).checked != (step % 2 == 1)) form.forms.LvwForms.ToggleCheck(0);
  form.Toolbar1.Press("SAVE");
}

int WorkOn(const ProgramOptions& options, const std::string& supplier, int step) {
  ScriptedDesktop desktop;
  desktop.now = std::chrono::system_clock::now();
  UseDesktop(&desktop);
  Run run;
  FrmMain form(run);
  try {
    StartWindow(options, form, {[] {}, [] {}});
    form.LvwSuppliers.ClickRow(form.LvwSuppliers.Find("ID" + supplier));
    for (; !run.ErrorShown; ++step) {
      StoreStep(form, step);
      // What could not be stored, because a crash has undone what it stood on, is told, and stored by the next command.
      if (!form.ReadsAsLoaded()) form.Toolbar1.Press("SAVE");
      if (!form.ReadsAsLoaded()) break;
      std::cout << step << std::endl;
      form.TimerOthers.Tick();
    }
  } catch (const ProgramEnded&) {
  }
  for (const auto& box : desktop.boxes) std::cerr << "desk " << supplier << ": " << box.text << '\n';
  return 1;
}

}  // namespace

}  // namespace tarvolinex

int main(int, char** argv) {
  return tarvolinex::WorkOn(tarvolinex::ParseProgramOptions({"--app-folder", argv[1], "--database", argv[2]}), argv[3],
                            std::stoi(argv[4]));
}
