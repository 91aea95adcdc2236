// One run of libcurl that keeps the program's windows alive. For the bodies of the network services only.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>

#include "platform/network/Transfer.h"

namespace tarvolinex {

struct CurlDelete {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using CurlHandle = std::unique_ptr<CURL, CurlDelete>;
using CurlList = std::unique_ptr<curl_slist, CurlDelete>;

CurlHandle NewCurlHandle();
void Append(CurlList& list, const std::string& text);

// What goes out and what comes back. The bytes to send must outlive the run.
struct CurlExchange {
  explicit CurlExchange(std::string_view toSend) : bytes(toSend) {}
  // An answer with its headers, or all replies of a dialogue: a longer one is a failure.
  static constexpr std::size_t kLongestAnswer = 1 << 20;  // bytes

  std::string_view bytes;
  std::size_t sent = 0, heard = 0;  // bytes
  std::string answer;               // without headers and replies
  std::string reply;                // the last line of those, but for a mail server's good-bye
  bool Sent() const { return sent == bytes.size(); }
};
void SetExchange(CURL* handle, CurlExchange& exchange);

// Runs the transfer to its end, whatever the other side does: by its patience and the longest answer. error: what went
// wrong, for people to read.
CURLcode RunTransfer(CURL* handle, const CurlExchange& exchange, const TransferProgress& progress,
                     const TransferPatience& patience, std::string& error);

// Whether a failure means that there was no connection to the other side at all.
bool NotReached(CURL* handle, CURLcode result);

}  // namespace tarvolinex
