#include "platform/data/SqliteText.h"

#include "platform/data/StatementWords.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

class SqliteTranslator {
 public:
  explicit SqliteTranslator(std::string_view statement) : text_(statement) {}

  std::string Run() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      if (c == '\'' || c == '"' || c == '[' || c == '`') {
        const std::size_t end = EndOfQuoted(text_, at_);
        Copy(end);
        columnPending_ = ordering_ && (c == '[' || c == '"');
      } else if (IsWordCharacter(c)) {
        Word();
      } else {
        if (c == ',' || c == ')' || c == ';') CloseColumn();
        if (c == ')') ordering_ = false;
        Copy(at_ + 1);
      }
    }
    CloseColumn();
    return std::move(out_);
  }

 private:
  void Word() {
    std::size_t end = at_;
    while (end < text_.size() && IsWordCharacter(text_[end])) ++end;
    const std::string_view word = text_.substr(at_, end - at_);
    if (EqualNoCase(word, "YES") || EqualNoCase(word, "TRUE")) {
      out_ += '1';
    } else if (EqualNoCase(word, "NO") || EqualNoCase(word, "FALSE")) {
      out_ += '0';
    } else if (ordering_ && (EqualNoCase(word, "ASC") || EqualNoCase(word, "DESC"))) {
      CloseColumn();
      out_ += word;
    } else {
      if (ordering_ && EqualNoCase(word, "LIMIT")) {
        CloseColumn();
        ordering_ = false;
      }
      columnPending_ = ordering_;
      if (afterOrder_ && EqualNoCase(word, "BY")) ordering_ = true;
      afterOrder_ = EqualNoCase(word, "ORDER");
      out_ += word;
    }
    at_ = end;
  }
  void Copy(std::size_t end) {
    out_ += text_.substr(at_, end - at_);
    at_ = end;
  }
  void CloseColumn() {
    if (!columnPending_) return;
    columnPending_ = false;
    const auto last = out_.find_last_not_of(' ');
    static const std::string order = std::string(" COLLATE ").append(kCaseBlindOrder);
    out_.insert(last + 1, order);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string out_;
  bool afterOrder_ = false, ordering_ = false, columnPending_ = false;
};

const char* SqliteType(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Id:
      return " INTEGER PRIMARY KEY AUTOINCREMENT";
    case ColumnKind::WholeNumber:
      return " LONG";
    case ColumnKind::SmallNumber:
      return " SHORT";
    case ColumnKind::Currency:
      return " CURRENCY";
    case ColumnKind::Single:
      return " SINGLE";
    case ColumnKind::YesNo:
      return " YESNO NOT NULL DEFAULT 0";
    case ColumnKind::OnceText:
      return " TEXT UNIQUE";
    case ColumnKind::Day:
      return " DATE";
    case ColumnKind::Moment:
      return " DATETIME";
    case ColumnKind::Text:
      break;
  }
  return " TEXT";
}

}  // namespace

std::string SqliteText(std::string_view statement) {
  return SqliteTranslator(statement).Run();
}

std::string SqliteTable(const TableDesign& design) {
  std::string columns;
  for (const ColumnDesign& column : design.columns) {
    columns += (columns.empty() ? "" : ", ") + column.name + SqliteType(column.kind);
    if (column.size > 0) columns += "(" + std::to_string(column.size) + ")";
  }
  return "CREATE TABLE IF NOT EXISTS " + design.name + " (" + columns + ")";
}

}  // namespace tarvolinex
