#include "exchange/Csv.h"

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kLongestLine = 1 << 20;
constexpr std::size_t kPiece = 1 << 15;

std::string PlaceOf(const std::string& name, long line) {
  return name + ": line " + std::to_string(line);
}

// The first line of the text, which loses it, without its end; the last one may have none.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace

CsvSource::CsvSource(std::istream& input, std::string name) : input_(input), name_(std::move(name)) {}

bool CsvSource::Next(CsvPiece& piece) {
  std::string& text = piece.text;
  text = std::move(rest_);
  rest_.clear();
  bool ended = false;
  for (std::size_t lastEnd = std::string::npos; !ended && lastEnd == std::string::npos;) {
    const std::size_t had = text.size();
    if (had > kLongestLine) {
      throw RuntimeError(kDeviceError,
                         PlaceOf(name_, lines_ + 1) + " is longer than " + std::to_string(kLongestLine) + " bytes");
    }
    text.resize(had + kPiece);
    input_.read(text.data() + had, kPiece);
    text.resize(had + static_cast<std::size_t>(input_.gcount()));
    if (input_.bad()) throw RuntimeError(kDeviceError, name_ + " cannot be read");
    ended = text.size() == had;
    lastEnd = text.rfind('\n');
    if (ended || lastEnd == std::string::npos) continue;
    rest_ = text.substr(lastEnd + 1);
    text.resize(lastEnd + 1);
  }
  constexpr std::string_view kMark = "\xEF\xBB\xBF";  // of UTF-8
  if (lines_ == 0 && text.starts_with(kMark)) text.erase(0, kMark.size());
  piece.linesBefore = lines_;
  piece.rowsBefore = rows_;
  for (std::string_view left = text; !left.empty(); ++lines_) rows_ += TakeLine(left).empty() ? 0 : 1;
  return !text.empty();
}

CsvReader::CsvReader(std::string_view text, std::string name, long linesBefore)
    : text_(text), name_(std::move(name)), line_(linesBefore) {}

std::string CsvReader::Place() const {
  return PlaceOf(name_, line_);
}

bool CsvReader::ReadLine(std::string_view& line) {
  if (text_.empty()) return false;
  line = TakeLine(text_);
  ++line_;
  return true;
}

bool CsvReader::Next(std::vector<std::string_view>& cells) {
  std::string_view line;
  do {
    if (!ReadLine(line)) return false;
  } while (line.empty());
  cells.clear();
  if (line.find('"') != std::string_view::npos) {
    SplitQuoted(line, cells);
    return true;
  }
  std::size_t start = 0;
  for (std::size_t comma; (comma = line.find(',', start)) != std::string_view::npos; start = comma + 1) {
    cells.push_back(line.substr(start, comma - start));
  }
  cells.push_back(line.substr(start));
  return true;
}

void CsvReader::SplitQuoted(std::string_view line, std::vector<std::string_view>& cells) {
  // Unquoting only shortens a cell, so views into a buffer of the line's length stay valid.
  unquoted_.clear();
  unquoted_.reserve(line.size());
  bool quoted = false;
  std::size_t start = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"') {
      if (quoted && i + 1 < line.size() && line[i + 1] == '"') {
        unquoted_ += line[i++];
      } else {
        quoted = !quoted;
      }
    } else if (c == ',' && !quoted) {
      cells.emplace_back(unquoted_.data() + start, unquoted_.size() - start);
      start = unquoted_.size();
    } else {
      unquoted_ += c;
    }
  }
  if (quoted) throw RuntimeError(kDeviceError, Place() + ": a quote is not closed");
  cells.emplace_back(unquoted_.data() + start, unquoted_.size() - start);
}

std::string CsvCell(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  return "\"" + ReplaceAll(text, "\"", "\"\"") + "\"";
}

}  // namespace tarvolinex
