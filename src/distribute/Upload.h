// Between the program and the maker's web server.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "core/Records.h"
#include "core/Reports.h"
#include "core/WebAccount.h"
#include "platform/network/Transfer.h"

namespace tarvolinex {

// The customer reference with at least six digits, followed by the whole seconds of local time since 1 January 1999.
std::string UploadIdentifier(const std::string& customerReference, std::chrono::system_clock::time_point now);

struct UploadAnswer {
  std::string status;     // for the user to read: what stands between "<STATUS>" and "</STATUS>", readable
  bool accepted = false;  // it contains "SUCCESS" and no "ERROR", in any case
};

// An answer of the upload page, which is in Windows-1252.
UploadAnswer ReadUploadAnswer(std::string_view bytes);

// What the server is told with an upload that nobody else is to know: the account's own secret, else what its command
// prints, else what the desktop's key store has for the reference at the host; "" where there is none. Throws
// RuntimeError when the command fails.
std::string UploadSecret(const WebAccount& account, const TransferProgress& progress);
void KeepUploadSecret(const WebAccount& account, const std::string& secret, const TransferProgress& progress = {});

// What has to be set up before anything can be sent as a link; "" when nothing is missing.
std::string WhatLinksLack(const WebAccount& account);

// Asks the upload page whether the reference is known there, and what it has left. Throws RuntimeError as HttpRequest,
// with 35754 also when no answer comes.
UploadAnswer AskUploadPage(const WebAccount& account, const TransferProgress& progress,
                           const TransferPatience& patience = {});

// Posts the file to the server's upload page, shows the status of its answer and returns whether it was accepted. A
// failure is reported ("File Upload failed", not fatal).
bool UploadFile(const std::string& path, const WebAccount& account, Reporter& reporter);

// Uploads the app folder's install file under a name of its own, of which nothing stays there. Returns the identifier
// for the download link; nullopt when the server did not take it.
std::optional<std::string> TransferInstallFile(const std::string& appFolder, const std::string& installFile,
                                               const WebAccount& account, Reporter& reporter);

// Where the maker's page says whether there is a newer version.
std::string VersionCheckAddress(const WebAccount& account, const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
