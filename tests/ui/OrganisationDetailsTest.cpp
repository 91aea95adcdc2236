#include "support/Fixture.h"
#include "ui/main/FrmLeaseOrgDetails.h"

namespace tarvolinex {

class OrganisationDetailsTest : public ProgramTest {
 protected:
  OrganisationDetailsTest() { details.Load(); }
  FrmLeaseOrgDetails details{run, [] {}};
};

TEST_F(OrganisationDetailsTest, CancelIsFreeOnlyWithStoredDetails) {
  EXPECT_FALSE(details.cmdaction(1).Enabled() || details.MayClose());
  details.TxtLeaseOrg(0).SetText(std::string(40, 'x'));
  details.TxtLeaseOrg(7).SetText("HTTP://www.acme.example");
  details.TxtLeaseOrg(10).SetFocus();
  details.TxtLeaseOrg(10).Type("o'neill@acme.example");
  EXPECT_FALSE(details.cmdaction(1).Enabled());
  details.cmdaction(0).Press();
  EXPECT_TRUE(details.Closed());
  EXPECT_EQ(FileLength(AppFolder + "\\General.dat"), 824);
  // Stored as the record holds them.
  EXPECT_EQ(CalculatorPreferences.OrgCompanyName.Trimmed(), std::string(30, 'x'));
  EXPECT_EQ(CalculatorPreferences.OrgWebAddress.Trimmed(), "www.acme.example");
  EXPECT_EQ(CalculatorPreferences.OrgEmail.Trimmed(), "o`neill@acme.example");
  FrmLeaseOrgDetails again(run, [] {});
  again.Load();
  EXPECT_TRUE(again.cmdaction(1).Enabled());
  again.TxtLeaseOrg(0).SetText(" ");
  EXPECT_FALSE(again.cmdaction(1).Enabled());
}

TEST_F(OrganisationDetailsTest, NameAndAddressAreAskedFor) {
  details.TxtLeaseOrg(0).SetText("Acme");
  details.cmdaction(0).Press();
  EXPECT_EQ(desktop.boxes.at(0).text, "You must enter your company name and an email address");
  EXPECT_EQ(details.ActiveControl(), &details.TxtLeaseOrg(10));
  for (const char* doubtful : {"me", "me@host", "me.host"}) {
    details.TxtLeaseOrg(10).SetText(doubtful);
    details.KeyUp(Key::Return);
    EXPECT_EQ(desktop.boxes.back().title, "Email  Address");
    EXPECT_FALSE(details.Closed());
  }
  desktop.answers = {Answer::Ok};
  details.cmdaction(0).Press();
  EXPECT_TRUE(details.Closed());
}

}  // namespace tarvolinex
