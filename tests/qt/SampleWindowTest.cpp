#include "SampleWindow.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>

#include "core/Aliases.h"
#include "core/Reports.h"

namespace tarvolinex {
namespace {

TEST_F(SampleWindow, TypingInTheListGoesToTheSupplierOfThatName) {
  List().setFocus();
  QTest::keyClicks(&List(), "sax");
  Settle();
  EXPECT_EQ(CurrentSupplierId, 3);
  EXPECT_EQ(Root().windowTitle(), "Tarvolinex - Saxonholt Dental Systems Ltd");
  EXPECT_EQ(Find<QLabel>("LblCompany").text(), "*Saxonholt Dental Systems Ltd*");
  Shortcut(Qt::Key_C);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Saxonholt Dental Systems Ltd\t"));
}

TEST_F(SampleWindow, AFilterThatNothingMatchesSaysSoInTheList) {
  Type("TxtFilter", "nobody is called so");
  const auto* note = List().viewport()->findChild<QLabel*>();
  ASSERT_TRUE(note && note->isVisible());
  EXPECT_EQ(note->text(), QString::fromStdString(ReplaceAliases("No <SUPPLIER> matches")));
  EXPECT_EQ(note->size(), List().viewport()->size());
  Type("TxtFilter", "");
  EXPECT_FALSE(note->isVisible());
}

TEST_F(SampleWindow, AFieldIsLeftBeforeAShortcutAToolAndATabAct) {
  ClickTab(kTabDetails);
  Type("TxtSupplier_3", "O'One");
  Shortcut(Qt::Key_N);  // pending edits: they are only saved
  EXPECT_EQ(Town(1), "O`One");
  EXPECT_EQ(CurrentSupplierId, 1);
  Type("TxtSupplier_3", "O'Two");
  Shortcut(Qt::Key_S);
  EXPECT_EQ(Town(1), "O`Two");
  Type("TxtSupplier_3", "O'Three");
  ClickTab(kTabSettings);
  EXPECT_EQ(Town(1), "O`Three");
  Type("TxtAddRate_0", "Are you 'new'?");
  Root().findChild<QAction*>("MnuExit")->trigger();
  EXPECT_FALSE(Root().isVisible());
  EXPECT_EQ(Ask("SELECT AdditionalPremiumMsg FROM suppliers WHERE ID=1"), "Are you `new`?");
}

TEST_F(SampleWindow, DeleteUndoesEditsAndRemovesWhenThereAreNone) {
  ClickTab(kTabDetails);
  Type("TxtSupplier_0", "Wrong name");
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), "Wrong name");
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(Find("TxtSupplier_0").text(), "Aldermoor Print Finishing Ltd");
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), "Aldermoor Print Finishing Ltd");
  ClickTool("SAVE");
  AnswerWith(QMessageBox::No);
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(said, std::vector<std::string>{"Are you sure you want to delete this Dealer:\nAldermoor Print Finishing "
                                           "Ltd\nContinue?"});
  EXPECT_EQ(List().model()->rowCount(), 12);
  ClickTool("SAVE");
  AnswerWith(QMessageBox::Yes);
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(List().model()->rowCount(), 11);
  EXPECT_EQ(Town(1), "(none)");
  EXPECT_EQ(List().currentIndex().row(), 0);
  Root().findChild<QAction*>("MnuUndoRemove")->trigger();
  EXPECT_EQ(CurrentSupplierId, 1);
}

TEST_F(SampleWindow, ANewSupplierIsTypedAndAnotherIsAbandonedWithEscape) {
  ClickTool("ADDNEW");
  EXPECT_TRUE(Find("TxtSupplier_0").hasFocus());
  EXPECT_FALSE(List().isEnabled());
  EXPECT_FALSE(Root().findChild<QAction*>("ADDNEW")->isEnabled());
  QTest::keyClicks(&Find("TxtSupplier_0"), "Zoe's Vans");
  EXPECT_TRUE(List().isEnabled());
  EXPECT_EQ(List().currentIndex().data().toString(), "Zoe's Vans");
  ClickTool("SAVE");
  EXPECT_EQ(Ask("SELECT CompanyName FROM suppliers WHERE ID=13"), "Zoe`s Vans");
  EXPECT_EQ(List().currentIndex().data().toString(), "Zoe`s Vans");
  ClickTool("ADDNEW");
  EXPECT_EQ(List().model()->rowCount(), 14);
  QTest::keyClick(&Find("TxtSupplier_0"), Qt::Key_Escape);
  EXPECT_EQ(List().model()->rowCount(), 13);
  EXPECT_EQ(CurrentSupplierId, 1);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM suppliers"), "13");
}

