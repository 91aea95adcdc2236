#include "platform/files/Deflated.h"

#include <zlib.h>

#include <map>
#include <mutex>

#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

struct KeptEntry {
  std::string content;
  int level = 0;
  std::shared_ptr<const Deflated> deflated;
};

struct Kept {
  std::mutex mutex;
  int wanted = 0;  // by so many
  std::map<std::string, KeptEntry> entries;
};

Kept& TheKept() {
  static Kept kept;
  return kept;
}

std::shared_ptr<const Deflated> Deflate(const std::string& content, int level) {
  auto deflated = std::make_shared<Deflated>();
  z_stream stream = {};
  if (deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw RuntimeError(kDeviceError, Tr("There is no memory for packing"));
  }
  std::string input = content;  // the library takes no constant one
  deflated->bytes.resize(deflateBound(&stream, static_cast<uLong>(input.size())));
  stream.next_in = reinterpret_cast<Bytef*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = reinterpret_cast<Bytef*>(deflated->bytes.data());
  stream.avail_out = static_cast<uInt>(deflated->bytes.size());
  deflate(&stream, Z_FINISH);
  deflated->bytes.resize(stream.total_out);
  deflated->size = input.size();
  deflated->check = static_cast<std::uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
  deflateEnd(&stream);
  return deflated;
}

}  // namespace

std::shared_ptr<const Deflated> DeflatedEntry(const std::string& name, const std::string& content, int level) {
  Kept& kept = TheKept();
  {
    const std::lock_guard lock(kept.mutex);
    const auto found = kept.entries.find(name);
    if (found != kept.entries.end() && found->second.level == level && found->second.content == content) {
      return found->second.deflated;
    }
  }
  auto deflated = Deflate(content, level);
  const std::lock_guard lock(kept.mutex);
  if (kept.wanted > 0) kept.entries[name] = {content, level, deflated};
  return deflated;
}

DeflateOnce::DeflateOnce() {
  const std::lock_guard lock(TheKept().mutex);
  ++TheKept().wanted;
}

DeflateOnce::~DeflateOnce() {
  const std::lock_guard lock(TheKept().mutex);
  if (--TheKept().wanted == 0) TheKept().entries.clear();
}

}  // namespace tarvolinex
