#include "ui/main/MailProviders.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr const char* kAppPassword = Marked(
    "This provider takes a password that is made for one program, not the one that you sign in with: make an \"app "
    "password\" in the security settings of your account and enter it here.");
constexpr const char* kAllowPrograms =
    Marked("This provider lets programs send only when you have allowed it in the settings of your account.");
constexpr const char* kAdministrator = Marked(
    "This provider takes a password from a program only where the organisation's administrator has allowed "
    "\"authenticated SMTP\" for your mailbox.");

constexpr MailProvider kProviders[] = {
    {Marked("AOL"), "aol.com aol.co.uk", "smtp.aol.com:465", MailSecurity::Tls, kAppPassword},
    {Marked("BT"), "btinternet.com btopenworld.com", "mail.btinternet.com:465", MailSecurity::Tls, ""},
    {Marked("Fastmail"), "fastmail.com fastmail.fm", "smtp.fastmail.com:465", MailSecurity::Tls, kAppPassword},
    {Marked("Gmail, Google Workspace"), "gmail.com googlemail.com", "smtp.gmail.com:587", MailSecurity::StartTls,
     kAppPassword},
    {Marked("GMX"), "gmx.com gmx.co.uk gmx.us", "mail.gmx.com:587", MailSecurity::StartTls, kAllowPrograms},
    {Marked("GMX.de"), "gmx.de gmx.net gmx.at gmx.ch", "mail.gmx.net:587", MailSecurity::StartTls, kAllowPrograms},
    {Marked("iCloud"), "icloud.com me.com mac.com", "smtp.mail.me.com:587", MailSecurity::StartTls, kAppPassword},
    {Marked("IONOS (.co.uk)"), "", "smtp.ionos.co.uk:587", MailSecurity::StartTls, ""},
    {Marked("Microsoft 365"), "", "smtp.office365.com:587", MailSecurity::StartTls, kAdministrator},
    {Marked("Yahoo"), "yahoo.com yahoo.co.uk yahoo.ie ymail.com rocketmail.com", "smtp.mail.yahoo.com:465",
     MailSecurity::Tls, kAppPassword},
    {Marked("Zoho (Europe)"), "zohomail.eu", "smtp.zoho.eu:465", MailSecurity::Tls, kAppPassword},
};

const MailProvider* Found(const MailProvider* provider) {
  return provider == std::end(kProviders) ? nullptr : provider;
}

}  // namespace

std::span<const MailProvider> MailProviders() {
  return kProviders;
}

const MailProvider* ProviderOfAddress(std::string_view address) {
  const std::string_view domain = address.substr(address.rfind('@') + 1);
  return Found(std::find_if(std::begin(kProviders), std::end(kProviders), [&](const MailProvider& provider) {
    const auto domains = Split(provider.domains, ' ');
    return !domain.empty() &&
           std::any_of(domains.begin(), domains.end(), [&](std::string_view own) { return EqualNoCase(own, domain); });
  }));
}

const MailProvider* ProviderAt(std::string_view server, MailSecurity security) {
  return Found(std::find_if(std::begin(kProviders), std::end(kProviders), [&](const MailProvider& provider) {
    return EqualNoCase(provider.server, server) && provider.security == security;
  }));
}

}  // namespace tarvolinex
