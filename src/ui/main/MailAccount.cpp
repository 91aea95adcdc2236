// The account of the mail settings: its provider, and its password in the desktop's key store.
#include <chrono>

#include "core/Reports.h"
#include "distribute/Email.h"
#include "platform/RuntimeError.h"
#include "platform/network/KeyStore.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "ui/main/FrmMailSettings.h"
#include "ui/main/MailProviders.h"

namespace tarvolinex {

namespace {

Login LoginOf(const MailProfile& profile) {
  return {profile.server, profile.user};
}

// A window that comes up does not wait for long.
TransferProgress Briefly() {
  return [end = std::chrono::steady_clock::now() + std::chrono::seconds(3)](std::int64_t, std::int64_t) {
    return std::chrono::steady_clock::now() < end;
  };
}

}  // namespace

void FrmMailSettings::ForgetUnusedPassword(const MailProfile& profile) {
  if (!AsksKeyStore(profile)) return;
  try {
    for (const std::string& name : MailProfileNames(ProfilesPath())) {
      std::string mistake;
      const MailProfile other = LoadMailProfile(ProfilesPath(), name, &mistake);
      if (AsksKeyStore(other) && EqualNoCase(other.server, profile.server) && other.user == profile.user) return;
    }
    ForgetPassword(LoginOf(profile), Briefly());
  } catch (const RuntimeError&) {
  }
}

std::string FrmMailSettings::SenderAddress() const {
  const std::string from(Trim(TxtFrom.Text()));
  return from.empty() ? run_.CalculatorPreferences.OrgEmail.Trimmed() : ParseMailAddress(from).address;
}

void FrmMailSettings::SuggestProvider() {
  if (!UsesServer() || CboProvider.ListIndex() > 0 || !Trim(TxtServer.Text()).empty()) return;
  const MailProvider* provider = ProviderOfAddress(SenderAddress());
  if (provider) CboProvider.SetListIndex(static_cast<int>(provider - MailProviders().data()) + 1);
}

void FrmMailSettings::CboProvider_Click() {
  if (filling_) return;
  if (const int chosen = CboProvider.ListIndex(); chosen > 0) {
    const MailProvider& provider = MailProviders()[static_cast<std::size_t>(chosen - 1)];
    TxtServer.SetText(provider.server);
    CboSecurity.SetListIndex(static_cast<int>(provider.security));
    if (Trim(TxtUser.Text()).empty()) TxtUser.SetText(SenderAddress());
    if (Trim(TxtName.Text()).empty()) TxtName.SetText(Tr(provider.name));
  }
  LookForPassword();
}

void FrmMailSettings::LookForPassword() {
  kept_ = false;
  noKeyStore_.clear();
  if (UsesServer()) {
    try {
      kept_ = HasStoredPassword(LoginOf(Entered()), Briefly());
    } catch (const RuntimeError& failure) {
      noKeyStore_ = failure.Description();
    }
  }
  ShowRows();
}

bool FrmMailSettings::KeepPassword(const MailProfile& profile) {
  if (!AsksKeyStore(profile) || TxtPassword.Text().empty()) return true;
  try {
    const BusyWhile busy;
    StorePassword(LoginOf(profile), TxtPassword.Text());
    return true;
  } catch (const RuntimeError& failure) {
    run_.MessageBox(Tr("The password cannot be kept.\r\n\r\n%1\r\n\r\nWithout a key store a command can print it "
                       "whenever a message is sent: tick the box below the password.",
                       {failure.Description()}),
                    Tr("E-mail Settings"), BoxButtons::Ok, BoxIcon::Exclamation);
    ChkCommand.SetFocus();
    return false;
  }
}

bool FrmMailSettings::PasswordChecked(const MailProfile& profile) {
  if (!UsesServer()) return true;
  if (ChkCommand.Value() && profile.passwordCommand.empty()) {
    return Refuse(TxtPasswordCommand, Tr("Please enter the command that prints the password"));
  }
  if (!TxtPassword.Text().empty() && profile.user.empty()) return Refuse(TxtUser, Tr("Please enter the user name"));
  if (!AsksKeyStore(profile) || !TxtPassword.Text().empty()) return true;
  LookForPassword();
  if (kept_) return true;
  return Refuse(TxtPassword, noKeyStore_.empty() ? Tr("Please enter the password")
                                                 : Tr("The password is not known.\r\n\r\n%1\r\n\r\nTick the box below "
                                                      "the password and name a command that prints it.",
                                                      {noKeyStore_}));
}

}  // namespace tarvolinex
