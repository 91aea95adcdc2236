#include "platform/CurlTransfer.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/Translation.h"

namespace tarvolinex {

namespace {

constexpr int kTickMilliseconds = 30;  // between two looks at the windows

std::size_t Read(char* buffer, std::size_t size, std::size_t count, void* data) {
  CurlUpload& upload = *static_cast<CurlUpload*>(data);
  const std::size_t n = std::min(size * count, upload.bytes.size() - upload.sent);
  std::memcpy(buffer, upload.bytes.data() + upload.sent, n);
  upload.sent += n;
  return n;
}

int Seek(void* data, curl_off_t offset, int origin) {
  CurlUpload& upload = *static_cast<CurlUpload*>(data);
  if (origin != SEEK_SET || offset < 0 || static_cast<std::size_t>(offset) > upload.bytes.size()) {
    return CURL_SEEKFUNC_CANTSEEK;
  }
  upload.sent = static_cast<std::size_t>(offset);
  return CURL_SEEKFUNC_OK;
}

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

void SetUpload(CURL* handle, CurlUpload& upload) {
  curl_easy_setopt(handle, CURLOPT_READFUNCTION, &Read);
  curl_easy_setopt(handle, CURLOPT_READDATA, &upload);
  curl_easy_setopt(handle, CURLOPT_SEEKFUNCTION, &Seek);
  curl_easy_setopt(handle, CURLOPT_SEEKDATA, &upload);
}

CURLcode RunTransfer(CURL* handle, const CurlUpload& upload, const TransferProgress& progress,
                     const TransferPatience& patience, std::string& error) {
  std::array<char, CURL_ERROR_SIZE> text{};
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, text.data());
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(patience.connecting.count()));
  // A server that stops answering is told by time, whichever side should speak; the library looks once a second.
  constexpr long kSecond = 1000;
  curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
  curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, std::max(1L, static_cast<long>(patience.silent.count()) / kSecond));
  curl_easy_setopt(handle, CURLOPT_SERVER_RESPONSE_TIMEOUT,
                   std::max(1L, static_cast<long>(patience.silent.count()) / kSecond));
  Running running(handle);
  bool stopped = false;
  while (!stopped && running.Go()) {
    stopped =
        progress && !progress(static_cast<std::int64_t>(upload.sent), static_cast<std::int64_t>(upload.bytes.size()));
  }
  const CURLcode result = stopped ? CURLE_ABORTED_BY_CALLBACK : running.Result();
  error = stopped ? Tr("stopped") : text[0] ? text.data() : curl_easy_strerror(result);
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
