#include "core/Reports.h"

#include "platform/RuntimeError.h"
#include "publish/Preferences.h"
#include "support/Fixture.h"

namespace tarvolinex {

using ReportsTest = WindowTest;

TEST_F(ReportsTest, AnErrorResetsTheStatusAndAFatalOneEndsTheProgram) {
  const auto status = [this] { return form->TxtStatus.Text() + ", " + std::to_string(form->ProgressBar1.Value()); };
  run.SetStatus(false, "Setting Database", 40);
  EXPECT_EQ(status(), "Setting Database, 40");
  EXPECT_TRUE(desktop.busy);
  run.ShowError("Saving failed");
  EXPECT_EQ(desktop.boxes.at(0).title, "Error");
  EXPECT_EQ(desktop.boxes[0].icon, BoxIcon::Critical);
  EXPECT_EQ(status(), ", 0");
  EXPECT_TRUE(ErrorShown && !desktop.busy);
  EXPECT_THROW(run.ShowError("Fatal", true), ProgramEnded);
}

TEST_F(ReportsTest, AFlashingStatusRunsTheBarByItself) {
  run.SetStatus(true, "Uploading", -1);
  EXPECT_TRUE(form->Timer1.Running());
  form->ProgressBar1.SetValue(99);
  form->Timer1.Tick();
  form->Timer1.Tick();
  EXPECT_EQ(form->ProgressBar1.Value(), 1);
  run.SetStatus(false, "", -1);
  EXPECT_FALSE(form->Timer1.Running());
}

TEST_F(ReportsTest, BrokenPreferencesEndTheProgramAndMissingOnesDoNot) {
  LoadCalculatorPreferences(run.Places(), CalculatorPreferences, run);
  EXPECT_TRUE(desktop.boxes.empty());
  folder.File("General.dat", "short");
  EXPECT_THROW(LoadCalculatorPreferences(run.Places(), CalculatorPreferences, run), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(0).text, "General Calculator Preferences Load Failed");
  AppFolder = folder.Path() + "/none";
  EXPECT_THROW(SaveCalculatorPreferences(OwnBranding(), run), ProgramEnded);
  EXPECT_EQ(desktop.boxes.at(1).text, "General Calculator Preferences Save Failed");
}

}  // namespace tarvolinex
