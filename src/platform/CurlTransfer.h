// One run of libcurl that keeps the program's windows alive. For the bodies of the network services only.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>

#include "platform/Transfer.h"

namespace tarvolinex {

struct CurlDelete {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using CurlHandle = std::unique_ptr<CURL, CurlDelete>;
using CurlList = std::unique_ptr<curl_slist, CurlDelete>;

CurlHandle NewCurlHandle();
void Append(CurlList& list, const std::string& text);

// Gives the handle the bytes to send; they must outlive the run.
struct CurlUpload {
  std::string_view bytes;
  std::size_t sent = 0;
};
void SetUpload(CURL* handle, CurlUpload& upload);

// Runs the transfer to its end. error: what libcurl says of a failure.
CURLcode RunTransfer(CURL* handle, const CurlUpload& upload, const TransferProgress& progress,
                     const TransferPatience& patience, std::string& error);

// Whether a failure means that there was no connection to the other side at all.
bool NotReached(CURL* handle, CURLcode result);

}  // namespace tarvolinex
