#include <zlib.h>

#include <algorithm>
#include <array>

#include "selfextract/Archive.h"
#include "system/Failure.h"

namespace tarvolinex::windows {

namespace {

constexpr std::size_t kPiece = 65536;  // bytes read or unpacked at a time

// Counts and sums what is handed on, and hands on no more than was declared.
class Checked {
 public:
  Checked(const Entry& entry, const Archive::Take& take) : entry_(entry), take_(take) {}
  bool Add(const unsigned char* bytes, std::size_t size) {
    if (size > entry_.size - count_) return false;
    count_ += static_cast<std::uint32_t>(size);
    sum_ = crc32(sum_, bytes, static_cast<unsigned>(size));
    take_({reinterpret_cast<const char*>(bytes), size});
    return true;
  }
  bool Complete() const { return count_ == entry_.size && sum_ == entry_.sum; }

 private:
  const Entry& entry_;
  const Archive::Take& take_;
  std::uint32_t count_ = 0;
  unsigned long sum_ = 0;
};

struct Inflater {
  z_stream stream = {};
  Inflater() {
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw Failure{L"There is not enough memory to unpack."};
  }
  ~Inflater() { inflateEnd(&stream); }
};

// Inflates one piece of packed bytes. Returns zlib's code; Z_DATA_ERROR also when there is more than was declared.
int InflatePiece(z_stream& stream, Checked& checked) {
  std::array<unsigned char, kPiece> out;
  int code = Z_OK;
  do {
    stream.next_out = out.data();
    stream.avail_out = kPiece;
    code = inflate(&stream, Z_NO_FLUSH);
    if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR) return code;
    if (!checked.Add(out.data(), kPiece - stream.avail_out)) return Z_DATA_ERROR;
  } while (code == Z_OK && stream.avail_out == 0);
  return code == Z_BUF_ERROR ? Z_OK : code;
}

}  // namespace

void Archive::Unpack(const Entry& entry, const Take& take) const {
  const Failure damaged{L"\"" + entry.name + L"\" in " + file_.Path() +
                        L" is damaged: its check sum is wrong. Please fetch the file again."};
  std::array<unsigned char, kPiece> in;
  Inflater inflater;
  Checked checked(entry, take);
  int code = Z_OK;
  for (std::uint32_t done = 0; done < entry.packed && code == Z_OK;) {
    const std::size_t size = std::min<std::size_t>(kPiece, entry.packed - done);
    file_.ReadAt(entry.data + done, in.data(), size);
    done += static_cast<std::uint32_t>(size);
    if (entry.method == 0) {
      if (!checked.Add(in.data(), size)) throw damaged;
      continue;
    }
    inflater.stream.next_in = in.data();
    inflater.stream.avail_in = static_cast<unsigned>(size);
    code = InflatePiece(inflater.stream, checked);
  }
  const bool ended = entry.method == 0 || code == Z_STREAM_END;
  if (!ended || !checked.Complete()) throw damaged;
}

}  // namespace tarvolinex::windows
