#include "server/Pages.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "platform/text/Text.h"
#include "server/PageWords.h"

namespace tarvolinex::server {

namespace {

std::string Escaped(std::string_view text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

// Puts HTML in the place of %1, %2, ...
std::string Fill(std::string_view text, const std::vector<std::string>& values) {
  std::string filled = Escaped(text);
  for (std::size_t i = 0; i < values.size(); ++i) filled = ReplaceAll(filled, "%" + std::to_string(i + 1), values[i]);
  return filled;
}

using Rgb = std::array<double, 3>;

Rgb RgbOf(Colour colour) {
  return {static_cast<double>(colour & 0xFF), static_cast<double>(colour >> 8 & 0xFF),
          static_cast<double>(colour >> 16 & 0xFF)};
}

double Luminance(const Rgb& colour) {
  constexpr Rgb kWeights = {0.2126, 0.7152, 0.0722};
  double sum = 0;
  for (std::size_t i = 0; i < colour.size(); ++i) {
    const double part = colour.at(i) / 255;
    sum += kWeights.at(i) * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double Contrast(const Rgb& a, const Rgb& b) {
  const double x = Luminance(a), y = Luminance(b);
  return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

Rgb Extreme(const Rgb& back) {
  constexpr Rgb kBlack = {0, 0, 0}, kWhite = {255, 255, 255};
  return Contrast(kBlack, back) > Contrast(kWhite, back) ? kBlack : kWhite;
}

Rgb Mix(const Rgb& a, const Rgb& b, double part) {
  Rgb mixed = a;
  for (std::size_t i = 0; i < mixed.size(); ++i) mixed.at(i) += (b.at(i) - a.at(i)) * part;
  return mixed;
}

// The colour, moved towards black or white as far as it takes to be read on the background.
Rgb Readable(const Rgb& colour, const Rgb& back) {
  constexpr double kStep = 0.05, kReadable = 4.6;
  for (double part = 0; part < 1; part += kStep) {
    const Rgb tried = Mix(colour, Extreme(back), part);
    if (Contrast(tried, back) >= kReadable) return tried;
  }
  return Extreme(back);
}

std::string Css(const char* name, const Rgb& colour) {
  char text[64];
  std::snprintf(text, sizeof text, "--%s:rgb(%.0f,%.0f,%.0f);", name, colour[0], colour[1], colour[2]);
  return text;
}

std::string Colours(Colour pageColour, Colour panelColour, Colour caption, Colour border) {
  const Rgb panel = RgbOf(panelColour), accent = RgbOf(border);
  return ":root{" + Css("page", RgbOf(pageColour)) + Css("panel", panel) +
         Css("text", Mix(Extreme(panel), panel, 0.1)) + Css("caption", Readable(RgbOf(caption), panel)) +
         Css("soft", Mix(panel, Extreme(panel), 0.16)) + Css("accent", accent) + Css("on-accent", Extreme(accent)) +
         "}";
}

constexpr std::string_view kStyle =
    "*{box-sizing:border-box}body{margin:0;padding:1.25rem;background:var(--page);color:var(--text);"
    "font:1rem/1.5 system-ui,'Segoe UI',Roboto,'Helvetica Neue',Arial,sans-serif;overflow-wrap:break-word}"
    "main{max-width:34rem;margin:2rem auto;padding:1.5rem;background:var(--panel);border:1px solid var(--soft);"
    "border-top:4px solid var(--accent);border-radius:.75rem}h1{margin:0;font-size:1.6rem;line-height:1.2;"
    "color:var(--caption)}p{margin:.4rem 0 0}img{display:block;max-width:100%;max-height:4.5rem;margin:0 0 1rem}"
    "a{display:block;margin:1.25rem 0 0;padding:.8rem 1rem;text-align:center;font-weight:600;text-decoration:none;"
    "color:var(--caption);border:2px solid var(--accent);border-radius:.5rem}"
    "a.main{background:var(--accent);color:var(--on-accent)}a:focus-visible{outline:3px solid var(--caption);"
    "outline-offset:2px}small{display:block;margin:1.25rem 0 0}";

std::string Page(const Reader& reader, const std::string& title, const std::string& colours, const std::string& body) {
  return "<!DOCTYPE html>\n<html lang=\"" + std::string(kLanguageNames.at(reader.language)) +
         "\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" content=\"width=device-width, "
         "initial-scale=1\">\n<meta name=\"robots\" content=\"noindex\">\n<link rel=\"icon\" "
         "href=\"data:,\">\n<title>" +
         title + "</title>\n<style nonce=\"" + reader.nonce + "\">" + colours + std::string(kStyle) +
         "</style>\n</head>\n<body>\n<main>\n" + body + "</main>\n</body>\n</html>\n";
}

// Of pages that are nobody's in particular.
std::string PlainPage(const Reader& reader, const std::string& title, const std::string& body) {
  constexpr Colour kBack = 0xF5F1ED, kPanel = 0xFFFFFF, kCaption = 0x573A1F, kBorder = 0xA56E3B;
  return Page(reader, title, Colours(kBack, kPanel, kCaption, kBorder), "<h1>" + title + "</h1>\n" + body);
}

std::string Day(Moment moment) {
  const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(moment));
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                static_cast<unsigned>(day.day()));
  return text;
}

// A name as part of an address: it has letters, digits, blanks, ".", "-" and "_" alone.
std::string AsAddress(std::string_view name) {
  return ReplaceAll(name, " ", "%20");
}

}  // namespace

std::size_t LanguageOf(std::string_view acceptLanguage) {
  for (const std::string_view part : Split(acceptLanguage, ',')) {
    const std::string language = FoldCase(Trim(part)).substr(0, 2);
    const auto* found = std::find(kLanguageNames.begin(), kLanguageNames.end(), language);
    if (found != kLanguageNames.end()) return static_cast<std::size_t>(found - kLanguageNames.begin());
  }
  return 0;
}

std::string LinkPage(const Record& record, const Reader& reader) {
  constexpr std::int64_t kKilobyte = 1024;
  const PageWords& words = kPageWords.at(reader.language);
  const std::string title = Escaped(record.calculator), folder = "../c/" + record.token + "/";
  const auto day = [](Moment moment) { return "<time datetime=\"" + Day(moment) + "\">" + Day(moment) + "</time>"; };
  std::string body;
  if (!record.logo.empty()) body += "<img src=\"" + folder + record.logo + "\" alt=\"\">\n";
  body += "<h1>" + title + "</h1>\n<p>" + Escaped(record.organisation) + "</p>\n";
  if (!record.supplier.empty()) body += "<p>" + Fill(words.forSupplier, {Escaped(record.supplier)}) + "</p>\n";
  body += "<a class=\"main\" href=\"" + folder + "calc.html\">" + Escaped(words.open) + "</a>\n<p>" +
          Escaped(words.openHow) + "</p>\n<a href=\"" + folder + "program/" + AsAddress(record.program) + "\">" +
          Escaped(words.install) + "</a>\n<p>" + Escaped(words.installHow) + "</p>\n<small>" +
          Fill(words.facts, {std::to_string((record.bytes + kKilobyte - 1) / kKilobyte), day(record.received),
                             day(record.expires)}) +
          "</small>\n";
  return Page(reader, title, Colours(record.page, record.panel, record.text, record.border), body);
}

std::string NoLinkPage(NoLink why, const Reader& reader) {
  const PageWords& words = kPageWords.at(reader.language);
  const auto page = [&](std::string_view title, std::string_view how) {
    return PlainPage(reader, Escaped(title), "<p>" + Escaped(how) + "</p>\n");
  };
  switch (why) {
    case NoLink::Expired:
      return page(words.expired, words.expiredHow);
    case NoLink::Withdrawn:
      return page(words.withdrawn, words.expiredHow);
    case NoLink::TooMany:
      return page(words.tooMany, words.tooManyHow);
    case NoLink::Unknown:
      break;
  }
  return page(words.unknown, words.unknownHow);
}

bool IsNewer(std::string_view version, std::string_view than) {
  const auto parts = Split(version, '.'), others = Split(than, '.');
  for (std::size_t i = 0; i < std::max(parts.size(), others.size()); ++i) {
    const auto number = [i](const std::vector<std::string_view>& of) {
      long value = 0;
      if (i < of.size()) std::from_chars(of[i].data(), of[i].data() + of[i].size(), value);
      return value;
    };
    if (number(parts) != number(others)) return number(parts) > number(others);
  }
  return false;
}

std::string VersionPage(const Versions& versions, const Reader& reader) {
  const PageWords& words = kPageWords.at(reader.language);
  const std::string used = Escaped(versions.used), newest = Escaped(versions.newest);
  const bool upToDate = !used.empty() && !IsNewer(versions.newest, versions.used);
  std::string text = Fill(words.isNewer, {used, newest});
  if (used.empty()) text = Fill(words.newest, {newest});
  if (upToDate) text = Fill(words.isNewest, {used});
  if (newest.empty()) text = Escaped(words.versionUnknown);
  std::string body = "<p>" + text + "</p>\n";
  if (!newest.empty() && !upToDate && !versions.address.empty()) {
    body += "<a class=\"main\" href=\"" + Escaped(versions.address) + "\">" + Escaped(words.whereNewer) + "</a>\n";
  }
  return PlainPage(reader, Escaped(words.version), body);
}

}  // namespace tarvolinex::server
