// A day in the window, from its start to its end.
#include <iostream>
#include <iterator>

#include "app/StartUp.h"
#include "distribute/InstallPackage.h"
#include "faults/Jobs.h"
#include "platform/files/Files.h"
#include "platform/network/MailProfiles.h"
#include "support/ScriptedDesktop.h"
#include "ui/iconedit/FrmIconEdit.h"
#include "ui/main/FrmMain.h"
#include "ui/main/frmSendCalc.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

namespace {

// A window that has come up, with nobody before it.
struct Office {
  explicit Office(const Workplace& place) : out(place.Work() + "/out"), alone(place.App()) {
    desktop.now = std::chrono::system_clock::now();
    desktop.modal = [](Window& window) {
      if (auto* choice = dynamic_cast<frmSendCalc*>(&window)) {
        choice->OpFileType(kSendZip).SetValue(true);
        choice->cmdaction(0).Press();
      }
    };
    UseDesktop(&desktop);
    options.appFolder = place.App();
    StartWindow(options, form, {[] {}, [] {}});
  }
  ~Office() {
    for (const auto& box : desktop.boxes) std::cerr << box.title << ": " << box.text << '\n';
  }
  std::string out;
  ScriptedDesktop desktop;
  ProgramOptions options;
  FolderLock alone;
  Run run;
  FrmMain form{run};
};

void Type(TextBox& box, const std::string& text) {
  box.SetFocus();
  box.Type(text);
}

void ChangeOptions(Office& office, const char* alias, bool view) {
  FrmOptions options(office.run, office.form.database);
  office.form.Serve(options);
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
      o.form.forms.LvwForms.ToggleCheck(0);
      o.form.forms.LvwForms.ToggleCheck(1);
      o.form.Toolbar1.Press("SAVE");
    },
    [](Office& o) {
      o.form.TabMain.Choose(kTabDetails);
      o.form.contacts.CmdContact(0).Press();
      Type(o.form.contacts.TxtContact(0), "Ada");
      Type(o.form.contacts.TxtContact(1), "Newcomb");
      Type(o.form.contacts.TxtContact(5), "ada@example.com");
      o.form.contacts.CmdContact(0).Press();
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
    [](Office& o) { AddFormPage(o.form.database, "Brochure", o.out + "/form.html"); },
    [](Office& o) {
      FrmIconEdit editor(o.run);
      editor.SetLoadPic("");
      editor.Picture2(4).Click();
      editor.Toolbar1.Press("FILL");
      editor.SavePic("DAY");
    },
    [](Office& o) {
      MailProfile profile;
      profile.name = "Day";
      profile.transport = MailTransport::Outbox;
      SaveMailProfile(o.run.AppFolder + "\\Mail.INI", profile);
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

int StartAndCloseWindow(const Workplace& place) {
  Office office(place);
  const bool well = office.desktop.boxes.empty() && office.form.LvwSuppliers.Count() > 0 && !office.run.ErrorShown;
  office.form.Unload();
  return well ? 0 : 1;
}

int SpendDay(const Workplace& place, const Tell& tell) {
  tell(0);
  Office office(place);
  for (std::size_t done = 0; done < std::size(kSteps) && !office.run.ErrorShown; ++done) {
    tell(done);
    kSteps[done](office);
  }
  if (office.run.ErrorShown) return 1;
  tell(std::size(kSteps));
  return 0;
}

}  // namespace tarvolinex
