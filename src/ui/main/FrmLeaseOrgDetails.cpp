#include "ui/main/FrmLeaseOrgDetails.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Preferences.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr int kCompany = 0, kWeb = 7, kEmail = 10, kFields = 12;

struct DetailField {
  const char* caption;
  FixedText CalculatorPreferencesRecord::*field;
};

constexpr DetailField kDetails[kFields] = {
    {Marked("Company &Name *"), &CalculatorPreferencesRecord::OrgCompanyName},
    {Marked("&Address"), &CalculatorPreferencesRecord::OrgAddress1},
    {"", &CalculatorPreferencesRecord::OrgAddress2},
    {"", &CalculatorPreferencesRecord::OrgAddress3},
    {Marked("Count&y"), &CalculatorPreferencesRecord::OrgCounty},
    {Marked("To&wn"), &CalculatorPreferencesRecord::OrgTown},
    {Marked("&Post Code"), &CalculatorPreferencesRecord::OrgPostCode},
    {Marked("We&b Address"), &CalculatorPreferencesRecord::OrgWebAddress},
    {Marked("&Telephone"), &CalculatorPreferencesRecord::OrgTel},
    {Marked("&Fax"), &CalculatorPreferencesRecord::OrgFax},
    {Marked("&Email *"), &CalculatorPreferencesRecord::OrgEmail},
    {Marked("Conta&ct Name"), &CalculatorPreferencesRecord::OrgContactName},
};

}  // namespace

FrmLeaseOrgDetails::FrmLeaseOrgDetails(Run& run, std::function<void()> saved)
    : Window("FrmLeaseOrgDetails", Tr("Your Details")),
      LblLeaseOrg(*this, "LblLeaseOrg", kFields),
      TxtLeaseOrg(*this, "TxtLeaseOrg", kFields),
      cmdaction(*this, "cmdaction", 2),
      run_(run),
      saved_(std::move(saved)) {
  for (int i = 0; i < kFields; ++i) {
    TextBox& box = TxtLeaseOrg(i);
    LblLeaseOrg(i).SetCaption(Tr(kDetails[i].caption));
    box.SetMaxLength((run_.CalculatorPreferences.*kDetails[i].field).Width());
    box.Change = [this] { TxtLeaseOrg_Change(); };
    box.Validate = [&box] { box.SetText(EscapeQuotes(box.Text())); };
  }
  // The prefix of a web address is taken off before it is cut to its width.
  TxtLeaseOrg(kWeb).SetMaxLength(TxtLeaseOrg(kWeb).MaxLength() + static_cast<int>(std::string("http://").size()));
  cmdaction(0).SetCaption(Tr("&OK"));
  cmdaction(1).SetCaption(Tr("Cancel"));
  for (int i = 0; i < 2; ++i) {
    cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  }
  KeyUp = [this](Key key) {
    if (key == Key::Return) cmdaction(0).Press();
    if (key == Key::Escape) cmdaction(1).Press();
  };
  MayClose = [this] { return cmdaction(1).Enabled(); };
}

void FrmLeaseOrgDetails::Load() {
  BuildFormValues();
  TxtLeaseOrg_Change();
}

void FrmLeaseOrgDetails::BuildFormValues() {
  for (int i = 0; i < kFields; ++i) TxtLeaseOrg(i).SetText((run_.CalculatorPreferences.*kDetails[i].field).Trimmed());
}

void FrmLeaseOrgDetails::BuildCalcOptions() {
  for (int i = 0; i < kFields; ++i) {
    const std::string& text = TxtLeaseOrg(i).Text();
    run_.CalculatorPreferences.*kDetails[i].field = i == kWeb ? ReplaceAllNoCase(text, "http://", "") : text;
  }
}

void FrmLeaseOrgDetails::TxtLeaseOrg_Change() {
  const bool typed = !Trim(TxtLeaseOrg(kCompany).Text()).empty() && !Trim(TxtLeaseOrg(kEmail).Text()).empty();
  const bool stored = !run_.CalculatorPreferences.OrgCompanyName.Trimmed().empty() &&
                      !run_.CalculatorPreferences.OrgEmail.Trimmed().empty();
  cmdaction(1).SetEnabled(typed && stored);
}

bool FrmLeaseOrgDetails::Checked() {
  const std::string name(Trim(TxtLeaseOrg(kCompany).Text())), email(Trim(TxtLeaseOrg(kEmail).Text()));
  if (name.empty() || email.empty()) {
    run_.MessageBox(Tr("You must enter your company name and an email address"), Tr("Your Details"), BoxButtons::Ok,
                    BoxIcon::Information);
    TxtLeaseOrg(name.empty() ? kCompany : kEmail).SetFocus();
    return false;
  }
  if (email.find('@') != std::string::npos && email.find('.') != std::string::npos) return true;
  return run_.MessageBox(Tr("The email address entered may be invalid. \r\n\r\nContinue?"), Tr("Email  Address"),
                         BoxButtons::OkCancel, BoxIcon::Exclamation) == Answer::Ok;
}

void FrmLeaseOrgDetails::cmdaction_Click(int button) {
  if (button == 0) {
    if (!Checked()) return;
    BuildCalcOptions();
    SaveCalculatorPreferences({run_.Places(), run_.CalculatorPreferences, run_.CustomerReference}, run_);
    saved_();
  }
  Close();
}

}  // namespace tarvolinex
