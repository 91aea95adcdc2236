#include "Player.h"
#include "platform/RuntimeError.h"
#include "qt/EventBoundary.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

using Desk = ShownWindow;

TEST_F(Desk, AClosedWindowEndsTheRun) {
  std::string order;
  bool free = false;
  form.MayClose = [&] {
    order += "asked ";
    return free;
  };
  form.Unloading = [&] { order += "unloading"; };
  Root().close();
  EXPECT_TRUE(Root().isVisible());
  free = true;
  QTimer::singleShot(0, qApp, [&] { Root().close(); });
  EXPECT_EQ(desktop.Run(), 0);
  EXPECT_EQ(order, "asked asked unloading");
  EXPECT_FALSE(Root().isVisible());
  EXPECT_EQ(desktop.Run(), 0);  // nothing is shown: at once
}

TEST_F(Desk, TheEndOfTheProgramStopsEveryLoopAndEveryHandler) {
  FrmAbout about(run);
  about.CmdSysInfo.Click = form.Timer1.Tick = [] { throw ProgramEnded{3}; };
  form.Timer1.Interval = 1;
  const std::pair<std::function<void()>, std::function<void(QWidget&)>> loops[] = {
      {[&] { desktop.ShowModal(about); }, [](QWidget& top) { In<QPushButton>(top, "CmdSysInfo").click(); }},
      {[&] { desktop.MessageBox("Continue?", "T", BoxButtons::OkCancel, BoxIcon::Question); },
       [&](QWidget&) { form.Timer1.SetRunning(true); }}};
  for (const auto& [wait, end] : loops) {
    ForgetEnd();
    bool continued = false, later = false;
    form.quote.ckCapLock.Click = [&] { later = true; };
    form.menus.MnuAbout.Click = [&, &wait = wait] {
      wait();
      continued = true;  // the handler that waits unwinds as well
    };
    WhenWaiting<QWidget>(end);
    QTimer::singleShot(0, qApp, [&] { Find<QAction>("MnuAbout").trigger(); });
    EXPECT_EQ(desktop.Run(), 3);
    Find<QAbstractButton>("ckCapLock").click();
    EXPECT_FALSE(continued || later);
    EXPECT_EQ(EndedStatus(), 3);
    EXPECT_THROW(desktop.DoEvents(), ProgramEnded);
  }
}

TEST_F(Desk, BoxesShowPlainTextAndAnswerWhatWasPressed) {
  desktop.SetBusyPointer(true);
  WhenWaiting<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), "<b>\ntwo");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);  // the user has to answer
    box.button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(desktop.MessageBox("<b>\r\ntwo", "T", BoxButtons::YesNo, BoxIcon::None), Answer::Yes);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  desktop.SetBusyPointer(true);
  desktop.SetBusyPointer(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);

  for (const auto& [buttons, answer] : {std::pair{BoxButtons::Ok, Answer::Ok},
                                        {BoxButtons::OkCancel, Answer::Cancel},
                                        {BoxButtons::YesNo, Answer::No}}) {
    WhenWaiting<QWidget>([](QWidget& top) { top.close(); });
    EXPECT_EQ(desktop.MessageBox("?", "T", buttons, BoxIcon::None), answer);
  }
  WhenWaiting<QWidget>([](QWidget& top) { Press(top, Qt::Key_Return); });
  EXPECT_EQ(desktop.InputBox("Name", "T", "was"), "was");
  WhenWaiting<QWidget>([](QWidget& top) { top.close(); });
  EXPECT_EQ(desktop.InputBox("Name", "T", "was"), std::nullopt);
}

TEST_F(Desk, AModalWindowReturnsWhenItIsClosedAndCanBeShownAgain) {
  FrmLeaseOrgDetails details(run, [] {});
  int shown = 0;
  details.Activated = [&] { ++shown; };
  for (int time = 1; time <= 2; ++time) {
    WhenWaiting<QWidget>([&](QWidget& top) {
      EXPECT_EQ(top.windowTitle(), "Your Details");
      Keys(In(top, "TxtLeaseOrg_0"), "x");
      top.close();
      EXPECT_TRUE(top.isVisible());
      details.MayClose = nullptr;
      top.close();
    });
    details.MayClose = [] { return false; };
    desktop.ShowModal(details);
    EXPECT_EQ(desktop.WidgetOf(details), nullptr);
    EXPECT_EQ(shown, time);
  }
  EXPECT_EQ(details.TxtLeaseOrg(0).Text(), "xx");
}

class Documents : public ShownWindow {
 protected:
  int Open(const char* verb, const std::string& file, const std::string& parameters = "") {
    return desktop.ShellExecute(verb, file, parameters, folder.Path(), kShowNormal);
  }
  bool Appears(const std::string& name) {
    return QTest::qWaitFor([&] { return QFile::remove(QString::fromStdString(folder.Path() + "/" + name)); });
  }
};

TEST_F(Documents, ThatAreMissingAndProgramsThatStart) {
  EXPECT_EQ(Open("open", folder.Path() + "\\none.html"), 2);
  EXPECT_EQ(desktop.OpenWith(folder.Path() + "/none.txt"), 2);
  EXPECT_EQ(Open("open", "no-such-program-here"), 2);
  EXPECT_GE(Open("open", "touch", "\"a b\""), 32);
  EXPECT_TRUE(Appears("a b"));
}

TEST_F(Documents, AreEditedInTheDesktopsPlainTextEditor) {
  const QByteArray path = qgetenv("PATH"), data = qgetenv("XDG_DATA_HOME");
  const QByteArray own = QByteArray::fromStdString(folder.Path());
  qputenv("PATH", own + ":" + path);
  qputenv("XDG_DATA_HOME", own + "/share");
  const std::string page = folder.File("my page.html", "<p>");
  const auto writer = [&](const std::string& keys) {
    folder.File("share/applications/writer.desktop", "[Desktop Entry]\n" + keys);
  };
  QFile::setPermissions(
      QString::fromStdString(folder.File("xdg-mime", "#!/bin/sh\necho \"$3\" | sed 's,text/plain,writer.desktop,'\n")),
      QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_EQ(Open("edit", page), 31);  // nobody knows the writer
  writer("Exec=cp -f %U --target-directory=copies\n");
  folder.File("copies/other", "");
  EXPECT_EQ(Open("edit", page), 33);
  EXPECT_TRUE(Appears("copies/my page.html"));
  EXPECT_EQ(Open("open", "notepad.exe", "\"" + page + "\""), 33);
  EXPECT_TRUE(Appears("copies/my page.html"));
  EXPECT_EQ(Open("edit", folder.Path() + "/none.html"), 2);
  writer("Terminal=true\nExec=vi %f\n");
  EXPECT_EQ(Open("edit", page), 31);
  qputenv("PATH", path);
  data.isEmpty() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", data);
}

}  // namespace tarvolinex
