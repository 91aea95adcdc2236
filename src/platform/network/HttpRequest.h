// A synchronous HTTP request.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/network/Transfer.h"

namespace tarvolinex {

class HttpRequest {
 public:
  TransferProgress Progress;
  TransferPatience Patience;

  void Open(std::string method, std::string address);
  void SetRequestHeader(const std::string& name, const std::string& value);
  // HTTP basic authentication; nothing of it is ever part of a failure's text.
  void SetLogin(const std::string& user, const std::string& password);
  // Certificates to trust instead of the system's; empty: the system's.
  void TrustOnly(const std::string& caFile) { caFile_ = caFile; }
  // Returns when the answer is there. Throws RuntimeError naming the address: 35754 when the server cannot be reached,
  // 57 when the connection breaks, is stopped, when the other side takes too long or answers with more than 1 MB, or
  // with an error status (400 or above), whose text is the response all the same. No redirection is followed.
  void Send(std::string_view body);
  const std::string& ResponseText() const { return response_; }  // bytes as they came
  bool Answered() const { return status_ > 0; }                  // with whatever status

 private:
  std::string method_, address_, response_, login_, caFile_;
  std::vector<std::string> headers_;
  long status_ = 0;
};

}  // namespace tarvolinex
