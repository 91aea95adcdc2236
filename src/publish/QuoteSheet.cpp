#include "publish/QuoteSheet.h"

#include <algorithm>
#include <cmath>

#include "core/Aliases.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/PageText.h"
#include "publish/SheetChart.h"
#include "publish/SheetTemplate.h"
#include "publish/SheetValues.h"
#include "publish/Template.h"

namespace tarvolinex {

namespace {

// What an <img> of the sheet may name.
constexpr const char *kLogoPicture = "logo", *kChartPicture = "chart";

// A page cut where its foot begins and ends, and what its head says of it.
struct Sheet {
  std::string body, footer;
};

// What stands between two tags, whatever their case; empty when there is none.
std::string Between(std::string_view text, std::string_view open, std::string_view close) {
  const std::string folded = FoldCase(text);
  const std::size_t begin = folded.find(open);
  const std::size_t first = begin == std::string::npos ? begin : folded.find('>', begin);
  const std::size_t end = first == std::string::npos ? first : folded.find(close, first);
  return end == std::string::npos ? std::string() : std::string(text.substr(first + 1, end - first - 1));
}

// The value of an attribute of the first element that begins so.
std::string Attribute(std::string_view text, std::string_view element, std::string_view name) {
  const std::string folded = FoldCase(text);
  const std::size_t begin = folded.find(element);
  if (begin == std::string::npos) return {};
  const std::size_t end = folded.find('>', begin), at = folded.find(std::string(name) + "=\"", begin);
  if (at == std::string::npos || at > end) return {};
  const std::size_t first = at + name.size() + 2;
  return std::string(text.substr(first, text.find('"', first) - first));
}

std::string PlainText(const std::string& html) {
  constexpr std::pair<const char*, const char*> kEntities[] = {
      {"<br>", " "}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}};
  std::string text(Trim(html));
  for (const auto& [entity, character] : kEntities) text = ReplaceAll(text, entity, character);
  return text;
}

Sheet CutSheet(std::string html) {
  Sheet sheet;
  const std::string folded = FoldCase(html);
  constexpr std::string_view kOpen = "<footer", kClose = "</footer>";
  const std::size_t begin = folded.find(kOpen), end = folded.find(kClose);
  if (begin != std::string::npos && end != std::string::npos && begin < end) {
    // The footer is dressed as the page is.
    sheet.footer =
        "<head>" + Between(html, "<head", "</head>") + "</head><body>" + Between(html, kOpen, kClose) + "</body>";
    html.erase(begin, end + kClose.size() - begin);
  }
  sheet.body = std::move(html);
  return sheet;
}

// How many variants stand side by side so that the widest amount has room.
std::size_t VariantsAcross(const SheetContents& contents, const std::vector<SheetVariant>& all) {
  constexpr double kRoom = 130, kLetter = 2.1, kPadding = 4;  // millimetres
  std::size_t letters = 0;
  for (const SheetVariant& variant : all) {
    for (const Currency amount : {variant.schedule.totals.amountIncTax, variant.quote.CapitalCost}) {
      letters = std::max(letters, SheetAmount(contents.prefs, amount).size());
    }
  }
  const double column = static_cast<double>(letters) * kLetter + kPadding;
  const auto most = std::max<std::size_t>(1, static_cast<std::size_t>(kRoom / column));
  const std::size_t tables = (all.size() + most - 1) / most;
  return (all.size() + tables - 1) / tables;
}

class Filler {
 public:
  Filler(const SheetContents& contents, const std::vector<SheetVariant>& all)
      : contents_(contents), all_(all), across_(VariantsAcross(contents, all)) {}

  std::string Fill(const std::vector<SheetPart>& parts) {
    SheetPlace place{contents_, all_, {}};
    for (const SheetVariant& variant : all_) place.group.push_back(&variant);
    FillParts(parts, place);
    return std::move(out_);
  }

 private:
  void FillParts(const std::vector<SheetPart>& parts, const SheetPlace& place) {
    for (const SheetPart& part : parts) {
      switch (part.kind) {
        case SheetPart::Kind::Words:
          out_ += ReplaceAll(part.text, "£", Symbol());
          break;
        case SheetPart::Kind::Marker:
          out_ += SheetValue(part.text, place);
          break;
        case SheetPart::Kind::Show:
          if (SheetShows(part.text, place) != part.negated) FillParts(part.parts, place);
          break;
        case SheetPart::Kind::Each:
          FillEach(part, place);
          break;
      }
    }
  }

  void FillEach(const SheetPart& part, const SheetPlace& place) {
    if (part.text == "LINE") {
      for (const ScheduleLine& line : place.group.front()->schedule.lines) {
        SheetPlace inner = place;
        inner.line = &line;
        FillParts(part.parts, inner);
      }
      return;
    }
    const std::size_t at_once = part.text == "TABLE" ? across_ : 1;
    for (std::size_t first = 0; first < place.group.size(); first += at_once) {
      SheetPlace inner = place;
      const auto begin = place.group.begin() + static_cast<std::ptrdiff_t>(first);
      inner.group.assign(begin, begin + static_cast<std::ptrdiff_t>(std::min(at_once, place.group.size() - first)));
      FillParts(part.parts, inner);
    }
  }

