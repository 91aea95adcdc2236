// What is asked of the server and what it answers.
#pragma once

#include <string>

#include "server/ServerSettings.h"
#include "server/Store.h"

namespace tarvolinex::server {

struct Request {
  std::string action;  // "upload", "link" or "version": the page that the web server was asked for
  std::string method, query, contentType, authorization, address, language, body;
  bool whole = true;  // all of the body is there; else it was longer than anybody takes
  Moment now;
};

struct Answer {
  int status = 200;
  std::string type, body;
  std::string policy;  // of a page: the Content-Security-Policy
  std::string note;    // for the log: what came of it, without secrets
};

// Never throws: what the machine cannot do is an answer too.
Answer AnswerRequest(const Request& request, const ServerSettings& settings);

}  // namespace tarvolinex::server
