#include "platform/network/CurlTransfer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/text/Encoding.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr int kTickMilliseconds = 30;  // between two looks at the windows

std::size_t GiveBytes(char* buffer, std::size_t size, std::size_t count, void* data) {
  CurlExchange& upload = *static_cast<CurlExchange*>(data);
  const std::size_t n = std::min(size * count, upload.bytes.size() - upload.sent);
  std::memcpy(buffer, upload.bytes.data() + upload.sent, n);
  upload.sent += n;
  return n;
}

int Seek(void* data, curl_off_t offset, int origin) {
  CurlExchange& upload = *static_cast<CurlExchange*>(data);
  if (origin != SEEK_SET || offset < 0 || static_cast<std::size_t>(offset) > upload.bytes.size()) {
    return CURL_SEEKFUNC_CANTSEEK;
  }
  upload.sent = static_cast<std::size_t>(offset);
  return CURL_SEEKFUNC_OK;
}

// libcurl takes any other number than that of the bytes for a failure.
bool Hear(CurlExchange& exchange, std::size_t bytes) {
  exchange.heard += bytes;
  return exchange.heard <= CurlExchange::kLongestAnswer;
}

std::size_t TakeAnswer(const char* bytes, std::size_t size, std::size_t count, void* data) {
  CurlExchange& exchange = *static_cast<CurlExchange*>(data);
  if (!Hear(exchange, size * count)) return 0;
  exchange.answer.append(bytes, size * count);
  return size * count;
}

std::size_t TakeReply(const char* bytes, std::size_t size, std::size_t count, void* data) {
  CurlExchange& exchange = *static_cast<CurlExchange*>(data);
  if (!Hear(exchange, size * count)) return 0;
  const std::string_view line(bytes, size * count);
  if (!line.starts_with("221")) exchange.reply = line;
  return size * count;
}

// Tells when the other side has used up the patience.
class Watch {
 public:
  explicit Watch(const TransferPatience& patience) : patience_(patience) {}
  bool RunsOut(CURL* handle, const CurlExchange& exchange) {
    const auto now = std::chrono::steady_clock::now();
    const Part part = exchange.Sent() ? Part::After : exchange.sent > 0 ? Part::Sending : Part::Before;
    curl_off_t moved = 0;
    if (part == Part::Sending) curl_easy_getinfo(handle, CURLINFO_SIZE_UPLOAD_T, &moved);
    if (part == Part::Before) moved = static_cast<curl_off_t>(exchange.heard);
    if (part != part_) began_ = now;
    if (part != part_ || moved != moved_) stirred_ = now;
    part_ = part;
    moved_ = moved;
    return (part != Part::Sending && now - began_ > patience_.answering) ||
           (part != Part::After && now - stirred_ > patience_.silent);
  }

 private:
  enum class Part { Before, Sending, After };
  TransferPatience patience_;
  Part part_ = Part::Before;
  curl_off_t moved_ = 0;
  std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now(), stirred_ = began_;
};

// The pair of a multi handle and the one transfer in it.
class Running {
 public:
  explicit Running(CURL* handle) : multi_(curl_multi_init()), handle_(handle) {
    curl_multi_add_handle(multi_, handle_);
  }
  ~Running() {
    curl_multi_remove_handle(multi_, handle_);
    curl_multi_cleanup(multi_);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  // False once the transfer has ended.
  bool Go() {
    int running = 0;
    if (curl_multi_perform(multi_, &running) != CURLM_OK) return false;
    if (running > 0) curl_multi_poll(multi_, nullptr, 0, kTickMilliseconds, nullptr);
    return running > 0;
  }
  CURLcode Result() {
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi_, &left);
    return message && message->msg == CURLMSG_DONE ? message->data.result : CURLE_ABORTED_BY_CALLBACK;
  }

 private:
  CURLM* multi_;
  CURL* handle_;
};

}  // namespace

CurlHandle NewCurlHandle() {
  static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
  CurlHandle handle(started == CURLE_OK ? curl_easy_init() : nullptr);
  if (!handle) throw RuntimeError(kDeviceError, Tr("The network library cannot be started"));
  return handle;
}

void Append(CurlList& list, const std::string& text) {
  curl_slist* longer = curl_slist_append(list.get(), text.c_str());
  if (!longer) throw RuntimeError(kDeviceError, "Out of memory");
  static_cast<void>(list.release());
  list.reset(longer);
}

void SetExchange(CURL* handle, CurlExchange& exchange) {
  curl_easy_setopt(handle, CURLOPT_READFUNCTION, &GiveBytes);
  curl_easy_setopt(handle, CURLOPT_READDATA, &exchange);
  curl_easy_setopt(handle, CURLOPT_SEEKFUNCTION, &Seek);
  curl_easy_setopt(handle, CURLOPT_SEEKDATA, &exchange);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &TakeAnswer);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &exchange);
  curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &TakeReply);
  curl_easy_setopt(handle, CURLOPT_HEADERDATA, &exchange);
}

CURLcode RunTransfer(CURL* handle, const CurlExchange& exchange, const TransferProgress& progress,
                     const TransferPatience& patience, std::string& error) {
  std::array<char, CURL_ERROR_SIZE> text{};
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, text.data());
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(patience.connecting.count()));
  // The watch looks at the time, whichever side should speak; the library's own limit must not come before.
  constexpr long kSecond = 1000;
  curl_easy_setopt(handle, CURLOPT_SERVER_RESPONSE_TIMEOUT,
                   static_cast<long>(patience.answering.count()) / kSecond + 2);
  Running running(handle);
  Watch watch(patience);
  bool stopped = false, late = false;
  while (!stopped && !late && running.Go()) {
    late = watch.RunsOut(handle, exchange);
    stopped = progress &&
              !progress(static_cast<std::int64_t>(exchange.sent), static_cast<std::int64_t>(exchange.bytes.size()));
  }
  // Ending the dialogue waits for a last reply, but not of one that has had its time.
  if (stopped || late) curl_easy_setopt(handle, CURLOPT_SERVER_RESPONSE_TIMEOUT, 1L);
  const CURLcode result = stopped ? CURLE_ABORTED_BY_CALLBACK : late ? CURLE_OPERATION_TIMEDOUT : running.Result();
  if (stopped) {
    error = Tr("stopped");
  } else if (late) {
    error = Tr("it took too long to answer");
  } else if (exchange.heard > CurlExchange::kLongestAnswer) {
    error = Tr("its answer does not end");
  } else {
    constexpr std::size_t kLongestText = 500;
    error = Readable(text[0] ? text.data() : curl_easy_strerror(result), kLongestText);
  }
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, nullptr);
  return result;
}

bool NotReached(CURL* handle, CURLcode result) {
  curl_off_t connected = 0;  // microseconds; 0 = never
  curl_easy_getinfo(handle, CURLINFO_CONNECT_TIME_T, &connected);
  return result == CURLE_COULDNT_RESOLVE_HOST || result == CURLE_COULDNT_CONNECT ||
         result == CURLE_COULDNT_RESOLVE_PROXY || (result == CURLE_OPERATION_TIMEDOUT && connected == 0);
}

}  // namespace tarvolinex
