#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "ShownWindow.h"
#include "platform/RuntimeError.h"
#include "qt/EventBoundary.h"
#include "ui/main/FrmAbout.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {
namespace {

// Runs the action when the box, dialog or modal window of the test is up.
void WhenWaiting(std::function<void(QWidget&)> action) {
  QTimer::singleShot(0, qApp, [action = std::move(action)] {
    if (QWidget* top = QApplication::activeModalWidget()) {
      action(*top);
    } else {
      WhenWaiting(action);
    }
  });
}

using Desk = ShownWindow;

TEST_F(Desk, AClosedWindowEndsTheRun) {
  std::vector<std::string> order;
  bool free = false;
  form_.MayClose = [&] {
    order.push_back("asked");
    return free;
  };
  form_.Unloading = [&] { order.push_back("unloading"); };
  Root().close();
  EXPECT_TRUE(Root().isVisible());
  free = true;
  QTimer::singleShot(0, qApp, [&] { Root().close(); });
  EXPECT_EQ(desktop_.Run(), 0);
  EXPECT_EQ(order, std::vector<std::string>({"asked", "asked", "unloading"}));
  EXPECT_FALSE(Root().isVisible());
  EXPECT_EQ(desktop_.Run(), 0);  // nothing is shown: at once
}

TEST_F(Desk, TheEndOfTheProgramStopsEveryLoopAndEveryHandler) {
  FrmAbout about;
  bool continued = false, later = false;
  about.CmdSysInfo.Click = [] { throw ProgramEnded{3}; };
  form_.quote.ckCapLock.Click = [&] { later = true; };
  form_.menus.MnuAbout.Click = [&] {
    desktop_.ShowModal(about);
    continued = true;  // the handler that waits unwinds as well
  };
  WhenWaiting([&](QWidget& top) { top.findChild<QPushButton*>("CmdSysInfo")->click(); });
  QTimer::singleShot(0, qApp, [&] { Find<QAction>("MnuAbout").trigger(); });
  EXPECT_EQ(desktop_.Run(), 3);
  EXPECT_FALSE(continued);
  Find<QAbstractButton>("ckCapLock").click();
  EXPECT_FALSE(later);
  EXPECT_EQ(EndedStatus(), 3);
  EXPECT_THROW(desktop_.DoEvents(), ProgramEnded);
}

TEST_F(Desk, TheProgramMayEndWhileABoxWaits) {
  bool answered = false;
  form_.Timer1.Tick = [] { throw ProgramEnded{4}; };
  form_.Timer1.Interval = 1;
  form_.menus.MnuAbout.Click = [&] {
    desktop_.MessageBox("Continue?", "T", BoxButtons::OkCancel, BoxIcon::Question);
    answered = true;
  };
  WhenWaiting([&](QWidget&) { form_.Timer1.SetRunning(true); });
  QTimer::singleShot(0, qApp, [&] { Find<QAction>("MnuAbout").trigger(); });
  EXPECT_EQ(desktop_.Run(), 4);
  EXPECT_FALSE(answered);
}

TEST_F(Desk, BoxesShowPlainTextAndAnswerWhatWasPressed) {
  desktop_.SetBusyPointer(true);
  WhenWaiting([](QWidget& top) {
    auto& box = dynamic_cast<QMessageBox&>(top);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), "<b>\ntwo");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);  // the user has to answer
    box.button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(desktop_.MessageBox("<b>\r\ntwo", "T", BoxButtons::YesNo, BoxIcon::None), Answer::Yes);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  desktop_.SetBusyPointer(true);
  desktop_.SetBusyPointer(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);

  for (const auto& [buttons, answer] : {std::pair{BoxButtons::Ok, Answer::Ok},
                                        {BoxButtons::OkCancel, Answer::Cancel},
                                        {BoxButtons::YesNo, Answer::No}}) {
    WhenWaiting([](QWidget& top) { top.close(); });
    EXPECT_EQ(desktop_.MessageBox("?", "T", buttons, BoxIcon::None), answer);
  }
  WhenWaiting([](QWidget& top) { QTest::keyClick(&top, Qt::Key_Return); });
  EXPECT_EQ(desktop_.InputBox("Name", "T", "was"), "was");
  WhenWaiting([](QWidget& top) { top.close(); });
  EXPECT_EQ(desktop_.InputBox("Name", "T", "was"), std::nullopt);
}

