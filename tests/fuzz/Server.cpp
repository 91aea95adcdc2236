// What the web server's program is sent: the request with a file, the words of an address, a calculator's files.
#include <algorithm>
#include <filesystem>
#include <map>

#include "fuzz/Targets.h"
#include "platform/text/Text.h"
#include "server/CalculatorFiles.h"
#include "server/Pages.h"
#include "server/Parsing.h"
#include "server/Refusal.h"
#include "server/Store.h"

namespace tarvolinex::fuzz {

namespace {

using namespace server;

// The bytes up to the first of these, which are taken off with it.
std::string_view Cut(std::string_view& bytes, char end) {
  const std::size_t at = std::min(bytes.find(end), bytes.size());
  const std::string_view part = bytes.substr(0, at);
  bytes.remove_prefix(std::min(at + 1, bytes.size()));
  return part;
}

// The kind of the content in the first line, then the body.
void ReadUpload(std::string_view bytes) {
  const std::string_view kind = Cut(bytes, '\n');
  try {
    const UploadedFile file = ReadUploadBody(kind, bytes);
    const auto inside = [&](std::string_view part) {
      return part.data() >= bytes.data() && part.data() + part.size() <= bytes.data() + bytes.size();
    };
    Expect(inside(file.name) && inside(file.bytes), "the file is a part of the body");
    const auto id = IdentifierOf(file.name);
    Expect(!id || (IsIdentifier(*id) && !ReferencesIn(*id).empty()), "an identifier has digits alone");
  } catch (const Refusal&) {
  }
}

void ReadAddress(std::string_view bytes) {
  for (const auto& [name, value] : ReadQuery(bytes)) {
    const Reader reader = {LanguageOf(value), "n"};
    const std::string page = VersionPage({value, name, value}, reader);
    const std::string plain = VersionPage({"1", "2", "x"}, {reader.language, "n"});
    const auto tags = [](const std::string& text) { return std::count(text.begin(), text.end(), '<'); };
    Expect(tags(page) <= tags(plain), "no value adds an element to a page");
    IsOf(value, name, std::chrono::system_clock::now());
    ReadAuthorization("Basic " + value);
    ReadReference(value);
  }
  const auto record = ReadRecordText(std::string(bytes));
  if (!record) return;
  Expect(RecordText(*ReadRecordText(RecordText(*record))) == RecordText(*record), "a record is read as it was written");
}

// Files one after the other: name, line feed, length, line feed, bytes.
void ReadCalculator(std::string_view bytes) {
  static const std::string known = Scratch() + "/known";
  std::filesystem::create_directories(known);
  const std::string page = "<meta content=\"|ColourBackGround|\"><plaintext id=\"fill\" hidden>\r\n|CLASSID|\r\n";
  if (!std::filesystem::exists(known + "/t.html")) std::filesystem::rename(Put("t.html", page), known + "/t.html");
  std::map<std::string, PageFile> files;
  while (!bytes.empty()) {
    const std::string name(Cut(bytes, '\n'));
    const double number = LeadingNumber(Cut(bytes, '\n'));
    const std::size_t length = number > 0 && number < 1e6 ? static_cast<std::size_t>(number) : 0;
    const std::string data(bytes.substr(0, length));
    bytes.remove_prefix(data.size());
    if (IsCalculatorFile(name)) files[FoldCase(name)] = {name, data};
  }
  try {
    for (const PageFile& file : CheckCalculatorFiles(files, known).page) {
      Expect(file.name.find('/') == std::string::npos && file.name.find("..") == std::string::npos, "a plain name");
      Expect(file.name != "calcdata.txt" || file.bytes.find('<') == std::string::npos, "data end no script");
    }
  } catch (const Refusal&) {
  }
}

}  // namespace

std::vector<Target> ServerTargets() {
  return {{"upload", ReadUpload}, {"address", ReadAddress}, {"calculator", ReadCalculator}};
}

}  // namespace tarvolinex::fuzz
