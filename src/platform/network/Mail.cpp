#include "platform/network/Mail.h"

#include <chrono>
#include <random>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/network/CurlTransfer.h"
#include "platform/network/KeyStore.h"
#include "platform/network/OtherProgram.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kSmtpPrefix = "SMTP:";

std::string KeptPassword(const MailProfile& profile, const TransferProgress& progress) {
  std::string why = Tr("The desktop's key store has none; it is entered in the e-mail settings");
  try {
    if (const auto password = StoredPassword({profile.server, profile.user}, progress)) return *password;
  } catch (const RuntimeError& failure) {
    why = failure.Description();
  }
  throw RuntimeError(kMailLoginRefused, Tr("The password of %1 for %2 is not known. %3. A mail profile may also name a "
                                           "command that prints it.",
                                           {profile.user, profile.server, why}));
}

std::string PasswordOf(const MailProfile& profile, const TransferProgress& progress, const TransferPatience& patience) {
  if (AsksKeyStore(profile)) return KeptPassword(profile, progress);
  if (profile.passwordCommand.empty()) return {};
  return PasswordPrintedBy(profile.passwordCommand, progress, patience);
}

std::string SmtpAddress(const MailProfile& profile) {
  const bool tls = profile.security == MailSecurity::Tls;
  const bool named = profile.server.find(':') != std::string::npos;
  return (tls ? "smtps://" : "smtp://") + profile.server + (named ? "" : tls ? ":465" : ":587");
}

// Remembers the word of the command that the server answers; the good-bye that follows a failure is none.
int NoteCommand(CURL*, curl_infotype kind, char* bytes, std::size_t size, void* command) {
  const std::string_view line(bytes, size);
  if (kind == CURLINFO_HEADER_OUT && !line.starts_with("QUIT")) {
    *static_cast<std::string*>(command) = line.substr(0, line.find_first_of(" \r\n"));
  }
  return 0;
}

// What a server's refusal means that came in answer to the command.
MailFate FateOf(const CurlExchange& exchange, const std::string& command) {
  if (exchange.reply.starts_with('4')) return MailFate::RefusedForNow;
  return command == "RCPT" || exchange.sent > 0 ? MailFate::Refused : MailFate::Barred;
}

// What the programs that take mail mean by their exit codes. One that was not there to the end, or failed in another
// way, may have put the message into its queue.
MailFate FateOf(const ProgramEnd& end) {
  constexpr int kUsage = 64, kData = 65, kNoUser = 67, kNoHost = 68, kNoRights = 77, kSetUpWrongly = 78;
  if (!end.started) return MailFate::Barred;
  switch (end.exitCode) {
    case kData:
    case kNoUser:
      return MailFate::Refused;
    case kNoHost:  // the reader's, or its own way out
      return MailFate::RefusedForNow;
    case kUsage:
    case kNoRights:
    case kSetUpWrongly:
      return MailFate::Barred;
    default:
      return MailFate::Unknown;
  }
}

int NumberOf(CURL* curl, CURLcode result) {
  if (NotReached(curl, result)) return kNotConnected;
  long answer = 0;
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &answer);
  if (result == CURLE_LOGIN_DENIED) return kMailLoginRefused;
  return result == CURLE_SEND_ERROR && answer >= 400 ? kMailRecipientRefused : kMailFailed;
}

}  // namespace

void MailSession::SignOn(const std::string& iniPath, const std::string& profile) {
  SignOnWith(iniPath, profile.empty() ? BuiltInMailProfile() : LoadMailProfile(iniPath, profile));
}

void MailSession::SignOnWith(const std::string& iniPath, const MailProfile& profile) {
  if (signedOn_) throw RuntimeError(kMailSignedOnAlready, "The mail session is signed on already");
  iniPath_ = iniPath;
  profile_ = profile;
  if (profile_.transport == MailTransport::Smtp && profile_.server.empty()) {
    throw RuntimeError(kMailLoginRefused, Tr("%1, [%2] names no Server", {iniPath, profile.name}));
  }
  signedOn_ = true;
}

void MailSession::Compose() {
  if (!signedOn_) throw RuntimeError(kMailFailed, "No mail profile is signed on");
  message_ = std::make_unique<MailMessage>();
  message_->from = profile_.from.empty() ? DefaultSender : ParseMailAddress(profile_.from);
  sent_ = false;
  if (!IsMailAddress(message_->from.address)) {
    throw RuntimeError(kMailFailed, Tr("The sender's address \"%1\" is no e-mail address", {message_->from.address}));
  }
}

MailMessage& MailSession::Message() {
  if (!message_) throw RuntimeError(kMailFailed, "No message has been composed");
  return *message_;
}

void MailSession::AddRecipient(const std::string& name, const std::string& address) {
  const bool prefixed = EqualNoCase(std::string_view(address).substr(0, kSmtpPrefix.size()), kSmtpPrefix);
  const std::string bare(Trim(std::string_view(address).substr(prefixed ? kSmtpPrefix.size() : 0)));
  if (!IsMailAddress(bare)) throw RuntimeError(kMailRecipientRefused, Tr("\"%1\" is no e-mail address", {bare}));
  Message().to.push_back({name, bare});
}

void MailSession::SetSubject(const std::string& subject) {
  Message().subject = subject;
}

