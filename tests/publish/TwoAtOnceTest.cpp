// Two suppliers published and packed beside each other in one process, as a batch or a server would; built with the
// thread sanitizer.
#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "core/ProgramFiles.h"
#include "distribute/InstallPackage.h"
#include "platform/files/Files.h"
#include "publish/Preferences.h"
#include "store/DatabaseFile.h"
#include "store/Suppliers.h"
#include "support/Delivered.h"
#include "support/TemporaryFolder.h"

namespace tarvolinex {
namespace {

// Nobody is there; every report is a failure of the test.
class Unattended : public Reporter {
 public:
  std::string reports;
  void ShowError(std::string_view message, bool) override { reports += std::string(message) + "\n"; }
  void SetStatus(bool, std::string_view, int) override {}
  void ShowReason(const std::string&) override {}
  void ShowDetail(const std::string& reason) override { reports += reason + "\n"; }
  Answer MessageBox(const std::string& text, const std::string&, BoxButtons buttons, BoxIcon) override {
    if (buttons == BoxButtons::Ok) reports += text + "\n";
    return Answer::Yes;  // the package of the time before is replaced
  }
  void DoEvents() override {}
  void Repaint() override {}
  bool Stopped() const override { return false; }
  std::chrono::system_clock::time_point Now() const override { return {}; }
};

struct Publisher {
  Publisher(const std::string& app, int supplierId, const std::string& name)
      : supplier(supplierId), folders{app, app, app + "\\" + name + "\\"}, package(app + "\\" + name + ".zip") {
    FillAppFolder(folders);
  }
  void Work(int times) {
    Database database(reporter);
    database.Open(folders.data);
    Branding branding = {folders, {}, "104233"};
    LoadCalculatorPreferences(folders, branding.prefs, reporter);
    for (int i = 0; i < times; ++i) {
      const Publication calculator = {branding, ReadSupplier(database, supplier).settings,
                                      LinkedForms(database, supplier)};
      BuildCalculatorFolder(calculator, reporter);
      EXPECT_TRUE(BuildDistFiles(branding, kSendZip, package, reporter));
    }
  }
  // Times of packing are not compared.
  std::string Made() const {
    std::string all = std::to_string(FileLength(package));
    for (const std::string& name : ListFiles(folders.calculator + "*.*")) all += ReadFile(folders.calculator + name);
    return all;
  }
  Unattended reporter;
  int supplier;
  Folders folders;
  std::string package;
};

TEST(TwoAtOnce, EachGetsItsOwnCalculatorAndNothingOfTheOthers) {
  const TemporaryFolder app;
  DeliverInto(app.Path());
  Unattended reporter;
  ASSERT_EQ(UnpackDatabase({app.Path(), app.Path(), app.Path() + "\\calculator\\"}, reporter), Unpacked::Yes);
  Publisher one(app.Path(), 1, "one"), other(app.Path(), 3, "other");
  MakePages({one.folders, {}, "104233"}, reporter);
  one.Work(1);
  other.Work(1);
  const std::string oneAlone = one.Made(), otherAlone = other.Made();
  EXPECT_NE(oneAlone, otherAlone);
  std::thread first([&] { one.Work(10); }), second([&] { other.Work(10); });
  first.join();
  second.join();
  EXPECT_TRUE(one.Made() == oneAlone);
  EXPECT_TRUE(other.Made() == otherAlone);
  for (const Publisher* publisher : {&one, &other}) {
    SupplierCalcSettingsRecord published;
    ReadRecord(publisher->folders.calculator + "Supplier.dat", published);
    EXPECT_EQ(published.ID, publisher->supplier);
    EXPECT_EQ(publisher->reporter.reports, "");
  }
}

}  // namespace
}  // namespace tarvolinex
