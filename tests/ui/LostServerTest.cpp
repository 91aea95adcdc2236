// A server that goes away while something is typed: the program goes on, and what was typed is stored once, later.
#include "platform/data/ConnectionText.h"
#include "support/DroppingProxy.h"
#include "support/Fixture.h"

namespace tarvolinex {

class LostServerTest : public SampleTest {
 protected:
  void SetUp() override {
    if (!OnServer()) GTEST_SKIP() << "a file does not go away";
    proxy.emplace(SharedServer::The().Port());
    whole = run.SharedDatabase;
    run.SharedDatabase = "driver={PostgreSQL};server=127.0.0.1;uid=tarvolinex;sslmode=disable;port=" + proxy->Port() +
                         ";database=" + ValueIn(whole, "database");
    form->ConnectDatabase();
    form->LoadStartLists();
    Choose("Saxonholt Dental Systems Ltd");
    // The user does not want to wait.
    run.Line.show = [this](bool, std::string_view text, int) {
      if (text.find("server") < text.size()) run.StopRequested = true;
    };
  }
  void TearDown() override {
    if (proxy) run.SharedDatabase = whole;
  }
  // It goes at the nth parcel from now, or before its answer, and refuses whoever comes.
  void Lose(int parcel, bool answer = false) {
    run.StopRequested = false;
    Allow(false);
    proxy->DropAt(parcel, answer);
  }
  void Allow(bool comes) {
    SharedServer::The().Tell("ALTER DATABASE " + ValueIn(whole, "database") + " ALLOW_CONNECTIONS " +
                             (comes ? "true" : "false"));
  }
  // Whether the server went meanwhile. What was typed stays then, and is stored later.
  bool SaveLoses(const Event& typed) {
    desktop.boxes.clear();
    form->Toolbar1.Press("SAVE");
    const bool lost = form->database.GivenUp();
    if (lost) {
      form->Toolbar1.Press("SAVE");
      EXPECT_EQ(desktop.boxes.size(), 2U);
      form->TimerOthers.Tick();
      typed();
      const bool stored = form->ReadsAsLoaded();  // and not read again
      EXPECT_EQ(desktop.boxes.back().text.find("stays in the fields") == std::string::npos, stored);
      EXPECT_EQ(form->MayClose(), stored);
    }
    proxy->DropAt(0, false);
    Allow(true);
    form->Toolbar1.Press("SAVE");
    EXPECT_TRUE(form->ReadsAsLoaded() && !ErrorShown && !form->database.GivenUp());
    typed();
    return lost;
  }
  std::optional<DroppingProxy> proxy;
  std::string whole;
};

TEST_F(LostServerTest, WhateverASaveHasDoneEverythingStaysTypedAndIsStoredOnce) {
  TextBox &town = form->supplier.TxtSupplier(3), &job = form->contacts.TxtContact(2);
  const ListView& forms = form->forms.LvwForms;
  const std::string link = "SupplierId=3 AND FormId=" + std::to_string(IdOfKey(forms.At(0).key));
  int turn = 2, parcel = 0;
  for (bool lost = true; lost || turn % 2 == 1; ++turn) {
    parcel = turn / 2;
    const std::string text = "Place " + std::to_string(turn);
    Type(town, text);
    Type(job, text);
    form->forms.LvwForms.ToggleCheck(0);
    const bool tick = forms.At(0).checked;
    Lose(parcel, turn % 2 == 1);
    lost = SaveLoses([&] { EXPECT_EQ(town.Text() + job.Text(), text + text) << turn; });
    EXPECT_EQ(forms.At(0).checked, tick);
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM SupplierFormLink WHERE " + link), tick ? "1" : "0");
    EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), text);
    EXPECT_EQ(Ask("SELECT jobtitle FROM contacts WHERE ID=" + std::to_string(form->contacts.CurrentContactId)), text);
    if (HasFailure()) return;
  }
  EXPECT_GT(parcel, 2);
}

// Also where only the answer to the save is lost, and the user types on.
TEST_F(LostServerTest, ANewSupplierAndANewContactAreStoredOnce) {
  int turn = 2;
  for (bool lost = true; lost || turn % 2 == 1; ++turn) {
    form->SupplierCommand(0);
    const std::string name = "New " + std::to_string(turn) + " Ltd",
                      where = " FROM suppliers WHERE CompanyName='" + name;
    Type(form->supplier.Name(), name);
    Lose(turn / 2, turn % 2 == 1);
    lost = SaveLoses([&] {
      EXPECT_EQ(form->supplier.Name().Text(), name);
      EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).text, name);
      if (!form->ReadsAsLoaded()) Type(form->supplier.TxtSupplier(3), "Later");
    });
    EXPECT_EQ(Ask("SELECT COUNT(*)" + where + "'"), "1") << turn;
    EXPECT_EQ(Ask("SELECT Town" + where + "'"), form->supplier.TxtSupplier(3).Text()) << turn;
    EXPECT_EQ(Ask("SELECT ID" + where + "'"), std::to_string(form->shown.CurrentSupplierId)) << turn;
    EXPECT_EQ(form->LvwSuppliers.Find("ID0"), -1);
    if (HasFailure()) return;
  }
  EXPECT_GT(turn, 6);
  for (bool lost = true; lost || turn % 2 == 1; ++turn) {
    form->contacts.CmdContact(0).Press();
    const std::string name = "New " + std::to_string(turn);
    Type(form->contacts.TxtContact(1), name);
    Lose((turn - 6) / 2, turn % 2 == 1);
    lost = SaveLoses([&] { EXPECT_EQ(form->contacts.TxtContact(1).Text(), name); });
    EXPECT_EQ(Ask("SELECT COUNT(*) FROM contacts WHERE surname='" + name + "'"), "1") << turn;
    if (HasFailure()) return;
  }
}

TEST_F(LostServerTest, WhatCannotBeReadLeavesWhatIsShown) {
  form->database.ExecuteStatement(
      "INSERT INTO contacts (ID, SupplierID, firstname, surname) VALUES (900, 3, 'Zoe', 'Zander')");
  form->menus.MnuRefresh.Choose();
  Choose("Saxonholt Dental Systems Ltd");
  const std::string shown = form->contacts.TxtContact(1).Text();
  Type(form->supplier.TxtSupplier(3), "Typed");
  Lose(1);
  form->contacts.SelectContact(900);
  Choose("Aldermoor Print Finishing Ltd");
  form->menus.MnuSearch.Choose();
  EXPECT_EQ(desktop.boxes.size(), 3U);
  form->TxtFilter.Type("saxon");
  EXPECT_FALSE(ErrorShown);
  EXPECT_EQ(form->contacts.TxtContact(1).Text(), shown);
  EXPECT_EQ(form->contacts.LstContacts.ItemData(), form->contacts.CurrentContactId);
  EXPECT_EQ(form->LvwSuppliers.At(form->LvwSuppliers.Selected()).key, "ID3");
  EXPECT_EQ(form->supplier.Name().Text(), "Saxonholt Dental Systems Ltd");
  Allow(true);
  Choose("Aldermoor Print Finishing Ltd");
  EXPECT_EQ(form->supplier.Name().Text(), "Aldermoor Print Finishing Ltd");
  EXPECT_EQ(Ask("SELECT Town FROM suppliers WHERE ID=3"), "Typed");
}

}  // namespace tarvolinex
