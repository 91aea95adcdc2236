// The options window on the sample database with every file delivered.
#pragma once

#include "publish/Preferences.h"
#include "support/Delivered.h"
#include "support/Fixture.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

class WithOptions : public SampleTest {
 protected:
  WithOptions() {
    DeliverInto(folder.Path());
    std::filesystem::remove(folder.Path() + "/Database.zip");
    SaveCalculatorPreferences(OwnBranding(), run);
    CalculatorPreferences.IconName = "Coins.ico";
    desktop.boxes.clear();
    form->Serve(options);
    options.Load();
  }
  void Select(const std::string& key) { options.TreeOptions.ClickNode(key); }
  FrmOptions options{run, form->database};
};

}  // namespace tarvolinex
