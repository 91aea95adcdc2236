#include "exchange/TextTable.h"

#include <algorithm>
#include <array>

#include "platform/RuntimeError.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

std::string TextOf(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return DecodeText(bytes.substr(3), "utf-8");
  // There is a spreadsheet that writes its mark before each piece of a long file.
  const auto wide = [&](const char* order) { return ReplaceAll(DecodeText(bytes, order), "\uFEFF", ""); };
  if (bytes.starts_with("\xFF\xFE")) return wide("utf-16le");
  if (bytes.starts_with("\xFE\xFF")) return wide("utf-16be");
  std::string text = DecodeText(bytes, "utf-8");
  return text == bytes ? text : FromWindows1252(bytes);
}

// What stands between the cells of the first row, outside quotes.
char SeparatorOf(std::string_view text) {
  constexpr std::array<char, 3> kSeparators = {',', ';', '\t'};
  std::array<long, 3> counts = {};
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if ((c == '\r' || c == '\n') && std::any_of(counts.begin(), counts.end(), [](long n) { return n > 0; })) break;
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] += c == kSeparators[i] ? 1 : 0;
  }
  return kSeparators[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

class TextTableReader {
 public:
  TextTableReader(std::string_view text, const std::string& name)
      : rest_(text), name_(name), separator_(SeparatorOf(text)), ends_{separator_, '\r', '\n'} {}

  std::vector<TextRow> Read() {
    std::vector<TextRow> rows;
    while (!rest_.empty()) {
      TextRow row = ReadRow();
      const bool empty =
          std::all_of(row.cells.begin(), row.cells.end(), [](const std::string& cell) { return cell.empty(); });
      if (!empty) rows.push_back(std::move(row));
    }
    return rows;
  }

 private:
  TextRow ReadRow() {
    TextRow row;
    row.line = line_;
    row.cells.reserve(columns_);
    for (bool more = true; more;) {
      row.cells.push_back(ReadCell());
      more = !rest_.empty() && rest_.front() == separator_;
      if (more) rest_.remove_prefix(1);
    }
    TakeLineEnd();
    columns_ = row.cells.size();
    return row;
  }

  std::string ReadCell() {
    std::string cell;
    if (!rest_.empty() && rest_.front() == '"') cell = ReadQuoted();
    const std::size_t end = std::min(rest_.find_first_of(std::string_view(ends_.data(), ends_.size())), rest_.size());
    cell += rest_.substr(0, end);
    rest_.remove_prefix(end);
    return cell;
  }

  std::string ReadQuoted() {
    std::string cell;
    const long first = line_;
    for (rest_.remove_prefix(1);;) {
      const std::size_t quote = rest_.find('"');
      if (quote == std::string_view::npos) {
        throw RuntimeError(kDeviceError, name_ + ": line " + std::to_string(first) + ": a quote is not closed");
      }
      const std::string_view part = rest_.substr(0, quote);
      cell += part;
      line_ += std::count(part.begin(), part.end(), '\n');
      rest_.remove_prefix(quote + 1);
      if (!rest_.starts_with('"')) return cell;
      cell += '"';
      rest_.remove_prefix(1);
    }
  }

  void TakeLineEnd() {
    if (rest_.empty()) return;
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
    ++line_;
  }

  std::string_view rest_;
  const std::string& name_;
  char separator_;
  std::array<char, 3> ends_;
  long line_ = 1;
  std::size_t columns_ = 0;  // of the row before
};

// Whether the text begins, after blanks and apostrophes, as a formula does.
bool LooksLikeFormula(std::string_view text) {
  const std::size_t first = text.find_first_not_of("' ");
  return first != std::string_view::npos && std::string_view("=+-@\t\r\n").find(text[first]) != std::string_view::npos;
}

}  // namespace

std::vector<TextRow> ReadTextTable(std::string_view bytes, const std::string& name) {
  if (bytes.starts_with("PK\x03\x04")) {
    throw RuntimeError(kItemNotFound, Tr("%1 is a spreadsheet's own file: open it there and save it as comma-separated "
                                         "values (CSV), then import that",
                                         {name}));
  }
  const std::string text = TextOf(bytes);
  return TextTableReader(text, name).Read();
}

std::string GuardedCell(std::string_view text) {
  return LooksLikeFormula(text) ? "'" + std::string(text) : std::string(text);
}

std::string_view UnguardedCell(std::string_view cell) {
  if (cell.starts_with('\'') && LooksLikeFormula(cell)) cell.remove_prefix(1);
  return cell;
}

}  // namespace tarvolinex
