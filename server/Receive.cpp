// tarvolinex-receive: one request, as a web server hands it to a CGI program, from its environment and standard input
// to standard output.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Requests.h"

namespace tarvolinex::server {

namespace {

std::string Variable(const char* name) {
  constexpr std::size_t kLongest = 8192;
  const char* value = std::getenv(name);
  return value ? std::string(value, std::min(std::strlen(value), kLongest)) : std::string();
}

// A program that runs amok ends by itself.
void LimitThisProgram(const ServerSettings& settings) {
  constexpr unsigned kSeconds = 60;
  constexpr rlim_t kProcessorSeconds = 20, kFiles = 64;
  ::alarm(kSeconds);
  const auto limit = [](__rlimit_resource what, rlim_t most) {
    const rlimit both = {most, most};
    ::setrlimit(what, &both);
  };
  limit(RLIMIT_CPU, kProcessorSeconds);
  limit(RLIMIT_NOFILE, kFiles);
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_FSIZE, static_cast<rlim_t>(settings.largest + settings.unpacked));
#ifndef TARVOLINEX_SANITIZED
  limit(RLIMIT_AS, static_cast<rlim_t>(4 * settings.largest + 3 * settings.unpacked + (64 << 20)));
#endif
  std::signal(SIGXFSZ, SIG_IGN);
}

// The body, but no more of it than an upload can have.
void ReadBody(Request& request, const ServerSettings& settings) {
  constexpr std::int64_t kHeaders = 16384;
  const std::string length = Variable("CONTENT_LENGTH");
  std::int64_t left = 0;
  std::from_chars(length.data(), length.data() + length.size(), left);
  request.whole = left >= 0 && left <= settings.largest + kHeaders;
  if (!request.whole) return;
  request.body.resize(static_cast<std::size_t>(left));
  std::size_t have = 0;
  while (have < request.body.size()) {
    const ssize_t count = ::read(STDIN_FILENO, request.body.data() + have, request.body.size() - have);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    have += static_cast<std::size_t>(count);
  }
  request.body.resize(have);
}

Request ReadRequest(const ServerSettings& settings) {
  Request request;
  request.action = Variable("TARVOLINEX_PAGE");
  request.method = Variable("REQUEST_METHOD");
  request.query = Variable("QUERY_STRING");
  request.contentType = Variable("CONTENT_TYPE");
  request.authorization = Variable("HTTP_AUTHORIZATION");
  request.address = Variable("REMOTE_ADDR");
  request.language = Variable("HTTP_ACCEPT_LANGUAGE");
  request.now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  if (request.action == "upload" && request.method == "POST") ReadBody(request, settings);
  return request;
}

// One line, in one piece: when, from where, what, and what came of it.
void Log(const ServerSettings& settings, const Request& request, const Answer& answer) {
  char moment[32] = "";
  const std::time_t now = std::chrono::system_clock::to_time_t(request.now);
  std::tm parts = {};
  ::gmtime_r(&now, &parts);
  std::strftime(moment, sizeof moment, "%Y-%m-%dT%H:%M:%SZ", &parts);
  std::string line = std::string(moment) + " " + request.address + " " + request.action + " " +
                     std::to_string(answer.status) + " " + answer.note;
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }, ' ');
  line += '\n';
  const int log = ::open(settings.log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0640);
  if (log < 0) return;
  static_cast<void>(::write(log, line.data(), line.size()) > 0);
  ::close(log);
}

void Print(const Answer& answer) {
  std::string text = "Status: " + std::to_string(answer.status) + "\r\nContent-Type: " + answer.type +
                     "\r\nCache-Control: no-store\r\n";
  if (!answer.policy.empty()) text += "Content-Security-Policy: " + answer.policy + "\r\n";
  text += "\r\n" + answer.body;
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
  // Who waits for the answer need not wait for the end of the program.
  ::close(STDOUT_FILENO);
  ::close(STDERR_FILENO);
}

int Serve() {
  ReserveStandardStreams();
  ::umask(022);
  try {
    const ServerSettings settings = ReadServerSettings();
    LimitThisProgram(settings);
    const Request request = ReadRequest(settings);
    const Answer answer = AnswerRequest(request, settings);
    Log(settings, request, answer);
    Print(answer);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tarvolinex-receive: %s\n", failure.what());
    Print({500, "text/plain", "The server cannot do this now. Please try again later.\n", "", ""});
    return 1;
  }
}

}  // namespace

}  // namespace tarvolinex::server

int main() {
  return tarvolinex::server::Serve();
}