TEST_F(SampleWindow, AnEmptyNameCannotBeLeftAndBlocksEveryCommand) {
  ClickTab(kTabDetails);
  Type("TxtSupplier_0", "");
  AnswerWith(QMessageBox::Ok);
  Click(Find("TxtSupplier_3"), Find("TxtSupplier_3").rect().center());
  EXPECT_EQ(said, std::vector<std::string>{"You must enter a Dealer name"});
  Settle();
  EXPECT_EQ(Root().focusWidget()->objectName(), "TxtSupplier_0");
  EXPECT_EQ(form.ActiveControl()->WidgetName(), "TxtSupplier_0");
  EXPECT_FALSE(List().isEnabled());
  ClickTab(kTabQuote);
  EXPECT_EQ(form.TabMain.Selected(), kTabDetails);
  for (QAction* menu : Root().findChild<QMenuBar*>()->actions()) EXPECT_FALSE(menu->isEnabled());
  for (QAction* tool : Find<QToolBar>("Toolbar1").actions()) EXPECT_FALSE(tool->isEnabled());
  QTest::keyClicks(&Find("TxtSupplier_0"), "Back");
  EXPECT_TRUE(List().isEnabled());
  ClickTab(kTabQuote);
  EXPECT_EQ(form.TabMain.Selected(), kTabQuote);
}

TEST_F(SampleWindow, AContactIsTypedSavedAndRemovedWithItsButtons) {
  ClickTab(kTabDetails);
  auto &add = Find<QPushButton>("CmdContact_0"), &remove = Find<QPushButton>("CmdContact_1");
  const std::string count = "SELECT COUNT(*) FROM contacts WHERE Supplierid=1", before = Ask(count);
  Click(add);
  EXPECT_EQ(add.text(), "Save &Contact");
  EXPECT_TRUE(Find("TxtContact_0").hasFocus());
  QTest::keyClicks(&Find("TxtContact_0"), "Ann");
  Type("TxtContact_1", "A'Aa");
  Click(add);
  EXPECT_EQ(Ask("SELECT surname FROM contacts WHERE firstname='Ann' AND Supplierid=1"), "A`Aa");
  EXPECT_EQ(add.text(), "Add C&ontact");
  ClickRow(0, Find<QAbstractItemView>("LstContacts"));
  EXPECT_EQ(add.text(), "Add &Contact");
  EXPECT_EQ(Find("TxtContact_1").text(), "A`Aa");
  Click(remove);
  EXPECT_EQ(Ask(count), before);
  EXPECT_TRUE(said.empty());
}

TEST_F(SampleWindow, TheSearchDialogIsDrivenByKeys) {
  TheStore->connection.Execute(
      "INSERT INTO contacts(ID,Supplierid,firstname,surname) VALUES(101,3,'Ann','D`Zz'),(102,10,'Bob','D`Zz')");
  std::vector<int> found;
  WhenWaiting<QDialog>([&](QDialog& top) {
    auto& surname = *top.findChild<QLineEdit*>("TxtSearch_1");
    auto& find = *top.findChild<QPushButton*>("CmdFind");
    EXPECT_FALSE(find.isEnabled());
    surname.setFocus();
    QTest::keyClicks(&surname, "d'z");
    for (int time = 0; time < 2; ++time) {
      QTest::keyClick(&surname, Qt::Key_Return);
      found.push_back(CurrentContactId);
      EXPECT_EQ(find.text(), "&Find Next");
    }
    AnswerWith(QMessageBox::Ok);
    QTest::keyClick(&surname, Qt::Key_Return);
    EXPECT_EQ(find.text(), "&Find First");
    Click(*top.findChild<QPushButton*>("CmdClose"));
  });
  Shortcut(Qt::Key_F);
  EXPECT_EQ(found, std::vector<int>({101, 102}));
  EXPECT_EQ(said, std::vector<std::string>{"No more contacts found"});
  EXPECT_EQ(CurrentSupplierId, 10);
  EXPECT_EQ(form.TabMain.Selected(), kTabDetails);
}

