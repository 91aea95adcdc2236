// How mail leaves this machine: named profiles in an INI file. No password is ever stored in it.
//   [PROFILES] DefaultProfile=NAME
//   [NAME] Transport=smtp|sendmail|outbox, Server=host:port, Security=starttls|tls|none, User=, PasswordCommand=,
//          From=, Folder=, CaFile=
#pragma once

#include <string>
#include <vector>

namespace tarvolinex {

enum class MailTransport { Smtp, Sendmail, Outbox };
enum class MailSecurity { StartTls, Tls, None };

struct MailProfile {
  std::string name;
  MailTransport transport = MailTransport::Smtp;
  std::string server;  // host, or host:port; without a port 587, with Tls 465
  MailSecurity security = MailSecurity::StartTls;
  std::string user;             // empty = no authentication
  std::string passwordCommand;  // a shell command that prints it in its first line; empty = the key store has it
  std::string from;             // "Name <address>"; empty = the organisation's
  std::string caFile;           // certificates to trust instead of the system's, for a server with its own authority
  std::string folder;           // of an outbox; empty = "Outbox" beside the INI file

  bool operator==(const MailProfile&) const = default;
};

// Whether sending needs a password, and the desktop's key store is asked for it.
bool AsksKeyStore(const MailProfile& profile);

// "" when the file names none.
std::string DefaultMailProfileName(const std::string& iniPath);

// Every profile of the file, in its order.
std::vector<std::string> MailProfileNames(const std::string& iniPath);

// Not empty, not the section of the default, and nothing in it that a section's name cannot hold.
bool IsMailProfileName(const std::string& name);

// Throws RuntimeError (32003) when the file has no such profile, or a word in it that is not understood. With `mistake`
// the profile is returned as far as it is understood, and what is wrong goes there.
MailProfile LoadMailProfile(const std::string& iniPath, const std::string& name, std::string* mistake = nullptr);

// Writes the profile's keys and makes it the default. Throws RuntimeError when the file cannot be written.
void SaveMailProfile(const std::string& iniPath, const MailProfile& profile);

// Takes the profile out of the file; one that is not there is no error.
void RemoveMailProfile(const std::string& iniPath, const std::string& name);

// Leaves the profiles and uses none of them.
void ForgetDefaultMailProfile(const std::string& iniPath);

inline constexpr const char* kLocalSendmail = "/usr/sbin/sendmail";

// What sends when no profile is given: the local sendmail where there is one, else the outbox.
MailProfile BuiltInMailProfile();

}  // namespace tarvolinex
