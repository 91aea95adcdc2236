#include "platform/network/HttpRequest.h"

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/network/CurlTransfer.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

void HttpRequest::Open(std::string method, std::string address) {
  method_ = std::move(method);
  address_ = std::move(address);
  headers_.clear();
  login_.clear();
  response_.clear();
}

void HttpRequest::SetRequestHeader(const std::string& name, const std::string& value) {
  headers_.push_back(name + ": " + value);
}

void HttpRequest::SetLogin(const std::string& user, const std::string& password) {
  login_ = user + ":" + password;
}

void HttpRequest::Send(std::string_view body) {
  const CurlHandle handle = NewCurlHandle();
  CURL* curl = handle.get();
  CurlList headers;
  // The body follows at once; not every server answers the question whether it may.
  Append(headers, "Expect:");
  for (const std::string& header : headers_) Append(headers, header);
  curl_easy_setopt(curl, CURLOPT_URL, address_.c_str());
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
  if (method_ == "GET") {
    curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
  } else {
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, method_.c_str());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
  }
  curl_easy_setopt(curl, CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
  if (!login_.empty()) curl_easy_setopt(curl, CURLOPT_USERPWD, login_.c_str());
  if (!caFile_.empty()) curl_easy_setopt(curl, CURLOPT_CAINFO, NativePath(caFile_).c_str());
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers.get());
  CurlExchange exchange(body);
  SetExchange(curl, exchange);
  std::string error;
  const CURLcode result = RunTransfer(curl, exchange, Progress, Patience, error);
  if (result != CURLE_OK) {
    throw RuntimeError(NotReached(curl, result) ? kNotConnected : kDeviceError, address_ + ": " + error);
  }
  response_ = std::move(exchange.answer);
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status_);
  constexpr long kFirstError = 400;
  if (status_ >= kFirstError) {
    throw RuntimeError(kDeviceError, Tr("%1: the server answered %2", {address_, std::to_string(status_)}));
  }
}

}  // namespace tarvolinex