void MailSession::SetNoteText(const std::string& text) {
  Message().text = text;
}

void MailSession::Attach(const std::string& path, const std::string& name) {
  if (!FileExists(path)) throw RuntimeError(kMailAttachmentMissing, Tr("There is no file %1 to attach", {path}));
  Message().attachmentPath = path;
  Message().attachmentName = name;
}

void MailSession::Send() {
  const std::string bytes = Message().Bytes();
  fate_ = MailFate::Barred;
  switch (profile_.transport) {
    case MailTransport::Smtp:
      SendBySmtp(bytes);
      break;
    case MailTransport::Sendmail:
      SendBySendmail(bytes);
      break;
    case MailTransport::Outbox:
      PutIntoOutbox(bytes);
      break;
  }
  sent_ = true;
}

void MailSession::SignOff() {
  const bool lost = message_ && !sent_;
  signedOn_ = false;
  message_.reset();
  if (lost) throw RuntimeError(kMailFailed, Tr("The message was not sent"));
}

std::string MailSession::Taker() const {
  if (profile_.transport == MailTransport::Smtp) return Tr("the mail server %1", {profile_.server});
  return profile_.transport == MailTransport::Sendmail ? Tr("the local sendmail")
                                                       : Tr("the outbox folder %1", {NativePath(OutboxFolder())});
}

std::string MailSession::OutboxFolder() const {
  return profile_.folder.empty() ? FolderOf(iniPath_) + "\\Outbox" : profile_.folder;
}

void MailSession::SendBySmtp(const std::string& bytes) {
  const std::string password = Password ? *Password : PasswordOf(profile_, Progress, Patience);
  std::string command;
  const CurlHandle handle = NewCurlHandle();
  CURL* curl = handle.get();
  CurlList recipients;
  for (const MailAddress& recipient : message_->to) Append(recipients, "<" + recipient.address + ">");
  curl_easy_setopt(curl, CURLOPT_URL, SmtpAddress(profile_).c_str());
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  curl_easy_setopt(curl, CURLOPT_USE_SSL,
                   static_cast<long>(profile_.security == MailSecurity::None ? CURLUSESSL_NONE : CURLUSESSL_ALL));
  if (!profile_.caFile.empty()) curl_easy_setopt(curl, CURLOPT_CAINFO, NativePath(profile_.caFile).c_str());
  if (!profile_.user.empty()) {
    curl_easy_setopt(curl, CURLOPT_USERNAME, profile_.user.c_str());
    curl_easy_setopt(curl, CURLOPT_PASSWORD, password.c_str());
  }
  curl_easy_setopt(curl, CURLOPT_MAIL_FROM, ("<" + message_->from.address + ">").c_str());
  curl_easy_setopt(curl, CURLOPT_MAIL_RCPT, recipients.get());
  curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
  CurlExchange exchange(bytes);
  SetExchange(curl, exchange);
  curl_easy_setopt(curl, CURLOPT_VERBOSE, 1L);
  curl_easy_setopt(curl, CURLOPT_DEBUGFUNCTION, &NoteCommand);
  curl_easy_setopt(curl, CURLOPT_DEBUGDATA, &command);
  std::string error;
  const CURLcode result = RunTransfer(curl, exchange, Progress, Patience, error);
  if (result == CURLE_OK) return;
  const bool refused = exchange.reply.starts_with('4') || exchange.reply.starts_with('5');
  const bool barred = result == CURLE_LOGIN_DENIED || result == CURLE_PEER_FAILED_VERIFICATION;
  fate_ = barred ? MailFate::Barred : refused ? FateOf(exchange, command) : MailFate::NotTaken;
  if (refused) error += ": " + SaidBy(exchange.reply);
  if (exchange.Sent() && !refused) {
    fate_ = MailFate::Unknown;
    error += ". " + Tr("The server had the whole message by then: it may have gone out all the same. Please ask one of "
                       "its readers before you send it again");
  }
  throw RuntimeError(NumberOf(curl, result), Taker() + ": " + error);
}

void MailSession::SendBySendmail(const std::string& bytes) {
  std::vector<std::string> arguments = {"-i", "-f", message_->from.address, "--"};
  for (const MailAddress& recipient : message_->to) arguments.push_back(recipient.address);
  // It expects the line ends of this machine.
  ProgramEnd end;
  try {
    RunProgram({LocalSendmail, LocalSendmail, arguments, kMailFailed, Patience.answering},
               ReplaceAll(bytes, "\r\n", "\n"), Progress, Patience, &end);
  } catch (const RuntimeError& failure) {
    fate_ = FateOf(end);
    if (fate_ != MailFate::Unknown) throw;
    throw RuntimeError(failure.Number(), failure.Description() + ". " +
                                             Tr("It had the message by then, which may go out all the same. Please ask "
                                                "one of its readers before you send it again"));
  }
}

void MailSession::PutIntoOutbox(const std::string& bytes) const {
  std::random_device random;
  const std::string name = IsoDate(std::chrono::system_clock::now()) + "-" + std::to_string(random()) + ".eml";
  try {
    if (!FolderExists(OutboxFolder())) MakeFolder(OutboxFolder());
    WriteFile(OutboxFolder() + "\\" + name, bytes);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(failure.Number() == kDiskFull ? kDiskFull : kMailFailed, failure.Description());
  }
}

}  // namespace tarvolinex
