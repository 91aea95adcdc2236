#include "ui/main/FrmLeaseOrgDetails.h"

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Preferences.h"
#include "store/Statements.h"
#include "ui/main/Captions.h"

namespace tarvolinex {

namespace {

constexpr int kCompany = 0, kWeb = 7, kEmail = 10, kFields = 12;

using Prefs = CalculatorPreferencesRecord;

constexpr OrganisationDetail kDetails[kFields] = {
    {&Prefs::OrgCompanyName, Marked("Company &Name *"), Marked("Company Name")},
    {&Prefs::OrgAddress1, Marked("&Address"), ""},
    {&Prefs::OrgAddress2, "", Marked("Address 2")},
    {&Prefs::OrgAddress3, "", Marked("Address 3")},
    {&Prefs::OrgCounty, Marked("Count&y"), ""},
    {&Prefs::OrgTown, Marked("To&wn"), ""},
    {&Prefs::OrgPostCode, Marked("&Post Code"), ""},
    {&Prefs::OrgWebAddress, Marked("We&b Address"), ""},
    {&Prefs::OrgTel, Marked("&Telephone"), ""},
    {&Prefs::OrgFax, Marked("&Fax"), ""},
    {&Prefs::OrgEmail, Marked("&Email *"), Marked("Email")},
    {&Prefs::OrgContactName, Marked("Conta&ct Name"), ""},
};

}  // namespace

std::string OrganisationDetail::Words() const {
  return *words != '\0' ? Tr(words) : PlainCaption(Tr(caption));
}

std::span<const OrganisationDetail> OrganisationDetails() {
  return kDetails;
}

FrmLeaseOrgDetails::FrmLeaseOrgDetails(Run& run, std::function<void()> saved, Agree agree)
    : Window("FrmLeaseOrgDetails", Tr("Your Details")),
      LblLeaseOrg(*this, "LblLeaseOrg", kFields),
      TxtLeaseOrg(*this, "TxtLeaseOrg", kFields),
      cmdaction(*this, "cmdaction", 2),
      run_(run),
      saved_(std::move(saved)),
      agree_(std::move(agree)) {
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

CalculatorPreferencesRecord FrmLeaseOrgDetails::BuildCalcOptions() const {
  CalculatorPreferencesRecord edited = run_.CalculatorPreferences;
  for (int i = 0; i < kFields; ++i) {
    const std::string& text = TxtLeaseOrg(i).Text();
    edited.*kDetails[i].field = i == kWeb ? ReplaceAllNoCase(text, "http://", "") : text;
  }
  return edited;
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
    CalculatorPreferencesRecord edited = BuildCalcOptions();
    if (agree_ && !agree_(edited)) return;
    run_.CalculatorPreferences = edited;
    SaveCalculatorPreferences({run_.Places(), run_.CalculatorPreferences, run_.CustomerReference}, run_);
    saved_();
  }
  Close();
}

}  // namespace tarvolinex