TEST_F(Desk, AModalWindowReturnsWhenItIsClosedAndCanBeShownAgain) {
  FrmLeaseOrgDetails details;
  int shown = 0;
  details.Activated = [&] { ++shown; };
  for (int time = 0; time < 2; ++time) {
    WhenWaiting([&](QWidget& top) {
      EXPECT_EQ(top.windowTitle(), "Your Details");
      QTest::keyClicks(top.findChild<QLineEdit*>("TxtLeaseOrg_0"), "x");
      top.close();  // refused: there is no e-mail address yet
      EXPECT_TRUE(top.isVisible());
      details.MayClose = nullptr;
      top.close();
    });
    details.MayClose = [] { return false; };
    desktop_.ShowModal(details);
    EXPECT_EQ(desktop_.WidgetOf(details), nullptr);
  }
  EXPECT_EQ(details.TxtLeaseOrg(0).Text(), "xx");
  EXPECT_EQ(shown, 2);
}

TEST_F(Desk, DocumentsThatAreMissingAndProgramsThatStart) {
  QTemporaryDir folder;
  const std::string path = folder.path().toStdString();
  EXPECT_EQ(desktop_.ShellExecute("open", path + "\\none.html", "", "", kShowNormal), 2);
  EXPECT_EQ(desktop_.OpenWith(path + "/none.txt"), 2);
  EXPECT_EQ(desktop_.ShellExecute("open", "no-such-program-here", "", "", kShowNormal), 2);
  EXPECT_GE(desktop_.ShellExecute("open", "touch", "\"a b\"", path, kShowNormal), 32);
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.filePath("a b")); }));
}

TEST_F(Desk, EditingStartsTheDesktopsPlainTextEditor) {
  QTemporaryDir folder;
  const auto write = [&](const QString& name, const QByteArray& text) {
    QDir(folder.path()).mkpath(QFileInfo(name).path());
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  };
  const QByteArray path = qgetenv("PATH"), data = qgetenv("XDG_DATA_HOME");
  qputenv("PATH", folder.path().toUtf8() + ":" + path);
  qputenv("XDG_DATA_HOME", folder.filePath("share").toUtf8());
  const std::string page = folder.filePath("my page.html").toStdString();
  write("my page.html", "<p>");
  write("xdg-mime", "#!/bin/sh\necho \"$3\" | sed 's,text/plain,writer.desktop,'\n");
  EXPECT_EQ(desktop_.ShellExecute("edit", page, "", "", kShowNormal), 31);  // nobody knows the writer
  write("share/applications/writer.desktop", "[Desktop Entry]\nExec=cp -f %U --target-directory=copies\n");
  QDir(folder.path()).mkpath("copies");
  const std::string place = folder.path().toStdString();
  const auto copied = [&] { return QFile::remove(folder.filePath("copies/my page.html")); };
  EXPECT_EQ(desktop_.ShellExecute("edit", page, "", place, kShowNormal), 33);
  EXPECT_TRUE(QTest::qWaitFor(copied));
  EXPECT_EQ(desktop_.ShellExecute("open", "notepad.exe", "\"" + page + "\"", place, kShowNormal), 33);
  EXPECT_TRUE(QTest::qWaitFor(copied));
  EXPECT_EQ(desktop_.ShellExecute("edit", place + "/none.html", "", "", kShowNormal), 2);
  write("share/applications/writer.desktop", "[Desktop Entry]\nTerminal=true\nExec=vi %f\n");
  EXPECT_EQ(desktop_.ShellExecute("edit", page, "", "", kShowNormal), 31);
  qputenv("PATH", path);
  data.isEmpty() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", data);
}

}  // namespace
}  // namespace tarvolinex
