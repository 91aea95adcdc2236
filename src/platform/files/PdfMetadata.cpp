#include "platform/files/PdfMetadata.h"

#include <QString>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>
#include <vector>

#include "platform/RuntimeError.h"

namespace tarvolinex {

namespace {

// The text as a string object: UTF-16 with its mark, in hexadecimal digits.
std::string TextObject(const std::string& text) {
  std::string object = "<FEFF";
  for (const QChar unit : QString::fromStdString(text)) {
    char digits[5];
    std::snprintf(digits, sizeof digits, "%04X", unit.unicode());
    object += digits;
  }
  return object + ">";
}

// A file with a table of where its objects stand. Pieces of text are put in or exchanged, and the table follows.
class ObjectFile {
 public:
  explicit ObjectFile(std::string bytes) : bytes_(std::move(bytes)) {
    table_ = NumberAfter("startxref", bytes_.rfind("startxref"));
    constexpr std::string_view kHead = "xref\n0 ";
    if (Find(kHead, table_) != table_) Fail(kHead);
    count_ = NumberAfter(kHead, table_);
    first_ = Find("\n", table_ + kHead.size()) + 1;
  }
  std::size_t Table() const { return table_; }

  // Where `text` stands at or behind `from`.
  std::size_t Find(std::string_view text, std::size_t from) const {
    const std::size_t found = bytes_.find(text, from);
    if (found == std::string::npos) Fail(text);
    return found;
  }
  // The whole number behind the first `name` from there on.
  std::size_t NumberAfter(std::string_view name, std::size_t from) const {
    const std::size_t at = bytes_.find_first_of("0123456789", Find(name, from) + name.size());
    std::size_t number = 0;
    if (at == std::string::npos ||
        std::from_chars(bytes_.data() + at, bytes_.data() + bytes_.size(), number).ec != std::errc()) {
      Fail(name);
    }
    return number;
  }
  // Where the object of that number begins.
  std::size_t Object(std::size_t number) const {
    std::size_t offset = 0;
    const std::size_t entry = Entry(number);
    if (number >= count_ || entry + kEntry > bytes_.size()) Fail("obj");
    std::from_chars(bytes_.data() + entry, bytes_.data() + entry + kDigits, offset);
    return offset;
  }
  void Exchange(std::size_t at, std::size_t length, std::string text) {
    changes_.push_back({at, length, std::move(text)});
  }

  std::string Changed() {
    for (std::size_t number = 1; number < count_; ++number) {
      char digits[kDigits + 1];
      std::snprintf(digits, sizeof digits, "%010zu", Moved(Object(number)));
      bytes_.replace(Entry(number), kDigits, digits);
    }
    const std::size_t end = bytes_.rfind("startxref");
    bytes_.replace(end, std::string::npos, "startxref\n" + std::to_string(Moved(table_)) + "\n%%EOF\n");
    std::sort(changes_.begin(), changes_.end(), [](const Change& a, const Change& b) { return a.at > b.at; });
    for (const Change& change : changes_) bytes_.replace(change.at, change.length, change.text);
    return std::move(bytes_);
  }

 private:
  static constexpr std::size_t kEntry = 20, kDigits = 10;  // of an entry of the table
  struct Change {
    std::size_t at, length;
    std::string text;
  };
  std::size_t Entry(std::size_t number) const { return first_ + number * kEntry; }
  std::size_t Moved(std::size_t offset) const {
    std::size_t moved = offset;
    for (const Change& change : changes_) {
      if (change.at < offset) moved += change.text.size() - change.length;
    }
    return moved;
  }
  [[noreturn]] static void Fail(std::string_view what) {
    throw RuntimeError(kDeviceError, "The PDF file that was made has no \"" + std::string(what) + "\"");
  }

  std::string bytes_;
  std::size_t table_ = 0, first_ = 0, count_ = 0;
  std::vector<Change> changes_;
};

std::string Escaped(const std::string& text) {
  return QString::fromStdString(text).toHtmlEscaped().toStdString();
}

// The same in the metadata, whose length stands before them.
void AddToMetadata(ObjectFile& file, std::size_t object, const std::string& author, const std::string& language) {
  std::string added;
  if (!author.empty()) added += "<dc:creator><rdf:Seq><rdf:li>" + Escaped(author) + "</rdf:li></rdf:Seq></dc:creator>";
  if (!language.empty()) {
    added += "<dc:language><rdf:Bag><rdf:li>" + Escaped(language) + "</rdf:li></rdf:Bag></dc:language>";
  }
  constexpr std::string_view kLength = "/Length ";
  const std::size_t length = file.NumberAfter(kLength, object);
  file.Exchange(file.Find(kLength, object) + kLength.size(), std::to_string(length).size(),
                std::to_string(length + added.size()));
  constexpr std::string_view kTitle = "</dc:title>";
  file.Exchange(file.Find(kTitle, object) + kTitle.size(), 0, added);
}

}  // namespace

std::string WithAuthorAndLanguage(std::string pdf, const std::string& author, const std::string& language) {
  ObjectFile file(std::move(pdf));
  constexpr std::string_view kOpen = "<<";
  const auto into = [&](std::size_t object, const std::string& text) {
    file.Exchange(file.Find(kOpen, object) + kOpen.size(), 0, text);
  };
  const std::size_t catalog = file.Object(file.NumberAfter("/Root", file.Table()));
  into(catalog, (language.empty() ? "" : "\n/Lang " + TextObject(language)) +
                    "\n/ViewerPreferences << /DisplayDocTitle true >>");
  if (!author.empty()) into(file.Object(file.NumberAfter("/Info", file.Table())), "\n/Author " + TextObject(author));
  AddToMetadata(file, file.Object(file.NumberAfter("/Metadata", catalog)), author, language);
  return file.Changed();
}

}  // namespace tarvolinex