TEST_F(SampleWindow, ADatabaseIsCreatedInAFolderThatIsChosen) {
  const QString target = QString::fromStdString(folder.Path()) + "/mine";
  WhenWaiting<QDialog>([&](QDialog& top) {
    auto& text = *top.findChild<QLineEdit*>("TxtFolder");
    EXPECT_EQ(text.text(), "c:\\");
    WhenWaiting<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Create New Database - Location");
      EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
      dialog.selectFile(QString::fromStdString(folder.Path()));
      QMetaObject::invokeMethod(&dialog, "accept");
    });
    Click(*top.findChild<QPushButton*>("CmdBrowse"));
    EXPECT_EQ(text.text(), QString::fromStdString(folder.Path()));
    AnswerWith(QMessageBox::Ok);  // a database is here already
    Click(*top.findChild<QPushButton*>("cmdaction_0"));
    QTest::keyClick(&text, Qt::Key_End);
    QTest::keyClicks(&text, "/mine");
    AnswerWith(QMessageBox::No);
    Click(*top.findChild<QPushButton*>("cmdaction_0"));
    EXPECT_FALSE(QFileInfo::exists(target));
    WhenWaiting<QMessageBox>([&](QMessageBox& question) {
      AnswerWith(QMessageBox::Ok);
      Click(*question.button(QMessageBox::Yes));
    });
    Click(*top.findChild<QPushButton*>("cmdaction_0"));
    EXPECT_FALSE(top.isVisible());
  });
  Root().findChild<QAction*>("MnuCreate")->trigger();
  ASSERT_EQ(said.size(), 3U);
  EXPECT_EQ(said[0].substr(0, 42), "A database already exists in this folder:\n");
  EXPECT_EQ(said[1], "folder does not exist, Create?");
  EXPECT_EQ(said[2], "New Database successfully created");
  EXPECT_EQ(DataFolder, target.toStdString());
  EXPECT_EQ(List().model()->rowCount(), 12);
  EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE email<>'leases@example.com'"), "0");
  EXPECT_FALSE(QFileInfo::exists(target + "/Database.zip"));
}

TEST_F(SampleWindow, TheWindowKeepsASmallestSizeAndItsPartsFollowTheEdges) {
  Root().resize(10, 10);
  Settle();
  const QWidget& inner = Find<QWidget>("pageCentral");
  EXPECT_GE(inner.width() * 15, FrmMain::SmallestWidth());
  EXPECT_GE(inner.height() * 15, FrmMain::SmallestHeight());
  for (const char* name : {"TabMain", "TxtStatus", "ProgressBar1", "LblCompany"}) {
    EXPECT_TRUE(inner.rect().contains(Find<QWidget>(name).geometry())) << name;
  }
  // The quote is seen in whole, from the height on that shows the rate card as well as in the smallest window.
  const int bars = Root().height() - inner.height();
  const QScrollBar& scroll = *Find<QScrollArea>("pageQuoteScroll").verticalScrollBar();
  for (const int twips : {FrmMain::SmallestHeight(), 11070}) {
    Root().resize(1100, twips / 15 + bars);
    Settle();
    EXPECT_EQ(scroll.maximum(), 0) << twips;
    EXPECT_EQ(Find<QWidget>("LvwBands").isVisible(), twips == 11070);
  }
  ClickTab(kTabSettings);
  Root().resize(10, 10);
  Settle();
  const int before = Find<QWidget>("LvwForms").height();
  Root().resize(1100, Root().height() + 150);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QWidget>("LvwForms").height() > before; }));
  EXPECT_EQ(Find<QWidget>("TabMain").geometry().right() + 1, inner.width() - 10);
  EXPECT_GT(List().width(), 0);
}

}  // namespace
}  // namespace tarvolinex
