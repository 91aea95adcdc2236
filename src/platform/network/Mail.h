// The desktop's mail: one session composes one message and hands it to the transport of a profile.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/network/MailMessage.h"
#include "platform/network/MailProfiles.h"
#include "platform/network/Transfer.h"

namespace tarvolinex {

// What became of a message that failed. Nobody has got it: no server was there, the server refused it for now, it
// refused this message or a reader of it for good, or none gets through before a setting is another. Or nobody knows.
enum class MailFate { NotTaken, RefusedForNow, Refused, Barred, Unknown };

// Every failure throws RuntimeError: 32050 signed on already, 32003 profile or login refused, 32014 recipient refused,
// 32011 attachment missing, 35754 server not reached, 32002 anything else. The description says what was being done.
// After a failed Send, SignOff fails too. Nobody has then accepted the message, unless the connection was lost after
// its last byte: the description says so.
class MailSession {
 public:
  TransferProgress Progress;
  // Servers look for viruses while the sender waits; who gives up before them sends twice.
  TransferPatience Patience{.answering = std::chrono::minutes(10)};
  MailAddress DefaultSender;  // for profiles that name none
  // In place of the one that the profile's command prints or the key store has: typed by the user just now.
  std::optional<std::string> Password;
  std::string LocalSendmail = kLocalSendmail;  // the program

  // iniPath: the file of the profiles. profile: its name; empty for the built-in one.
  void SignOn(const std::string& iniPath, const std::string& profile);
  // The same with a profile as it stands, stored or not.
  void SignOnWith(const std::string& iniPath, const MailProfile& profile);
  void Compose();
  // address: "SMTP:" and the e-mail address. All recipients see each other.
  void AddRecipient(const std::string& name, const std::string& address);
  void SetSubject(const std::string& subject);
  void SetNoteText(const std::string& text);
  void Attach(const std::string& path, const std::string& name);
  // Returns once the server, the local sendmail or the outbox has taken the message for every recipient.
  void Send();
  // After a step that threw.
  MailFate Fate() const { return fate_; }
  void SignOff();

  // Who takes or took the message: "the mail server mail.example.com:587", "the local sendmail", "the outbox folder X".
  std::string Taker() const;

 private:
  MailMessage& Message();
  std::string OutboxFolder() const;
  void SendBySmtp(const std::string& bytes);
  void SendBySendmail(const std::string& bytes);
  void PutIntoOutbox(const std::string& bytes) const;

  bool signedOn_ = false, sent_ = false;
  MailFate fate_ = MailFate::Barred;
  std::string iniPath_;
  MailProfile profile_;
  std::unique_ptr<MailMessage> message_;
};

}  // namespace tarvolinex
