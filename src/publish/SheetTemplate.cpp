#include "publish/SheetTemplate.h"

#include <algorithm>
#include <array>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kElements[] = {
    "a",       "abbr",    "address", "article",    "aside",  "b",        "big",   "blockquote", "body", "br",
    "caption", "center",  "cite",    "code",       "col",    "colgroup", "dd",    "dfn",        "div",  "dl",
    "dt",      "em",      "figure",  "figcaption", "font",   "footer",   "h1",    "h2",         "h3",   "h4",
    "h5",      "h6",      "head",    "header",     "hr",     "html",     "i",     "img",        "kbd",  "li",
    "link",    "main",    "meta",    "nav",        "nobr",   "ol",       "p",     "pre",        "q",    "s",
    "samp",    "section", "small",   "span",       "strike", "strong",   "style", "sub",        "sup",  "table",
    "tbody",   "td",      "tfoot",   "th",         "thead",  "time",     "title", "tr",         "tt",   "u",
    "ul",      "var",     "wbr"};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsElement(std::string_view name) {
  return std::any_of(std::begin(kElements), std::end(kElements),
                     [&](std::string_view element) { return EqualNoCase(element, name); });
}

std::string_view FirstWord(std::string_view text) {
  return text.substr(0, text.find_first_of(" \t\r\n/"));
}

class Parser {
 public:
  Parser(std::string_view text, const SheetMarkers& markers, std::string_view fileName)
      : text_(text), markers_(markers), fileName_(fileName) {}

  std::vector<SheetPart> Parse() {
    std::vector<SheetPart> parts = PartsUntil({});
    if (at_ < text_.size()) Fail(Tr("%1 closes nothing", {Bracketed(at_)}), at_);
    return parts;
  }

 private:
  // Up to the closing marker of that name, which is taken too; empty: up to the end.
  std::vector<SheetPart> PartsUntil(std::string_view closing) {
    const std::size_t begun = at_;
    std::vector<SheetPart> parts;
    while (at_ < text_.size()) {
      const std::size_t bracket = std::min(text_.find('<', at_), text_.size());
      AddText(parts, text_.substr(at_, bracket - at_));
      at_ = bracket;
      if (at_ == text_.size()) break;
      if (SkipComment()) continue;
      const std::string_view tag = TagHere();
      if (tag == "/SHOW" || tag == "/EACH") {
        if (tag.substr(1) != closing) return parts;
        at_ += tag.size() + 2;
        return parts;
      }
      TakeTag(tag, parts);
    }
    if (!closing.empty()) Fail(Tr("%1 is not closed", {"<" + std::string(closing) + ">"}), begun);
    return parts;
  }

  // What stands in the brackets; empty when it is no tag.
  std::string_view TagHere() const {
    std::size_t first = at_ + 1;
    if (first < text_.size() && text_[first] == '/') ++first;
    if (first >= text_.size() || !IsLetter(text_[first])) return {};
    const std::size_t end = text_.find('>', at_);
    // A marker may stand inside an element: <td bgcolor="<BRAND>">.
    const std::size_t inner = text_.find('<', first);
    if (end == std::string_view::npos) return FirstWord(text_.substr(at_ + 1));
    return inner < end ? FirstWord(text_.substr(at_ + 1, inner - at_ - 1)) : text_.substr(at_ + 1, end - at_ - 1);
  }

  bool SkipComment() {
    constexpr std::string_view kOpen = "<!--", kClose = "-->";
    if (text_.substr(at_, kOpen.size()) != kOpen) return false;
    const std::size_t end = text_.find(kClose, at_);
    at_ = end == std::string_view::npos ? text_.size() : end + kClose.size();
    return true;
  }

  void TakeTag(std::string_view tag, std::vector<SheetPart>& parts) {
    const std::string_view word = FirstWord(tag);
    if (word == "SHOW" || word == "EACH") return TakeSection(tag, word, parts);
    if (!tag.empty() && word.size() == tag.size() && Take(tag, markers_.values)) {
      parts.push_back({SheetPart::Kind::Marker, std::string(tag), false, {}});
      at_ += tag.size() + 2;
      return;
    }
    if (!tag.empty() && !IsElement(tag.front() == '/' ? FirstWord(tag.substr(1)) : word)) Unknown();
    AddText(parts, "<");
    ++at_;
  }

  void TakeSection(std::string_view tag, std::string_view word, std::vector<SheetPart>& parts) {
    constexpr std::string_view kNot = "NOT ";
    const bool show = word == "SHOW";
    std::string_view name = Trim(tag.substr(word.size()));
    const bool negated = show && name.substr(0, kNot.size()) == kNot;
    if (negated) name = Trim(name.substr(kNot.size()));
    if (!Take(name, show ? markers_.shown : markers_.repeated)) Unknown();
    at_ += tag.size() + 2;
    SheetPart section{show ? SheetPart::Kind::Show : SheetPart::Kind::Each, std::string(name), negated, {}};
    if (!show) open_.push_back(name);
    section.parts = PartsUntil(word);
    if (!show) open_.pop_back();
    parts.push_back(std::move(section));
  }

  // Whether the name is among those and may stand here.
  bool Take(std::string_view name, std::span<const SheetMarkers::Name> names) const {
    const auto found = std::find_if(names.begin(), names.end(), [&](const auto& known) { return known.name == name; });
    if (found == names.end()) return false;
    const std::string_view within = found->within;
    if (within.empty() || std::find(open_.begin(), open_.end(), within) != open_.end()) return true;
    Fail(Tr("%1 stands outside %2", {Bracketed(at_), "<EACH " + std::string(within) + ">"}), at_);
  }

  static void AddText(std::vector<SheetPart>& parts, std::string_view text) {
    if (text.empty()) return;
    if (parts.empty() || parts.back().kind != SheetPart::Kind::Words) parts.emplace_back();
    parts.back().text += text;
  }

  std::string Bracketed(std::size_t at) const {
    const std::size_t end = text_.find_first_of(">\r\n", at);
    return Trimmed(text_.substr(at, end == std::string_view::npos ? end : end - at)) + ">";
  }
  static std::string Trimmed(std::string_view text) { return std::string(Trim(text)); }
  [[noreturn]] void Unknown() const { Fail(Tr("the marker %1 is not known", {Bracketed(at_)}), at_); }
  [[noreturn]] void Fail(const std::string& what, std::size_t at) const {
    const auto line = std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    throw RuntimeError(kItemNotFound, Tr("%1, line %2: %3", {fileName_, std::to_string(line), what}));
  }

  const std::string_view text_;
  const SheetMarkers& markers_;
  const std::string_view fileName_;
  std::size_t at_ = 0;
  std::vector<std::string_view> open_;  // the repetitions around
};

}  // namespace

std::vector<SheetPart> ParseSheet(std::string_view text, const SheetMarkers& markers, std::string_view fileName) {
  return Parser(text, markers, fileName).Parse();
}

}  // namespace tarvolinex
