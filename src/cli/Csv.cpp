#include "cli/Csv.h"

#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {
constexpr std::size_t kLongestLine = 1 << 20;
}

CsvReader::CsvReader(std::istream& input, std::string name)
    : input_(input), name_(std::move(name)), buffer_(kLongestLine, '\0') {}

std::string CsvReader::Place() const {
  return name_ + ": line " + std::to_string(line_);
}

bool CsvReader::ReadLine(std::string_view& line) {
  for (;;) {
    const char* start = buffer_.data() + at_;
    const auto* end = static_cast<const char*>(std::memchr(start, '\n', filled_ - at_));
    if (end || (ended_ && at_ < filled_)) {
      const std::size_t length = end ? static_cast<std::size_t>(end - start) : filled_ - at_;
      line = std::string_view(start, length);
      at_ += length + (end ? 1 : 0);
      ++line_;
      if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
      if (line_ == 1 && line.substr(0, 3) == "\xEF\xBB\xBF") line.remove_prefix(3);
      return true;
    }
    if (ended_) return false;
    std::memmove(buffer_.data(), start, filled_ - at_);
    filled_ -= at_;
    at_ = 0;
    if (filled_ == buffer_.size()) {
      ++line_;
      throw RuntimeError(kDeviceError, Place() + " is longer than " + std::to_string(kLongestLine) + " bytes");
    }
    input_.read(buffer_.data() + filled_, static_cast<std::streamsize>(buffer_.size() - filled_));
    filled_ += static_cast<std::size_t>(input_.gcount());
    if (input_.bad()) throw RuntimeError(kDeviceError, name_ + " cannot be read");
    ended_ = input_.gcount() == 0;
  }
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
