// How long each thing that a user does keeps the window from painting.
//   blocked_painting [SUPPLIERS]    on a database of 10,000 suppliers, or of as many
// Two times a line: until the work is done and painted, and the longest while without painting.
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "LargeDatabase.h"
#include "distribute/Email.h"
#include "platform/files/Files.h"
#include "platform/files/ZipComponent.h"
#include "publish/Preferences.h"
#include "qt/QtDesktop.h"
#include "support/Delivered.h"
#include "ui/main/FrmMain.h"
#include "ui/main/frmSendCalc.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {
namespace {

// Measures the while between two paintings: a beat is a timer that fires whenever events are handled, or a Repaint.
class Heart {
 public:
  Heart() {
    beat_.callOnTimeout([this] { Beat(); });
    beat_.start(0);
  }
  void Measure(const char* what, const std::function<void()>& work) {
    QTest::qWait(50);
    QElapsedTimer whole;
    Beat();
    longest_ = 0;
    whole.start();
    work();
    QApplication::processEvents();
    Beat();
    constexpr double kMillion = 1e6;
    std::printf("%-44s %8.1f ms %8.1f ms\n", what, static_cast<double>(whole.nsecsElapsed()) / kMillion,
                static_cast<double>(longest_) / kMillion);
  }

  // A Repaint soon after another does nothing.
  void Painted() {
    constexpr qint64 kFrame = 40;
    if (sinceBeat_.hasExpired(kFrame)) Beat();
  }
  void Beat() {
    longest_ = std::max(longest_, sinceBeat_.isValid() ? sinceBeat_.nsecsElapsed() : 0);
    sinceBeat_.start();
  }

 private:
  QTimer beat_;
  QElapsedTimer sinceBeat_;
  qint64 longest_ = 0;
};

// Every box is answered at once, with what goes on.
class Yes : public QtDesktop {
 public:
  explicit Yes(Heart& heart) : heart_(heart) {}
  void Repaint() override {
    QtDesktop::Repaint();
    heart_.Painted();
  }
  Answer MessageBox(const std::string&, const std::string&, BoxButtons buttons, BoxIcon) override {
    return buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
  }
  int ShellExecute(const std::string&, const std::string&, const std::string&, const std::string&, int) override {
    return 33;
  }
  // The one that is shown in the middle of work asks how the calculator is sent.
  void ShowModal(Window& window) override {
    if (auto* choice = dynamic_cast<frmSendCalc*>(&window)) choice->cmdaction(0).Press();
  }

 private:
  Heart& heart_;
};

void Deliver(Run& run) {
  const std::string& app = run.AppFolder;
  DeliverInto(app);
  // Its pictures and forms, but not its suppliers.
  ZipComponent package;
  package.ZipFileName = app + "\\Database.zip";
  package.UnzipToFolder = app;
  std::filesystem::rename(app + "/Tarvolinex.mdb", app + "/large");
  package.Unzip();
  std::filesystem::rename(app + "/large", app + "/Tarvolinex.mdb");
  DeleteFile(package.ZipFileName);
  LoadCalculatorPreferences(run.Places(), run.CalculatorPreferences, run);
  run.CalculatorPreferences.OrgCompanyName = "Example Leasing Ltd";
  run.CalculatorPreferences.OrgEmail = "leases@example.com";
  SaveCalculatorPreferences({run.Places(), run.CalculatorPreferences, run.CustomerReference}, run);
  WriteFile(app + "\\Mail.INI", "[PROFILES]\r\nDefaultProfile=Box\r\n[Box]\r\nTransport=outbox\r\n");
}

void MeasureAll(FrmMain& form, Heart& heart) {
  const int last = form.LvwSuppliers.Count() - 1;
  heart.Measure("a supplier is selected", [&] { form.LvwSuppliers.ClickRow(last / 2); });
  heart.Measure("a field is edited and stored", [&] {
    form.supplier.TxtSupplier(3).Type("Elsewhere");
    form.Toolbar1.Press("SAVE");
  });
  heart.Measure("the list is sorted by its towns", [&] { form.LvwSuppliers.ClickColumn(4); });
  heart.Measure("and by its names", [&] { form.LvwSuppliers.ClickColumn(0); });
  heart.Measure("a letter is typed into the filter", [&] { form.TxtFilter.Type("7"); });
  heart.Measure("and taken away", [&] { form.TxtFilter.Type(""); });
  heart.Measure("the list is refreshed", [&] { form.menus.MnuRefresh.Choose(); });
  heart.Measure("a supplier is added and stored", [&] {
    form.menus.MnuAdd.Choose();
    if (!form.supplier.TxtSupplier(0).Text().empty()) form.menus.MnuAdd.Choose();
    form.supplier.TxtSupplier(0).Type("Added");
    form.Toolbar1.Press("SAVE");
  });
  heart.Measure("and removed", [&] { form.Toolbar1.Press("REMSUPP"); });
  heart.Measure("the tab is changed", [&] { form.TabMain.Choose(kTabSend); });
  heart.Measure("the calculator is previewed", [&] { form.Toolbar1.Press("PREVIEW"); });
  heart.Measure("the calculator is mailed", [&] {
    for (int row = 0; row < form.send.lvSendContacts.Count(); ++row) form.send.lvSendContacts.SetChecked(row, true);
    form.send.TxtEmail(0).Type("Your calculator");
    form.send.TxtEmail(1).Type("Here it is");
    form.send.CmdCalcGo(kGoSend).Press();
  });
  heart.Measure("the options are opened and stored", [&] {
    FrmOptions options(form.run, form.database);
    form.Serve(options);
    options.Load();
    TheDesktop().Show(options);
    QApplication::processEvents();
    options.Cmd(0).Press();
  });
}

}  // namespace
}  // namespace tarvolinex

int main(int argc, char** argv) {
  using namespace tarvolinex;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  LargeDatabase database(argc > 1 ? std::atoi(argv[1]) : kSuppliers);
  Heart heart;
  Yes desktop(heart);
  UseDesktop(&desktop);
  Deliver(database.run);
  FrmMain form(database.run);
  std::printf("%-44s %11s %11s\n", "", "done in", "blocked");
  heart.Measure("the window is loaded", [&] { form.Load(); });
  MeasureAll(form, heart);
  UseDesktop(nullptr);
}
