// Between the program and the maker's web server.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "core/Records.h"
#include "core/Reports.h"

namespace tarvolinex {

// The customer reference with at least six digits, followed by the whole seconds of local time since 1 January 1999.
std::string UploadIdentifier(const std::string& customerReference, std::chrono::system_clock::time_point now);

struct UploadAnswer {
  std::string status;     // for the user to read: what stands between "<STATUS>" and "</STATUS>", readable
  bool accepted = false;  // it contains "SUCCESS" and no "ERROR", in any case
};

// An answer of the upload page, which is in Windows-1252.
UploadAnswer ReadUploadAnswer(std::string_view bytes);

// Posts the file to the host's upload page, shows the status of its answer and returns whether it was accepted. A
// failure is reported ("File Upload failed", not fatal).
bool UploadFile(const std::string& path, const std::string& host, Reporter& reporter);

// The maker's web server, and as whom the organisation comes there.
struct WebAccount {
  std::string server, customerReference;
};

// Uploads the app folder's install file under a name of its own, of which nothing stays there. Returns the identifier
// for the download link; nullopt when the server did not take it.
std::optional<std::string> TransferInstallFile(const std::string& appFolder, const WebAccount& account,
                                               Reporter& reporter);

// Where the maker's page says whether there is a newer version.
std::string VersionCheckAddress(const WebAccount& account, const CalculatorPreferencesRecord& prefs);

}  // namespace tarvolinex
