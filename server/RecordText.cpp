#include <charconv>

#include "platform/text/Text.h"
#include "server/Parsing.h"
#include "server/Store.h"

namespace tarvolinex::server {

namespace {

// A value stands in one line.
std::string Line(const char* key, std::string_view value) {
  std::string line;
  for (const char c : value) line += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  return std::string(key) + "=" + line + "\n";
}

std::string Line(const char* key, std::int64_t value) {
  return Line(key, std::to_string(value));
}

class Values {
 public:
  explicit Values(const std::string& text) : lines_(Split(text, '\n')) {}
  std::string Text(std::string_view key) const { return std::string(Value(key)); }
  std::int64_t Number(std::string_view key) const {
    const std::string_view text = Value(key);
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }
  Colour ColourOf(std::string_view key) const { return static_cast<Colour>(Number(key)); }
  Moment MomentOf(std::string_view key) const { return Moment(std::chrono::seconds(Number(key))); }

 private:
  std::string_view Value(std::string_view key) const {
    for (const std::string_view line : lines_) {
      if (line.starts_with(key) && line.substr(key.size()).starts_with('=')) return line.substr(key.size() + 1);
    }
    return {};
  }

  std::vector<std::string_view> lines_;
};

bool IsToken(const std::string& text) {
  return text.size() == 26 && text.find_first_not_of("abcdefghijklmnopqrstuvwxyz234567") == std::string::npos;
}

}  // namespace

std::string RecordText(const Record& record) {
  return Line("id", record.id) + Line("reference", record.reference) + Line("token", record.token) +
         Line("organisation", record.organisation) + Line("supplier", record.supplier) +
         Line("calculator", record.calculator) + Line("program", record.program) + Line("logo", record.logo) +
         Line("bytes", record.bytes) + Line("room", record.room) +
         Line("received", record.received.time_since_epoch().count()) +
         Line("expires", record.expires.time_since_epoch().count()) + Line("page", record.page) +
         Line("panel", record.panel) + Line("text", record.text) + Line("border", record.border) +
         Line("ended", record.ended);
}

std::optional<Record> ReadRecordText(const std::string& text) {
  const Values values(text);
  Record record;
  record.id = values.Text("id");
  record.reference = values.Text("reference");
  record.token = values.Text("token");
  if (!IsIdentifier(record.id) || !IsToken(record.token)) return std::nullopt;
  record.organisation = values.Text("organisation");
  record.supplier = values.Text("supplier");
  record.calculator = values.Text("calculator");
  record.program = values.Text("program");
  record.logo = values.Text("logo");
  record.bytes = values.Number("bytes");
  record.room = values.Number("room");
  record.received = values.MomentOf("received");
  record.expires = values.MomentOf("expires");
  record.page = values.ColourOf("page");
  record.panel = values.ColourOf("panel");
  record.text = values.ColourOf("text");
  record.border = values.ColourOf("border");
  record.ended = values.Text("ended");
  return record;
}

}  // namespace tarvolinex::server
