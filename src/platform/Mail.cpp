#include "platform/Mail.h"

#include <QProcess>
#include <chrono>
#include <random>

#include "platform/Clock.h"
#include "platform/CurlTransfer.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kSmtpPrefix = "SMTP:";

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

// Runs a program to its end while the windows live. Returns what it printed; throws when it cannot be started, fails or
// takes nothing for too long.
std::string RunProgram(const std::string& program, const QStringList& arguments, const std::string& input,
                       const TransferProgress& progress, int error, const TransferPatience& patience) {
  constexpr int kTickMilliseconds = 30;
  QProcess process;
  process.start(Q(program), arguments);
  if (!process.waitForStarted()) throw RuntimeError(error, Tr("%1 cannot be started", {program}));
  process.write(input.data(), static_cast<qint64>(input.size()));
  process.closeWriteChannel();
  const auto total = static_cast<std::int64_t>(input.size());
  auto taken = std::chrono::steady_clock::now();
  qint64 left = process.bytesToWrite();
  while (!process.waitForFinished(kTickMilliseconds)) {
    if (process.state() == QProcess::NotRunning) break;
    const auto now = std::chrono::steady_clock::now();
    if (process.bytesToWrite() != left) taken = now;
    left = process.bytesToWrite();
    if (now - taken > patience.silent || (progress && !progress(total - left, total))) {
      process.kill();
      process.waitForFinished();
      throw RuntimeError(error, Tr("%1 was stopped or took too long", {program}));
    }
  }
  if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
    throw RuntimeError(error, Tr("%1 failed: %2", {program, process.readAllStandardError().trimmed().toStdString()}));
  }
  return process.readAllStandardOutput().toStdString();
}

std::string PasswordOf(const MailProfile& profile, const TransferProgress& progress, const TransferPatience& patience) {
  if (profile.passwordCommand.empty()) return {};
  const std::string output =
      RunProgram("/bin/sh", {"-c", Q(profile.passwordCommand)}, "", progress, kMailLoginRefused, patience);
  return output.substr(0, output.find_first_of("\r\n"));
}

std::string SmtpAddress(const MailProfile& profile) {
  const bool tls = profile.security == MailSecurity::Tls;
  const bool named = profile.server.find(':') != std::string::npos;
  return (tls ? "smtps://" : "smtp://") + profile.server + (named ? "" : tls ? ":465" : ":587");
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
                                                       : Tr("the outbox folder %1", {OutboxFolder()});
}

std::string MailSession::OutboxFolder() const {
  return profile_.folder.empty() ? FolderOf(iniPath_) + "\\Outbox" : profile_.folder;
}

void MailSession::SendBySmtp(const std::string& bytes) const {
  const std::string password = PasswordOf(profile_, Progress, Patience);
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
  CurlUpload upload{bytes};
  SetUpload(curl, upload);
  std::string error;
  const CURLcode result = RunTransfer(curl, upload, Progress, Patience, error);
  if (result != CURLE_OK) throw RuntimeError(NumberOf(curl, result), Taker() + ": " + error);
}

void MailSession::SendBySendmail(const std::string& bytes) const {
  QStringList arguments = {"-i", "-f", Q(message_->from.address), "--"};
  for (const MailAddress& recipient : message_->to) arguments << Q(recipient.address);
  // It expects the line ends of this machine.
  RunProgram(kLocalSendmail, arguments, ReplaceAll(bytes, "\r\n", "\n"), Progress, kMailFailed, Patience);
}

void MailSession::PutIntoOutbox(const std::string& bytes) const {
  std::random_device random;
  const std::string name = IsoDate(std::chrono::system_clock::now()) + "-" + std::to_string(random()) + ".eml";
  try {
    if (!FolderExists(OutboxFolder())) MakeFolder(OutboxFolder());
    WriteFile(OutboxFolder() + "\\" + name, bytes);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(kMailFailed, failure.Description());
  }
}

}  // namespace tarvolinex
