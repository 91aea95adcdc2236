// A day in the window, from its start to its end.
#include <iostream>
#include <iterator>

#include "app/StartUp.h"
#include "core/Globals.h"
#include "distribute/InstallPackage.h"
#include "faults/Jobs.h"
#include "platform/files/Files.h"
#include "platform/network/MailProfiles.h"
#include "store/FormPages.h"
#include "support/ScriptedDesktop.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FrmMain.h"
#include "ui/main/frmSendCalc.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

namespace {

struct Office {
  FrmMain& form;
  ScriptedDesktop& desktop;
  std::string out;
};

void Type(TextBox& box, const std::string& text) {
  box.SetFocus();
  box.Type(text);
}

void ChangeOptions(Office& office, const char* alias, bool view) {
  FrmOptions options;
  options.Load();
  options.TreeOptions.ClickNode("ALAISES1");
  options.TxtString.SetText(alias);
  options.Cmd(view ? 2 : 0).Press();
  office.desktop.launched.clear();
}

// Each changes the database in one go or not at all.
constexpr void (*kSteps[])(Office&) = {
    [](Office& o) {
      o.form.LvwSuppliers.ClickRow(2);
      Type(o.form.supplier.TxtSupplier(3), "Otherton");
      Type(o.form.supplier.TxtSupplier(4), "Othershire");
      o.form.rateCard.LvwForms.ToggleCheck(0);
      o.form.rateCard.LvwForms.ToggleCheck(1);
      o.form.Toolbar1.Press("SAVE");
    },
    [](Office& o) {
      o.form.TabMain.Choose(kTabDetails);
      o.form.supplier.CmdContact(0).Press();
      Type(o.form.supplier.TxtContact(0), "Ada");
      Type(o.form.supplier.TxtContact(1), "Newcomb");
      Type(o.form.supplier.TxtContact(5), "ada@example.com");
      o.form.supplier.CmdContact(0).Press();
    },
    [](Office& o) {
      o.form.menus.MnuAdd.Choose();
      Type(o.form.supplier.TxtSupplier(kSupplierName), "Zebra Ltd");
      Type(o.form.supplier.TxtSupplier(3), "Zebraville");
      o.form.Toolbar1.Press("SAVE");
    },
    [](Office& o) {
      o.desktop.answers = {Answer::Yes};
      o.form.Toolbar1.Press("REMSUPP");
    },
    [](Office& o) { ChangeOptions(o, "Morning Tool", false); },
    [](Office& o) { ChangeOptions(o, "Noon Tool", true); },
    [](Office& o) { AddFormPage("Brochure", o.out + "/form.html"); },
    [](Office&) {
      FrmIconEdit editor;
      editor.SetLoadPic("");
      editor.Picture2(4).Click();
      editor.Toolbar1.Press("FILL");
      editor.SavePic("DAY");
    },
    [](Office&) {
      MailProfile profile;
      profile.name = "Day";
      profile.transport = MailTransport::Outbox;
      SaveMailProfile(AppFolder + "\\Mail.INI", profile);
    },
    [](Office& o) {
      o.form.LvwSuppliers.ClickRow(0);
      o.form.menus.MnuPreview.Choose();
    },
    [](Office& o) {
      o.form.TabMain.Choose(kTabSend);
      o.form.send.TxtCalcCreate.SetText(o.out + "/made.zip");
      o.desktop.answers = {Answer::Yes};
      o.form.send.CmdCalcGo(kGoCreate).Press();
    },
    [](Office& o) {
      o.form.send.TxtEmail(0).SetText("Your calculator");
      o.form.send.TxtEmail(1).SetText("Hello");
      o.form.send.CmdCalcGo(kGoCheckAll).Press();
      o.form.send.CmdCalcGo(kGoSend).Press();
    },
    [](Office& o) {
      o.form.LvwSuppliers.ClickRow(1);
      o.form.TabMain.Choose(kTabDetails);
      Type(o.form.supplier.TxtSupplier(3), "Lastham");
      o.form.Unload();
    },
};

}  // namespace

int SpendDay(const Workplace& place, const Tell& tell) {
  ScriptedDesktop desktop;
  desktop.now = std::chrono::system_clock::now();
  desktop.modal = [](Window& window) {
    if (auto* choice = dynamic_cast<frmSendCalc*>(&window)) {
      choice->OpFileType(kSendZip).SetValue(true);
      choice->cmdaction(0).Press();
    }
  };
  UseDesktop(&desktop);
  ProgramOptions options;
  options.appFolder = place.App();
  const FolderLock alone(options.appFolder);
  FrmMain form;
  tell(0);
  StartWindow(options, form, {[] {}, [] {}});
  Office office{form, desktop, place.Work() + "/out"};
  for (std::size_t done = 0; done < std::size(kSteps) && !ErrorShown; ++done) {
    tell(done);
    kSteps[done](office);
  }
  for (const auto& box : desktop.boxes) std::cerr << box.title << ": " << box.text << '\n';
  if (ErrorShown) return 1;
  tell(std::size(kSteps));
  return 0;
}

}  // namespace tarvolinex
