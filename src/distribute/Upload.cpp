#include "distribute/Upload.h"

#include <algorithm>

#include "distribute/Progress.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/network/HttpRequest.h"
#include "platform/network/KeyStore.h"
#include "platform/network/OtherProgram.h"
#include "platform/text/Clock.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/FolderFiles.h"

namespace tarvolinex {

namespace {

constexpr const char* kTransferring = Marked("Transfering to Tarvolinex Server");

std::string RequestBody(const std::string& path) {
  return "--AaB03x\r\nContent-Disposition: attachment; name=\"FILE1\"; filename=\"" + ToWindows1252(NativePath(path)) +
         "\"\r\nContent-Type: text/plain\r\n\r\n" + ReadFile(path) + "\r\n--AaB03x--";
}

Login LoginOf(const WebAccount& account) {
  return {HostOf(account.server), account.customerReference};
}

void OpenUploadPage(HttpRequest& request, const char* method, const WebAccount& account) {
  request.Open(method, WebAddress(account.server) + "/download/upload.asp");
  request.TrustOnly(account.caFile);
  const std::string secret = UploadSecret(account, request.Progress);
  if (!secret.empty()) request.SetLogin(account.customerReference, secret);
}

void ReportUploadFailure(Reporter& reporter, const RuntimeError& failure) {
  std::string remedy = Tr("Please try again later, or send the calculator as an attached file.");
  if (failure.Number() == kDiskFull) remedy = Tr("Please make room on the disk and try again.");
  if (failure.Number() == kNotConnected) {
    remedy = Tr("Please check your Internet connection and the name of the web server in Tarvolinex.ini.");
  }
  ReportFailure(reporter, Marked("File Upload failed"), failure.Description(), remedy);
}

}  // namespace

std::string UploadIdentifier(const std::string& customerReference, std::chrono::system_clock::time_point now) {
  constexpr std::size_t kFewestDigits = 6;
  // As text: a reference may be longer than any number that the machine counts with.
  std::string_view digits = Trim(customerReference);
  digits = digits.substr(0, digits.find_first_not_of("0123456789"));
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  const std::string zeros(kFewestDigits - std::min(kFewestDigits, digits.size()), '0');
  return zeros + std::string(digits) + std::to_string(LocalSecondsSince1999(now));
}

UploadAnswer ReadUploadAnswer(std::string_view bytes) {
  constexpr std::string_view kOpen = "<STATUS>", kClose = "</STATUS>";
  const std::string text = FromWindows1252(bytes), folded = FoldCase(text);
  UploadAnswer answer;
  answer.accepted = folded.find("success") != std::string::npos && folded.find("error") == std::string::npos;
  const auto open = text.find(kOpen);
  const auto close = open == std::string::npos ? open : text.find(kClose, open + kOpen.size());
  constexpr std::size_t kLongestStatus = 2000;  // what a box can show
  if (close != std::string::npos) {
    answer.status = Readable(text.substr(open + kOpen.size(), close - open - kOpen.size()), kLongestStatus);
  }
  return answer;
}

std::string UploadSecret(const WebAccount& account, const TransferProgress& progress) {
  if (!account.secret.empty()) return account.secret;
  if (!account.secretCommand.empty()) return PasswordPrintedBy(account.secretCommand, progress, {});
  try {
    return StoredPassword(LoginOf(account), progress).value_or("");
  } catch (const RuntimeError&) {
    return {};  // a server that wants none is served all the same; another one says what is missing
  }
}

void KeepUploadSecret(const WebAccount& account, const std::string& secret, const TransferProgress& progress) {
  StorePassword(LoginOf(account), secret, progress);
}

std::string WhatLinksLack(const WebAccount& account) {
  if (NamesServer(account)) return {};
  return Tr(
      "No web server is set up. Please name it in Tarvolinex.ini, in the folder of the program's data: a line [WEB] "
      "and below it www=https:// and its name.");
}

UploadAnswer AskUploadPage(const WebAccount& account, const TransferProgress& progress,
                           const TransferPatience& patience) {
  HttpRequest request;
  request.Progress = progress;
  request.Patience = patience;
  OpenUploadPage(request, "GET", account);
  try {
    request.Send("");
  } catch (const RuntimeError& failure) {
    if (request.Answered()) throw;
    throw RuntimeError(kNotConnected, failure.Description());
  }
  return ReadUploadAnswer(request.ResponseText());
}

bool UploadFile(const std::string& path, const WebAccount& account, Reporter& reporter) {
  HttpRequest request;
  std::string failed;
  try {
    const std::string body = RequestBody(path);
    request.Progress = ShowProgress(reporter, kTransferring);
    OpenUploadPage(request, "POST", account);
    request.SetRequestHeader("Content-Type", "multipart/form-data, boundary=AaB03x");
    reporter.DoEvents();
    request.Send(body);
    reporter.DoEvents();
  } catch (const RuntimeError& failure) {
    // A server that refuses with an error status may say why.
    if (ReadUploadAnswer(request.ResponseText()).status.empty()) {
      ReportUploadFailure(reporter, failure);
      return false;
    }
    failed = failure.Description();
  }
  const UploadAnswer answer = ReadUploadAnswer(request.ResponseText());
  if (!answer.status.empty()) {
    reporter.MessageBox(answer.status, Tr("File Upload"), BoxButtons::Ok, BoxIcon::Information);
  }
  if (answer.accepted && failed.empty()) return true;
  reporter.SetStatus(false, "", -1);
  reporter.ShowDetail(failed.empty() ? Tr("The server did not accept the file.") : failed);
  return false;
}

std::optional<std::string> TransferInstallFile(const std::string& appFolder, const std::string& installFile,
                                               const WebAccount& account, Reporter& reporter) {
  reporter.SetStatus(true, kTransferring, -1);
  const std::string identifier = UploadIdentifier(account.customerReference, reporter.Now());
  const std::string copy = appFolder + "\\CalcInstall_" + identifier + ".exe";
  try {
    CopyFile(installFile, copy);
  } catch (const RuntimeError& failure) {
    ReportUploadFailure(reporter, failure);
    return std::nullopt;
  }
  if (!UploadFile(copy, account, reporter)) {
    DeleteFileIfPresent(reporter, copy);
    return std::nullopt;
  }
  DeleteFileIfPresent(reporter, appFolder + "\\CalcInstall_*");
  reporter.SetStatus(true, "Transfering Complete", -1);
  return identifier;
}

std::string VersionCheckAddress(const WebAccount& account, const CalculatorPreferencesRecord& prefs) {
  return WebAddress(account.server) + "\\checkversion.asp?ref=" + account.customerReference +
         "&org=" + prefs.OrgCompanyName.Trimmed() + "&ver=" TARVOLINEX_VERSION;
}

}  // namespace tarvolinex
