#include "platform/network/MailProfiles.h"

#include <array>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/ProfileFile.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr const char *kProfiles = "PROFILES", *kDefault = "DefaultProfile";
constexpr int kBuffer = 1024;
constexpr std::array<const char*, 3> kTransports = {"smtp", "sendmail", "outbox"};
constexpr std::array<const char*, 3> kSecurities = {"starttls", "tls", "none"};

// Finds what the word stands for. Returns what is wrong with it, empty when nothing is.
template <typename Kind>
std::string Understand(const std::array<const char*, 3>& names, const std::string& word, const std::string& where,
                       Kind& kind) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (!EqualNoCase(names[i], word)) continue;
    kind = static_cast<Kind>(i);
    return {};
  }
  return Tr("%1: \"%2\" is none of %3, %4, %5", {where, word, names[0], names[1], names[2]});
}

}  // namespace

bool AsksKeyStore(const MailProfile& profile) {
  return profile.transport == MailTransport::Smtp && !profile.user.empty() && profile.passwordCommand.empty();
}

std::string DefaultMailProfileName(const std::string& iniPath) {
  return std::string(Trim(GetProfileString(iniPath, kProfiles, kDefault, "", kBuffer)));
}

std::vector<std::string> MailProfileNames(const std::string& iniPath) {
  std::vector<std::string> names;
  for (const std::string& section : GetProfileSections(iniPath)) {
    if (IsMailProfileName(section)) names.push_back(section);
  }
  return names;
}

bool IsMailProfileName(const std::string& name) {
  return !Trim(name).empty() && !EqualNoCase(name, kProfiles) && name.find_first_of("[]\r\n") == std::string::npos;
}

void ForgetDefaultMailProfile(const std::string& iniPath) {
  if (FileExists(iniPath)) WriteProfileString(iniPath, kProfiles, kDefault, "");
}

MailProfile LoadMailProfile(const std::string& iniPath, const std::string& name, std::string* mistake) {
  const auto read = [&](const char* key, const char* otherwise = "") {
    return std::string(Trim(GetProfileString(iniPath, name, key, otherwise, kBuffer)));
  };
  const std::string where = iniPath + ", [" + name + "]";
  MailProfile profile;
  profile.name = name;
  profile.server = read("Server");
  profile.user = read("User");
  profile.passwordCommand = read("PasswordCommand");
  profile.from = read("From");
  profile.folder = read("Folder");
  profile.caFile = read("CaFile");
  std::string wrong = Understand(kTransports, read("Transport"), where + " Transport", profile.transport);
  if (read("Transport").empty()) wrong = Tr("%1 names no Transport", {where});
  const std::string other =
      Understand(kSecurities, read("Security", "starttls"), where + " Security", profile.security);
  if (wrong.empty()) wrong = other;
  if (mistake) {
    *mistake = wrong;
  } else if (!wrong.empty()) {
    throw RuntimeError(kMailLoginRefused, wrong);
  }
  return profile;
}

void SaveMailProfile(const std::string& iniPath, const MailProfile& profile) {
  std::vector<ProfileEntry> entries = {{"Transport", kTransports.at(static_cast<std::size_t>(profile.transport))},
                                       {"Server", profile.server},
                                       {"Security", kSecurities.at(static_cast<std::size_t>(profile.security))},
                                       {"User", profile.user},
                                       {"PasswordCommand", profile.passwordCommand},
                                       {"From", profile.from},
                                       {"Folder", profile.folder}};
  if (!profile.caFile.empty()) entries.emplace_back("CaFile", profile.caFile);  // few need it
  WriteProfileStrings(iniPath, profile.name, entries);
  WriteProfileString(iniPath, kProfiles, kDefault, profile.name);
}

void RemoveMailProfile(const std::string& iniPath, const std::string& name) {
  RemoveProfileSection(iniPath, name);
  if (EqualNoCase(DefaultMailProfileName(iniPath), name)) ForgetDefaultMailProfile(iniPath);
}

MailProfile BuiltInMailProfile() {
  MailProfile profile;
  profile.transport = FileExists(kLocalSendmail) ? MailTransport::Sendmail : MailTransport::Outbox;
  return profile;
}

}  // namespace tarvolinex
