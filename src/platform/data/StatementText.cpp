#include "platform/data/StatementText.h"

#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.' ||
         static_cast<unsigned char>(c) >= 0x80;
}

// End of the quoted or bracketed text that starts at `at`.
std::size_t EndOfQuoted(std::string_view text, std::size_t at) {
  const char end = text[at] == '[' ? ']' : text[at];
  const std::size_t close = text.find(end, at + 1);
  return close == std::string_view::npos ? text.size() : close + 1;
}

class Translator {
 public:
  explicit Translator(std::string_view statement) : text_(statement) {}

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

}  // namespace

std::string TranslateStatement(std::string_view statement) {
  return Translator(statement).Run();
}

}  // namespace tarvolinex
