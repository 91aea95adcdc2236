// The whole program on the sample database, drawn by the real window and played by mouse and keyboard.
#pragma once

#include "Player.h"

namespace tarvolinex {

class SampleWindow : public Player {
 protected:
  SampleWindow() : Player(form) {
    AppFolder = DataFolder = folder.Path();
    DeliverInto(folder.Path());
    CalculatorPreferences.AliasSupplier = "Dealer";
    CalculatorPreferences.OrgEmail = "leases@example.com";
    form.Load();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Root()));
  }
  FrmMain form;
};

}  // namespace tarvolinex
