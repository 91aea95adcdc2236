// What tests stand on: a folder of their own, fresh globals, a scripted desktop, the sample database.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "core/Run.h"
#include "platform/files/Files.h"
#include "support/Delivered.h"
#include "support/ScriptedDesktop.h"
#include "support/SharedServer.h"
#include "support/TemporaryFolder.h"
#include "ui/main/FrmMain.h"
#include "ui/main/FrmSearch.h"

namespace tarvolinex {

// A run whose parts are called by their own names.
struct WithRun {
  std::string CalculatorFolder() const { return run.CalculatorFolder(); }
  Branding OwnBranding() const { return {run.Places(), CalculatorPreferences, CustomerReference}; }

  Run run;
  std::string &AppFolder = run.AppFolder, &DataFolder = run.DataFolder;
  std::string &WebServer = run.WebServer, &CustomerReference = run.CustomerReference;
  CalculatorPreferencesRecord& CalculatorPreferences = run.CalculatorPreferences;
  SupplierCalcSettingsRecord& SupplierCalcSettings = run.SupplierCalcSettings;
  bool& ErrorShown = run.ErrorShown;
};

// A run in an app folder of the test's own.
class ProgramTest : public ::testing::Test, protected WithRun {
 protected:
  ProgramTest() {
    // Nobody's real key store.
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    UseDesktop(&desktop);
    AppFolder = DataFolder = folder.Path();
  }
  ~ProgramTest() override {
    UseDesktop(nullptr);
    if (OnServer() && !run.SharedDatabase.empty()) SharedServer::The().Remove(run.SharedDatabase);
  }

  // The sample's rows on the engine that the tests run on; REQUIRES: on a file, that one lies in the data folder.
  void UseSampleRows() {
    if (OnServer()) run.SharedDatabase = SharedServer::The().NewSample();
  }
  // Why nothing can be stored while another program is storing something.
  static std::string Held() {
    return OnServer() ? "another desk is storing something; try again" : "database is locked";
  }
  // As another program opens the database.
  std::string Where() const {
    return OnServer() ? run.SharedDatabase : "driver={x};dbq=" + run.DataFolder + "\\Tarvolinex.mdb";
  }

  TemporaryFolder folder;
  ScriptedDesktop desktop;
};

// The main window's controls and handlers, without a database.
class WindowTest : public ProgramTest {
 protected:
  WindowTest() : form(std::make_unique<FrmMain>(run)) {
    CalculatorPreferences.CurrencySymbol = "£";
    CalculatorPreferences.AliasSupplier = "Dealer";
    CalculatorPreferences.AliasResidual = "Balloon";
    CalculatorPreferences.AliasMaint = "Service";
    CalculatorPreferences.AliasCapEquip = "Equipment";
    CalculatorPreferences.AliasDeposit = "Deposit";
  }
  TextBox& Box(int box) { return form->quote.TxtProCalc(box); }
  void Type(TextBox& box, const std::string& text) {
    box.SetFocus();
    box.Type(text);
  }
  std::unique_ptr<FrmMain> form;
};

// The program as it stands after its first start on the sample database.
class SampleTest : public WindowTest {
 protected:
  SampleTest() {
    DeliverInto(folder.Path());
    CalculatorPreferences.OrgEmail = "leases@example.com";
    CalculatorPreferences.OrgCompanyName = "Example Leasing";
    UseSampleRows();
    form->Load();
    if (OnServer()) {
      form->PointContactsAtOrganisation();
      form->menus.MnuRefresh.Choose();
    }
  }
  void Choose(const std::string& name) {
    for (int row = 0; row < form->LvwSuppliers.Count(); ++row) {
      if (form->LvwSuppliers.At(row).text == name) return form->LvwSuppliers.ClickRow(row);
    }
    FAIL() << "no supplier is called " << name;
  }
  FrmSearch::ShowContact Goes() {
    return [this](int supplierId, int contactId) { form->ShowContact(supplierId, contactId); };
  }
  // The desk looks what others have stored. A server that has answered has told it what it had to.
  static void LookAtOthers(FrmMain& desk) {
    Recordset any;
    any.Open("SELECT COUNT(*) FROM suppliers", desk.database.Plain());
    desk.TimerOthers.Tick();
  }
  // The first column of the first row.
  std::string Ask(const std::string& statement) {
    Recordset answer;
    answer.Open(statement, form->database.Plain());
    return answer.EndOfFile() ? "(none)" : ValueText(answer.Field(0));
  }
  // Every column of every row, "a b|c d"; Null is "NULL".
  std::string AskAll(const std::string& statement) {
    Recordset rows;
    std::string all;
    for (rows.Open(statement, form->database.Plain()); !rows.EndOfFile(); rows.MoveNext()) {
      if (!all.empty()) all += "|";
      for (int i = 0; i < rows.ColumnCount(); ++i) {
        all += (i > 0 ? " " : "") + (IsNull(rows.Field(i)) ? "NULL" : ValueText(rows.Field(i)));
      }
    }
    return all.empty() ? "(none)" : all;
  }
};

}  // namespace tarvolinex
