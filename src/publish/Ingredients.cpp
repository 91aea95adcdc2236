#include "publish/Ingredients.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

#include "platform/files/Files.h"
#include "platform/text/Encoding.h"
#include "platform/text/Text.h"
#include "publish/PageOptions.h"

namespace tarvolinex {

namespace {

constexpr std::string_view kBands[] = {"1", "2", "3", "4", "5"};

// What people call a field; others go by their own name with blanks before its capitals.
const std::map<std::string_view, std::string_view> kNames = {
    {"AdditionalPremium", "premium offered"},
    {"AdditionalPremiumMsg", "premium's caption"},
    {"AdditionalPremiumYield", "premium yield"},
    {"AdditionalPremiumMin", "premium from"},
    {"ResidualOption", "residuals offered"},
    {"MaintenanceOption", "maintenance offered"},
    {"CompanyName", "name"},
    {"MinTerm", "shortest term"},
    {"MaxTerm", "longest term"},
    {"MinCapitalCost", "lowest capital cost"},
    {"MaxCapitalCost", "highest capital cost"},
    {"IconName", "install icon"},
};

// "RangeEquipFROM1" is the threshold of band 2, "Yield0" the yield of band 1.
std::string BandName(std::string_view field) {
  constexpr std::pair<std::string_view, std::string_view> kPerBand[] = {
      {"RangeEquipFROM", "threshold"}, {"Yield", "yield"}, {"Com", "commission"}};
  for (const auto& [stem, name] : kPerBand) {
    if (field.size() != stem.size() + 1 || !field.starts_with(stem)) continue;
    const auto band = static_cast<std::size_t>(field.back() - '0');
    if (band < std::size(kBands)) return std::string(name) + " of band " + std::string(kBands[band]);
  }
  return {};
}

std::string NameOf(std::string_view field, const std::string& taxWord) {
  if (field == "TaxRate") return taxWord.empty() ? "tax" : taxWord;
  if (const auto known = kNames.find(field); known != kNames.end()) return std::string(known->second);
  if (std::string band = BandName(field); !band.empty()) return band;
  std::string name;
  for (const char c : field) {
    if (c >= 'A' && c <= 'Z' && !name.empty() && name.back() >= 'a' && name.back() <= 'z') name += ' ';
    name += c >= 'A' && c <= 'Z' && !name.empty() && name.back() == ' ' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return name;
}

// Short, because it is read in tables of the database; empty for a file that is not there.
std::string Print(std::string_view bytes) {
  constexpr std::size_t kDigits = 16;
  return Fingerprint(bytes).substr(0, kDigits);
}

std::string FilePrint(const std::string& path) {
  return FileExists(path) ? Print(ReadFile(path)) : std::string();
}

// Two decimals, or all that there are.
std::string RateText(float rate) {
  const std::string digits = FormatSingle(rate);
  const std::size_t point = digits.find('.');
  if (point != std::string::npos && digits.size() - point > 2) return digits;
  return FormatFixed(static_cast<double>(rate), 2);
}

struct ValueWords {
  std::string operator()(const std::int16_t* number) const { return std::to_string(*number); }
  std::string operator()(const std::int32_t* number) const { return std::to_string(*number); }
  std::string operator()(const Colour* colour) const { return ColourToHtml(*colour); }
  std::string operator()(const float* rate) const { return RateText(*rate); }
  std::string operator()(const Currency* amount) const {
    const std::string text = amount->ToText();
    return text.ends_with("00") ? text.substr(0, text.size() - 2) : text;
  }
  std::string operator()(const bool* truth) const { return *truth ? "yes" : "no"; }
  std::string operator()(const FixedText* text) const { return text->Trimmed(); }
  std::string operator()(std::span<char> bytes) const { return "=" + Print({bytes.data(), bytes.size()}); }
};

// Names and values are lines; a value of several would be taken for others.
void Add(std::string& lines, std::string_view name, std::string_view value) {
  const auto plain = [&](std::string_view text) {
    for (const char c : text) lines += c == '\n' || c == '\r' || c == '\t' ? ' ' : c == '\'' ? '`' : c;
  };
  plain(name);
  lines += '\t';
  plain(value);
  lines += '\n';
}

template <typename Record>
void AddFields(Record record, const std::string& taxWord, std::string& lines) {
  for (const auto& field : FieldsOf(record)) {
    std::string value = std::visit(ValueWords{}, field.member(record));
    if (field.name == "TaxRate" && value.ends_with(".00")) value.resize(value.size() - 3);
    Add(lines, NameOf(field.name, taxWord), value);
  }
}

void AddFile(std::string& lines, std::string_view name, const std::string& path) {
  if (const std::string print = FilePrint(path); !print.empty()) Add(lines, name, "=" + print);
}

using Lines = std::map<std::string_view, std::string_view>;

Lines LinesOf(std::string_view text, std::vector<std::string_view>& order) {
  Lines lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    const std::size_t tab = std::min(line.find('\t'), line.size());
    const std::string_view name = line.substr(0, tab);
    lines[name] = line.substr(std::min(tab + 1, line.size()));
    order.push_back(name);
  }
  return lines;
}

std::string OneChange(std::string_view name, const std::string_view* before, const std::string_view* now) {
  const std::string what(name);
  const auto isContent = [](const std::string_view* value) { return value && value->starts_with('='); };
  if (!before) return what + (isContent(now) ? " added" : " now " + std::string(*now));
  if (!now) return what + " removed";
  if (isContent(now)) return what;
  const auto shown = [](std::string_view value) { return value.empty() ? "nothing" : std::string(value); };
  return what + " from " + shown(*before) + " to " + shown(*now);
}

}  // namespace

std::string OrganisationIngredients(const Branding& branding) {
  std::string lines;
  AddFields(branding.prefs, branding.prefs.AliasVat.Trimmed(), lines);
  const Folders& folders = branding.folders;
  const PageOptions options = ReadPageOptions(folders.app);
  Add(lines, "page language", options.language);
  Add(lines, "totals shown", options.totals ? "yes" : "no");
  Add(lines, "days of validity", std::to_string(options.validDays));
  Add(lines, "days of rates", std::to_string(options.ratesDays));
  for (const PageWord& word : PageWords()) Add(lines, "meaning of " + std::string(word.name), options.*word.meaning);
  Add(lines, "customer reference", branding.customerReference);
  AddFile(lines, "calculator page", folders.app + "\\CalcTemplate.html");
  if (const std::string logo = LogoFileName(folders.data); !logo.empty())
    AddFile(lines, "logo", folders.data + "\\logo\\" + logo);
  if (const std::string back = BackgroundFileName(folders.data); !back.empty()) {
    AddFile(lines, "background", folders.data + "\\logo\\" + back);
  }
  if (const std::string icon = InstallIconPath(branding); !icon.empty())
    AddFile(lines, "picture of the install icon", icon);
  return lines;
}

const std::string& FormPrints::Of(int formId) {
  const auto [found, isNew] = prints_.try_emplace(formId);
  if (isNew) found->second = FilePrint(FormPagePath(dataFolder_, formId));
  return found->second;
}

std::string SupplierIngredients(const SupplierCalcSettingsRecord& supplier, const std::vector<FormRow>& forms,
                                FormPrints& prints) {
  std::string lines;
  AddFields(supplier, "", lines);
  for (const FormRow& form : forms) {
    Add(lines, "form " + (form.linkName.empty() ? form.description : form.linkName), "=" + prints.Of(form.id));
  }
  return lines;
}

std::string ChangesBetween(std::string_view before, std::string_view now) {
  if (before == now) return {};
  std::vector<std::string_view> order, old;
  const Lines is = LinesOf(now, order), was = LinesOf(before, old);
  order.insert(order.end(), old.begin(), old.end());
  std::string changes;
  std::set<std::string_view> told;
  for (const std::string_view name : order) {
    if (!told.insert(name).second) continue;
    const auto a = was.find(name), b = is.find(name);
    const std::string_view* from = a == was.end() ? nullptr : &a->second;
    const std::string_view* to = b == is.end() ? nullptr : &b->second;
    if (from && to && *from == *to) continue;
    changes += (changes.empty() ? "" : "; ") + OneChange(name, from, to);
  }
  return changes;
}

}  // namespace tarvolinex
