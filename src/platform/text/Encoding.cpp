#include "platform/text/Encoding.h"

#include <iconv.h>

#include <QByteArray>
#include <QCryptographicHash>
#include <cerrno>

#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

bool IsWindows1252(std::string_view charset) {
  for (const char* name : {"windows-1252", "iso-8859-1", "latin1", "us-ascii", "ascii", ""}) {
    if (EqualNoCase(charset, name)) return true;
  }
  return false;
}

// One conversion of the C library.
class Converter {
 public:
  Converter(const std::string& to, const std::string& from) : handle_(iconv_open(to.c_str(), from.c_str())) {}
  ~Converter() {
    if (Known()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): this is how the library says that it has no such conversion.
  bool Known() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Converts from the start of `in` and moves it past what was converted; false when it stopped at a sequence that
  // cannot be.
  bool Run(std::string_view& in, std::string& out) {
    char buffer[4096];
    while (!in.empty()) {
      char* from = const_cast<char*>(in.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast): never written to
      std::size_t left = in.size(), room = sizeof buffer;
      char* to = buffer;
      const std::size_t result = iconv(handle_, &from, &left, &to, &room);
      const bool full = result == static_cast<std::size_t>(-1) && errno == E2BIG;
      out.append(buffer, sizeof buffer - room);
      in.remove_prefix(in.size() - left);
      if (result == static_cast<std::size_t>(-1) && !full) return false;
    }
    return true;
  }

  // Puts back the first state of a set in which bytes mean different things by turns.
  void Finish(std::string& out) {
    char buffer[64];
    std::size_t room = sizeof buffer;
    char* to = buffer;
    iconv(handle_, nullptr, nullptr, &to, &room);
    out.append(buffer, sizeof buffer - room);
  }

 private:
  iconv_t handle_;
};

// The code point at the start of valid or broken UTF-8, which is taken off.
std::uint32_t TakeCodePoint(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 1;
  std::uint32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length && i < text.size(); ++i) {
    code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  }
  text.remove_prefix(std::min(length, text.size()));
  return code;
}

}  // namespace

std::string EncodeForPage(std::string_view utf8, std::string_view charset) {
  if (EqualNoCase(charset, "utf-8")) return std::string(utf8);
  Converter converter(IsWindows1252(charset) ? "windows-1252" : std::string(charset), "utf-8");
  if (!converter.Known()) return EncodeForPage(utf8, "windows-1252");
  std::string out;
  while (!converter.Run(utf8, out) && !utf8.empty()) {
    converter.Finish(out);
    out += "&#" + std::to_string(TakeCodePoint(utf8)) + ";";
  }
  converter.Finish(out);
  return out;
}

std::string DecodeText(std::string_view bytes, std::string_view charset) {
  if (IsWindows1252(charset)) return FromWindows1252(bytes);
  Converter converter("utf-8", std::string(charset));
  if (!converter.Known()) return FromWindows1252(bytes);
  std::string out;
  while (!converter.Run(bytes, out) && !bytes.empty()) {
    out += "\uFFFD";
    bytes.remove_prefix(1);
  }
  return out;
}

std::string Readable(std::string_view bytes, std::size_t most) {
  const std::string text = DecodeText(bytes.substr(0, most), "utf-8");
  std::string readable;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view before = rest;
    const std::uint32_t code = TakeCodePoint(rest);
    const bool control = code < ' ' || (code >= 0x7F && code < 0xA0);
    const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    if (code == '\r' && !rest.starts_with('\n')) readable += '\n';
    if (code == '\n' || code == '\t' || !(control || turns)) readable += before.substr(0, before.size() - rest.size());
  }
  return bytes.size() > most ? readable + "..." : readable;
}

std::string Fingerprint(std::string_view bytes) {
  const auto view = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return QCryptographicHash::hash(view, QCryptographicHash::Sha256).toHex().toStdString();
}

std::string Base64(std::string_view bytes) {
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

std::string FromBase64(std::string_view text) {
  return QByteArray::fromBase64(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())))
      .toStdString();
}

}  // namespace tarvolinex
