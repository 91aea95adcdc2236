#include "server/CalculatorFiles.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "server/Parsing.h"
#include "server/Refusal.h"

namespace tarvolinex::server {

namespace {

constexpr const char *kPage = "calc.html", *kData = "calcdata.txt", *kGeneral = "general.dat";
constexpr const char* kSupplier = "supplier.dat";
constexpr std::array<std::string_view, 4> kPictureEndings = {".gif", ".png", ".bmp", ".jpg"};
constexpr std::string_view kFill = "<plaintext id=\"fill\" hidden>", kColour = "|ColourBackGround|";

bool IsPictureName(std::string_view name) {
  const std::size_t dot = name.find('.');
  const std::string_view stem = name.substr(0, dot);
  return dot != std::string::npos && (stem == "logo" || stem == "background") &&
         std::find(kPictureEndings.begin(), kPictureEndings.end(), name.substr(dot)) != kPictureEndings.end();
}

// "name!12.html"
bool IsFormName(std::string_view name) {
  constexpr std::string_view kEnding = ".html";
  if (!name.ends_with(kEnding)) return false;
  name.remove_suffix(kEnding.size());
  const std::size_t mark = name.rfind('!');
  const std::string_view number = mark == std::string::npos ? "" : name.substr(mark + 1);
  return mark > 0 && !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
}

std::string_view WithoutFirstLineEnds(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  return text;
}

// Takes what is expected off the beginning of the text, whatever carriage returns either holds; false when it does not
// stand there.
bool Take(std::string_view& text, std::string_view expected) {
  while (!expected.empty()) {
    if (expected.front() == '\r') {
      expected.remove_prefix(1);
    } else if (text.starts_with('\r')) {
      text.remove_prefix(1);
    } else {
      const std::size_t size = std::min(expected.find('\r'), expected.size());
      const std::string_view given = text.substr(0, std::min(size, text.find('\r')));
      if (given.empty() || !expected.starts_with(given)) return false;
      text.remove_prefix(given.size());
      expected.remove_prefix(given.size());
    }
  }
  return true;
}

template <typename Record>
Record RecordOf(const std::string& bytes, const char* name) {
  Record record;
  if (!ReadRecordBytes(bytes, record)) throw Refusal{std::string(name) + " is no record of a calculator."};
  return record;
}

bool IsKnownPage(std::string_view page, const std::string& known) {
  for (const std::string& name : ListFiles(known + "/*.html")) {
    if (IsPageOf(page, ReadFile(known + "/" + name))) return true;
  }
  return false;
}

}  // namespace

bool IsCalculatorFile(std::string_view name) {
  constexpr std::array<std::string_view, 6> kNames = {"calc.html",    "calcdata.txt", "general.dat",
                                                      "supplier.dat", "calc.ico",     "setup.lst"};
  const std::string folded = FoldCase(name);
  return std::find(kNames.begin(), kNames.end(), folded) != kNames.end() || IsPictureName(folded) || IsFormName(folded);
}

bool IsPageOf(std::string_view page, std::string_view pageTemplate) {
  constexpr std::size_t kColourSize = std::string_view("#RRGGBB").size();
  const std::string_view ours = WithoutFirstLineEnds(pageTemplate);
  const std::size_t fill = ours.find(kFill), colour = ours.find(kColour);
  if (fill == std::string::npos || colour > fill) return false;
  std::string_view given = WithoutFirstLineEnds(page);
  if (!Take(given, ours.substr(0, colour)) || given.size() < kColourSize) return false;
  const std::string_view value = given.substr(0, kColourSize);
  given.remove_prefix(kColourSize);
  const std::size_t rest = colour + kColour.size();
  return value.front() == '#' && value.find_first_not_of("0123456789ABCDEFabcdef", 1) == std::string::npos &&
         Take(given, ours.substr(rest, fill + kFill.size() - rest));
}

bool IsCalculatorData(std::string_view text, std::string_view general, std::string_view supplier) {
  constexpr std::string_view kBegin = "window.calcData=";
  while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
  if (!text.starts_with(kBegin) || !text.ends_with(';') || text.find('<') != std::string::npos) return false;
  text.remove_prefix(kBegin.size());
  text.remove_suffix(1);
  const auto data = nlohmann::json::parse(text, nullptr, false);
  if (!data.is_object()) return false;
  const auto holds = [&](const char* member, std::string_view record) {
    const auto found = data.find(member);
    return found != data.end() && found->is_string() && FromBase64(found->get<std::string>()) == record;
  };
  return holds("general", general) && holds("supplier", supplier);
}

bool IsPicture(std::string_view bytes, std::string_view ending) {
  if (ending == ".gif") return bytes.starts_with("GIF8");
  if (ending == ".png") return bytes.starts_with("\x89PNG\r\n\x1a\n");
  if (ending == ".bmp") return bytes.starts_with("BM");
  return bytes.starts_with("\xFF\xD8\xFF");
}

CheckedCalculator CheckCalculatorFiles(std::map<std::string, PageFile> files, const std::string& known) {
  for (const char* name : {kPage, kData, kGeneral, kSupplier}) {
    if (!files.contains(name)) throw Refusal{"The install file holds no " + std::string(name) + "."};
  }
  const std::string &general = files.at(kGeneral).bytes, &supplier = files.at(kSupplier).bytes;
  CheckedCalculator checked;
  checked.general = RecordOf<CalculatorPreferencesRecord>(general, kGeneral);
  checked.supplier = RecordOf<SupplierCalcSettingsRecord>(supplier, kSupplier);
  if (!IsCalculatorData(files.at(kData).bytes, general, supplier)) {
    throw Refusal{"calcdata.txt does not hold what both records hold."};
  }
  if (!IsKnownPage(files.at(kPage).bytes, known)) throw Refusal{"calc.html is no page that this server knows."};
  for (auto& [folded, file] : files) {
    if (IsPictureName(folded)) {
      if (!IsPicture(file.bytes, folded.substr(folded.find('.')))) {
        throw Refusal{file.name + " is not the picture that it says."};
      }
      if (folded.starts_with("logo") && checked.general.ShowHeaderLogo) checked.logo = file.name;
      checked.page.push_back(std::move(file));
    } else if (folded == kPage || folded == kData) {
      checked.page.push_back({folded, std::move(file.bytes)});
    }
  }
  return checked;
}

}  // namespace tarvolinex::server
