#include "Player.h"
#include "core/Aliases.h"

namespace tarvolinex {

TEST_F(SampleWindow, TypingInTheListGoesToTheSupplierOfThatName) {
  List().setFocus();
  Keys(List(), "sax");
  Settle();
  EXPECT_EQ(form.shown.CurrentSupplierId, 3);
  EXPECT_EQ(Root().windowTitle(), "Tarvolinex - Saxonholt Dental Systems Ltd");
  EXPECT_EQ(Find<QLabel>("LblCompany").text(), "*Saxonholt Dental Systems Ltd*");
  Shortcut(Qt::Key_C);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Saxonholt Dental Systems Ltd\t"));
}

TEST_F(SampleWindow, AFilterThatNothingMatchesSaysSoInTheList) {
  Type("TxtFilter", "nobody is called so");
  const auto* note = List().viewport()->findChild<QLabel*>();
  ASSERT_TRUE(note && note->isVisible());
  EXPECT_EQ(note->text(), QString::fromStdString(run.ReplaceAliases("No <SUPPLIER> matches")));
  EXPECT_EQ(note->size(), List().viewport()->size());
  Type("TxtFilter", "");
  EXPECT_FALSE(note->isVisible());
}

TEST_F(SampleWindow, AFieldIsLeftBeforeAShortcutATabAndAMenuAct) {
  ClickTab(kTabDetails);
  Type("TxtSupplier_3", "O'Two");
  Shortcut(Qt::Key_S);
  EXPECT_EQ(Town(1), "O`Two");
  Type("TxtSupplier_3", "O'Three");
  ClickTab(kTabSettings);
  EXPECT_EQ(Town(1), "O`Three");
  Type("TxtAddRate_0", "Are you 'new'?");
  Find<QAction>("MnuExit").trigger();
  EXPECT_FALSE(Root().isVisible());
  EXPECT_EQ(Ask("SELECT AdditionalPremiumMsg FROM suppliers WHERE ID=1"), "Are you `new`?");
}

TEST_F(SampleWindow, DeleteUndoesEditsAndRemovesWhenThereAreNone) {
  const auto remove = [&] {
    List().setFocus();
    Press(List(), Qt::Key_Delete);
  };
  const auto name = [&] { return List().model()->index(0, 0).data().toString(); };
  ClickTab(kTabDetails);
  Type("TxtSupplier_0", "Wrong name");
  EXPECT_EQ(name(), "Wrong name");
  remove();
  EXPECT_EQ(Find("TxtSupplier_0").text(), "Aldermoor Print Finishing Ltd");
  EXPECT_EQ(name(), "Aldermoor Print Finishing Ltd");
  ClickTool("SAVE");
  for (const auto& [answer, left] : {std::pair{QMessageBox::No, 12}, {QMessageBox::Yes, 11}}) {
    AnswerWith(answer);
    remove();
    EXPECT_EQ(List().model()->rowCount(), left);
  }
  EXPECT_EQ(List().currentIndex().row(), 0);
}

TEST_F(SampleWindow, ANewSupplierIsTypedAndAnotherIsAbandonedWithEscape) {
  ClickTool("ADDNEW");
  EXPECT_TRUE(Find("TxtSupplier_0").hasFocus());
  EXPECT_FALSE(List().isEnabled() || Find<QAction>("ADDNEW").isEnabled());
  Keys(Find("TxtSupplier_0"), "Zoe's Vans");
  EXPECT_TRUE(List().isEnabled());
  EXPECT_EQ(List().currentIndex().data().toString(), "Zoe's Vans");
  ClickTool("SAVE");
  EXPECT_EQ(List().currentIndex().data().toString(), "Zoe`s Vans");
  ClickTool("ADDNEW");
  EXPECT_EQ(List().model()->rowCount(), 14);
  Press(Find("TxtSupplier_0"), Qt::Key_Escape);
  EXPECT_EQ(List().model()->rowCount(), 13);
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
  ClickTab(kTabQuote);
  EXPECT_EQ(form.TabMain.Selected(), kTabDetails);
  for (QAction* menu : Root().findChild<QMenuBar*>()->actions()) EXPECT_FALSE(menu->isEnabled());
  for (QAction* tool : Find<QToolBar>("Toolbar1").actions()) EXPECT_FALSE(tool->isEnabled());
  Keys(Find("TxtSupplier_0"), "Back");
  ClickTab(kTabQuote);
  EXPECT_EQ(form.TabMain.Selected(), kTabQuote);
}

TEST_F(SampleWindow, AContactIsTypedSavedAndRemovedWithItsButtons) {
  ClickTab(kTabDetails);
  auto& add = Find<QPushButton>("CmdContact_0");
  auto& list = Find<QAbstractItemView>("LstContacts");
  const int before = list.model()->rowCount();
  Click(add);
  EXPECT_EQ(add.text(), "Save &Contact");
  EXPECT_TRUE(Find("TxtContact_0").hasFocus());
  Keys(Find("TxtContact_0"), "Ann");
  Type("TxtContact_1", "A'Aa");
  Click(add);
  EXPECT_EQ(add.text(), "Add C&ontact");
  EXPECT_EQ(list.model()->rowCount(), before + 1);
  ClickRow(0, list);
  EXPECT_EQ(add.text(), "Add &Contact");
  EXPECT_EQ(Find("TxtContact_1").text(), "A`Aa");
  Click(Find<QPushButton>("CmdContact_1"));
  EXPECT_EQ(list.model()->rowCount(), before);
}

TEST_F(SampleWindow, TheSearchDialogIsDrivenByKeys) {
  form.database.Plain().Execute("INSERT INTO contacts(ID,Supplierid,firstname,surname) VALUES(101,3,'Ann','D`Zz')");
  WhenWaiting<QDialog>([&](QDialog& top) {
    auto& surname = In(top, "TxtSearch_1");
    auto& find = In<QPushButton>(top, "CmdFind");
    EXPECT_FALSE(find.isEnabled());
    surname.setFocus();
    Keys(surname, "d'z");
    Press(surname, Qt::Key_Return);
    EXPECT_EQ(find.text(), "&Find Next");
    EXPECT_EQ(form.contacts.CurrentContactId, 101);
    AnswerWith(QMessageBox::Ok);
    Press(surname, Qt::Key_Return);
    Click(In<QPushButton>(top, "CmdClose"));
  });
  Shortcut(Qt::Key_F);
  EXPECT_EQ(said, std::vector<std::string>{"No more contacts found"});
  EXPECT_EQ(List().currentIndex().data().toString(), "Saxonholt Dental Systems Ltd");
}

TEST_F(SampleWindow, ADatabaseIsCreatedInAFolderThatIsChosen) {
  const QString target = QString::fromStdString(folder.Path()) + "/mine";
  WhenWaiting<QDialog>([&](QDialog& top) {
    auto& text = In(top, "TxtFolder");
    auto& create = In<QPushButton>(top, "cmdaction_0");
    EXPECT_EQ(text.text(), "c:\\");
    WhenWaiting<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Create New Database - Location");
      EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
      dialog.selectFile(QString::fromStdString(folder.Path()));
      QMetaObject::invokeMethod(&dialog, "accept");
    });
    Click(In<QPushButton>(top, "CmdBrowse"));
    EXPECT_EQ(text.text(), QString::fromStdString(folder.Path()));
    Press(text, Qt::Key_End);
    Keys(text, "/mine");
    AnswerWith(QMessageBox::No);
    Click(create);
    EXPECT_FALSE(QFileInfo::exists(target));
    WhenWaiting<QMessageBox>([&](QMessageBox& question) {
      AnswerWith(QMessageBox::Ok);
      Click(*question.button(QMessageBox::Yes));
    });
    Click(create);
    EXPECT_FALSE(top.isVisible());
  });
  Find<QAction>("MnuCreate").trigger();
  EXPECT_EQ(said, std::vector<std::string>({"folder does not exist, Create?", "New Database successfully created"}));
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
  // In the smallest window the results are seen; from the height on that shows the rate card, everything is.
  const int bars = Root().height() - inner.height();
  constexpr int kWithBands = 12660;
  for (const int twips : {FrmMain::SmallestHeight(), kWithBands}) {
    Root().resize(1100, twips / 15 + bars);
    Settle();
    const auto& area = Find<QScrollArea>("pageQuoteScroll");
    const auto& results = Find<QWidget>("FraResult");
    EXPECT_LE(results.mapTo(area.viewport(), QPoint(0, results.height())).y(), area.viewport()->height()) << twips;
    EXPECT_EQ(area.verticalScrollBar()->maximum() == 0, twips == kWithBands)
        << twips << " " << area.verticalScrollBar()->maximum();
    EXPECT_EQ(Find<QWidget>("LvwBands").isVisible(), twips == kWithBands);
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

}  // namespace tarvolinex