  std::string Symbol() const { return AsHtml(ReplaceAliases("£", {contents_.prefs, contents_.supplier})); }

  const SheetContents& contents_;
  const std::vector<SheetVariant>& all_;
  const std::size_t across_;
  std::string out_;
};

std::vector<SheetVariant> VariantsOf(const SheetContents& contents) {
  std::vector<SheetVariant> all;
  for (const QuoteRecord& quote : contents.variants) {
    all.push_back({static_cast<int>(all.size()) + 1, quote, ScheduleOf(quote, contents.start)});
  }
  return all;
}

Drawing ChartOf(const SheetContents& contents, const std::vector<SheetVariant>& all) {
  std::vector<ChartLine> lines;
  for (const SheetVariant& variant : all) {
    lines.push_back({std::to_string(variant.number), variant.schedule, variant.quote.Quarterly ? 3 : 1});
  }
  return ChartOfPayments(lines, BrandColour(contents.prefs), [&](double amount) {
    const double whole = std::floor(amount);
    return SheetAmount(contents.prefs, Currency::FromDouble(amount).value_or(Currency()), whole == amount ? 0 : 2);
  });
}

std::string SheetText(const Folders& folders) {
  // A line end stands before the first line.
  const std::string text = ReadPageText(folders.app + "\\" + kSheetFile);
  return text.substr(std::min(text.size(), std::string_view("\r\n").size()));
}

std::string FilledPage(std::string_view text, std::string_view fileName, const std::vector<SheetVariant>& all,
                       const SheetContents& contents) {
  return Filler(contents, all).Fill(ParseSheet(text, KnownSheetMarkers(), fileName));
}

// Of the light that white gives off; the weights are those of the usual measure of contrast.
double Luminance(std::uint32_t colour) {
  constexpr double kWeights[] = {0.2126, 0.7152, 0.0722};
  double light = 0;
  for (int i = 0; i < 3; ++i) {
    const double part = (colour >> (16 - 8 * i) & 0xFF) / 255.0;
    light += kWeights[i] * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return light;
}

}  // namespace

std::uint32_t BrandColour(const CalculatorPreferencesRecord& prefs) {
  constexpr double kReadable = 4.5;
  for (const Colour colour : {prefs.BorderColour, prefs.OrgCaptionColour, prefs.CaptionColour, prefs.CalcBackColour}) {
    const std::uint32_t brand = (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
    if (brand != 0 && 1.05 / (Luminance(brand) + 0.05) >= kReadable) return brand;
  }
  constexpr std::uint32_t kDarkBlue = 0x1F3A5F;
  return kDarkBlue;
}

RichDocument FillSheet(std::string_view text, std::string_view fileName, const SheetContents& contents) {
  const std::vector<SheetVariant> all = VariantsOf(contents);
  const std::string html = FilledPage(text, fileName, all, contents);
  RichDocument document;
  document.title = PlainText(Between(html, "<title", "</title>"));
  document.author = PlainText(Attribute(html, "<meta name=\"author\"", "content"));
  document.language = Attribute(html, "<html", "lang");
  Sheet sheet = CutSheet(html);
  document.html = std::move(sheet.body);
  if (!sheet.footer.empty()) {
    document.footer = [footer = sheet.footer](int page, int pages) {
      return ReplaceAll(ReplaceAll(footer, kPageMark, std::to_string(page)), kPagesMark, std::to_string(pages));
    };
  }
  if (!contents.logo.empty()) document.pictures[kLogoPicture] = LoadPicture(contents.logo);
  document.drawings[kChartPicture] = ChartOf(contents, all);
  return document;
}

RichDocument FillSheet(const Folders& folders, const SheetContents& contents) {
  return FillSheet(SheetText(folders), kSheetFile, contents);
}

std::string SheetMessage(const Folders& folders, const SheetContents& contents) {
  return PlainText(Attribute(FilledPage(SheetText(folders), kSheetFile, VariantsOf(contents), contents),
                             "<meta name=\"description\"", "content"));
}

SheetContents SheetOf(const Folders& folders, const CalculatorPreferencesRecord& prefs,
                      const SupplierCalcSettingsRecord& supplier) {
  SheetContents contents;
  contents.prefs = prefs;
  contents.supplier = supplier;
  const std::string logo = LogoFileName(folders.data);
  if (!logo.empty()) contents.logo = folders.data + "\\logo\\" + logo;
  return contents;
}

SheetContents SheetOf(const Folders& folders, const KeptQuote& quote) {
  SheetContents contents = SheetOf(folders, quote.origin.preferences, quote.origin.supplier);
  contents.supplier.CompanyName = quote.origin.companyName;
  contents.customer = quote.details.customer;
  contents.equipment = quote.details.equipment;
  contents.reference = quote.details.reference.empty() ? std::to_string(quote.number) : quote.details.reference;
  contents.date = quote.date;
  contents.start = quote.details.start.value_or(quote.date);
  contents.validUntil = quote.details.validUntil;
  contents.variants = {quote.figures.priced};
  return contents;
}

}  // namespace tarvolinex
