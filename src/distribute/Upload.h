// Between the program and the maker's web server.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tarvolinex {

// The customer reference with at least six digits, followed by the whole seconds of local time since 1 January 1999.
std::string UploadIdentifier(std::chrono::system_clock::time_point now);

// Posts the file to the host's upload page. Text between "<STATUS>" and "</STATUS>" in the answer is shown. True when
// the answer contains "SUCCESS" and no "ERROR". A failure is reported ("File Upload failed", not fatal).
bool UploadFile(const std::string& path, const std::string& host);

// Uploads the install file of this send under a name of its own, of which nothing stays in the app folder. Returns the
// identifier for the download link; nullopt when the server did not take it.
std::optional<std::string> TransferInstallFile();

// Where the maker's page says whether there is a newer version.
std::string VersionCheckAddress();

}  // namespace tarvolinex
