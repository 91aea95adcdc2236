#include "publish/SheetValues.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "core/Aliases.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr const char* kNothing = "\xE2\x80\x93";  // a dash

const SheetVariant& First(const SheetPlace& place) {
  return *place.group.front();
}

std::string Amount(const SheetPlace& place, Currency amount) {
  return amount.Hundredths() == 0 ? kNothing : AsHtml(SheetAmount(place.contents.prefs, amount));
}

std::string Lines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) {
    if (!line.empty()) text += (text.empty() ? "" : "<br>") + AsHtml(line);
  }
  return text;
}

std::string Percent(float rate) {
  return FormatFixed(std::strtod(FormatSingle(rate).c_str(), nullptr), 2) + "%";
}

// As short as it reads back: a tax of 20 or of 17.5.
std::string ShortPercent(float rate) {
  return FormatSingle(rate) + "%";
}

std::string Alias(std::string_view marker, const SheetPlace& place) {
  const std::string bracketed = "<" + std::string(marker) + ">";
  return AsHtml(ReplaceAliases(bracketed, {place.contents.prefs, place.contents.supplier}));
}

std::string DayOf(CalendarDay day) {
  return day.ok() ? LongDay(day) : kNothing;
}

template <auto Field>
std::string Organisation(const SheetPlace& place) {
  return AsHtml((place.contents.prefs.*Field).Trimmed());
}
template <auto Field>
std::string Supplier(const SheetPlace& place) {
  return AsHtml((place.contents.supplier.*Field).Trimmed());
}
template <auto Field>
std::string Given(const SheetPlace& place) {
  return AsHtml(place.contents.*Field);
}
template <auto Field>
std::string Quoted(const SheetPlace& place) {
  return Amount(place, First(place).quote.*Field);
}
template <auto Field>
std::string Total(const SheetPlace& place) {
  return Amount(place, First(place).schedule.totals.*Field);
}
template <auto Field>
std::string Line(const SheetPlace& place) {
  return Amount(place, place.line->*Field);
}
// What only the organisation sees is empty on every other sheet, wherever its marker stands.
template <auto Text>
std::string Internal(const SheetPlace& place) {
  return place.contents.internal ? Text(place) : std::string();
}

using Prefs = CalculatorPreferencesRecord;
using Settings = SupplierCalcSettingsRecord;

int Payments(const SheetPlace& place) {
  const QuoteRecord& quote = First(place).quote;
  return quote.NumberOfPayments - quote.AdvancedPayments;
}

struct MarkerValue {
  SheetMarkers::Name name;
  std::string (*text)(const SheetPlace&);
};

const MarkerValue kValues[] = {
    {{"BRAND"}, [](const SheetPlace& place) { return ColourCode(BrandColour(place.contents.prefs)); }},
    {{"TINT"}, [](const SheetPlace& place) { return ColourCode(TintOf(BrandColour(place.contents.prefs))); }},
    {{"PAGE"}, [](const SheetPlace&) { return std::string(kPageMark); }},
    {{"PAGES"}, [](const SheetPlace&) { return std::string(kPagesMark); }},

    {{"ORGNAME"}, Organisation<&Prefs::OrgCompanyName>},
    {{"ORGADDRESS"},
     [](const SheetPlace& place) {
       const Prefs& org = place.contents.prefs;
       return Lines({org.OrgAddress1.Trimmed(), org.OrgAddress2.Trimmed(), org.OrgAddress3.Trimmed(),
                     org.OrgTown.Trimmed(), org.OrgCounty.Trimmed(), org.OrgPostCode.Trimmed()});
     }},
    {{"ORGTEL"}, Organisation<&Prefs::OrgTel>},
    {{"ORGFAX"}, Organisation<&Prefs::OrgFax>},
    {{"ORGEMAIL"}, Organisation<&Prefs::OrgEmail>},
    {{"ORGWEB"}, Organisation<&Prefs::OrgWebAddress>},
    {{"ORGCONTACT"}, Organisation<&Prefs::OrgContactName>},

    {{"SUPPLIERADDRESS"},
     [](const SheetPlace& place) {
       const Settings& supplier = place.contents.supplier;
       return Lines({supplier.Address1.Trimmed(), supplier.Address2.Trimmed(), supplier.Town.Trimmed(),
                     supplier.County.Trimmed(), supplier.PostCode.Trimmed()});
     }},
    {{"SUPPLIERTEL"}, Supplier<&Settings::Tel>},
    {{"SUPPLIEREMAIL"}, Supplier<&Settings::email>},
    {{"SUPPLIERWEB"}, Supplier<&Settings::www>},

    {{"CUSTOMER"}, Given<&SheetContents::customer>},
    {{"LEASED"}, Given<&SheetContents::equipment>},
    {{"REFERENCE"}, Given<&SheetContents::reference>},
    {{"TODAY"}, [](const SheetPlace& place) { return LongDay(place.contents.date); }},
    {{"START"}, [](const SheetPlace& place) { return LongDay(place.contents.start); }},
    {{"VALIDUNTIL"},
     [](const SheetPlace& place) {
       return place.contents.validUntil ? LongDay(*place.contents.validUntil) : std::string();
     }},
    {{"TAXRATE"}, [](const SheetPlace& place) { return ShortPercent(place.contents.prefs.TaxRate); }},
    {{"VARIANTS"}, [](const SheetPlace& place) { return std::to_string(place.all.size()); }},

    {{"OPTION"}, [](const SheetPlace& place) { return std::to_string(First(place).number); }},
    {{"PAYMENTS"}, [](const SheetPlace& place) { return std::to_string(Payments(place)); }},
    {{"ADVANCE"}, [](const SheetPlace& place) { return std::to_string(First(place).quote.AdvancedPayments); }},
    {{"COST"}, Quoted<&QuoteRecord::CapitalCost>},
    {{"DEPOSITAMOUNT"}, Quoted<&QuoteRecord::DepositValue>},
    {{"DEPOSITINCTAX"}, Quoted<&QuoteRecord::DepositIncTax>},
    {{"RESIDUALAMOUNT"}, Quoted<&QuoteRecord::ResidualValue>},
    {{"RESIDUALINCTAX"}, Quoted<&QuoteRecord::ResidualIncTax>},
    {{"MAINTAMOUNT"}, Quoted<&QuoteRecord::Maintenance>},
    {{"FINANCED"}, Quoted<&QuoteRecord::NetCapital>},
    {{"PAYMENT"}, Quoted<&QuoteRecord::Payment>},
    {{"PAYMENTINCTAX"}, Quoted<&QuoteRecord::PaymentIncTax>},
    {{"TOTAL"}, Total<&ScheduleTotals::amount>},
    {{"TOTALINCTAX"}, Total<&ScheduleTotals::amountIncTax>},
    {{"TOTALPAYMENTS"}, Total<&ScheduleTotals::payments>},
    {{"TOTALPAYMENTSINCTAX"}, Total<&ScheduleTotals::paymentsIncTax>},
    {{"TOTALTAX"},
     [](const SheetPlace& place) {
       const ScheduleTotals& totals = First(place).schedule.totals;
       return Amount(place, totals.amountIncTax.Minus(totals.amount).value_or(Currency()));
     }},
    {{"FIRSTPAYMENT"}, [](const SheetPlace& place) { return DayOf(First(place).schedule.totals.firstPayment); }},
    {{"LASTPAYMENT"}, [](const SheetPlace& place) { return DayOf(First(place).schedule.totals.lastPayment); }},

    {{"YIELD"}, Internal<[](const SheetPlace& place) { return Percent(First(place).quote.Yield); }>},
    {{"COMMISSION"}, Internal<Quoted<&QuoteRecord::CommissionValue>>},
    {{"COMMISSIONPERCENT"},
     Internal<[](const SheetPlace& place) { return Percent(First(place).quote.CommissionPercent); }>},
    {{"TOTALINTEREST"}, Internal<Total<&ScheduleTotals::interest>>},
    {{"OPENINGBALANCE"},
     Internal<[](const SheetPlace& place) { return Amount(place, First(place).schedule.opening); }>},

    {{"LINENUMBER", "LINE"}, [](const SheetPlace& place) { return std::to_string(place.line->number); }},
    {{"LINEDATE", "LINE"}, [](const SheetPlace& place) { return LongDay(place.line->date); }},
    {{"LINEAMOUNT", "LINE"}, Line<&ScheduleLine::amount>},
    {{"LINETAX", "LINE"}, Line<&ScheduleLine::tax>},
    {{"LINEINCTAX", "LINE"}, Line<&ScheduleLine::amountIncTax>},
    {{"LINEINTEREST", "LINE"}, Internal<Line<&ScheduleLine::interest>>},
    {{"LINEPRINCIPAL", "LINE"}, Internal<Line<&ScheduleLine::principal>>},
    {{"LINEBALANCE", "LINE"}, Internal<Line<&ScheduleLine::balance>>},
};

constexpr const char* kAliases[] = {"DEPOSIT",  "RESIDUAL", "MAINT",      "VAT",         "CAPEQUIP",
                                    "SUPPLIER", "CALCNAME", "ADDRATEMSG", "SUPPLIERNAME"};

// Of a table of several variants: whether any of them has it.
template <auto Field>
bool AnyHas(const SheetPlace& place) {
  return std::any_of(place.group.begin(), place.group.end(), [](const SheetVariant* variant) {
    return (variant->quote.*Field) != decltype(QuoteRecord().*Field){};
  });
}
template <auto Field>
bool OrganisationHas(const SheetPlace& place) {
  return !(place.contents.prefs.*Field).Trimmed().empty();
}
template <auto Field>
bool Has(const SheetPlace& place) {
  return !(place.contents.*Field).empty();
}
template <LineKind Kind>
bool LineIs(const SheetPlace& place) {
  return place.line->kind == Kind;
}

struct Section {
  SheetMarkers::Name name;
  bool (*shown)(const SheetPlace&);
};

const Section kSections[] = {
    {{"LOGO"}, Has<&SheetContents::logo>},
    {{"ORGTEL"}, OrganisationHas<&Prefs::OrgTel>},
    {{"ORGFAX"}, OrganisationHas<&Prefs::OrgFax>},
    {{"ORGEMAIL"}, OrganisationHas<&Prefs::OrgEmail>},
    {{"ORGWEB"}, OrganisationHas<&Prefs::OrgWebAddress>},
    {{"ORGCONTACT"}, OrganisationHas<&Prefs::OrgContactName>},
    {{"CUSTOMER"}, Has<&SheetContents::customer>},
    {{"LEASED"}, Has<&SheetContents::equipment>},
    {{"REFERENCE"}, Has<&SheetContents::reference>},
    {{"VALIDUNTIL"}, [](const SheetPlace& place) { return place.contents.validUntil.has_value(); }},
    {{"TAX"}, [](const SheetPlace& place) { return place.contents.prefs.TaxRate > 0; }},
    {{"SEVERAL"}, [](const SheetPlace& place) { return place.all.size() > 1; }},
    {{"SCHEDULE"}, [](const SheetPlace& place) { return place.contents.schedule; }},
    {{"INTERNAL"}, [](const SheetPlace& place) { return place.contents.internal; }},
    {{"QUARTERLY"}, AnyHas<&QuoteRecord::Quarterly>},
    {{"ADVANCE"}, AnyHas<&QuoteRecord::AdvancedPayments>},
    {{"DEPOSIT"}, AnyHas<&QuoteRecord::DepositValue>},
    {{"RESIDUAL"}, AnyHas<&QuoteRecord::ResidualValue>},
    {{"MAINT"}, AnyHas<&QuoteRecord::Maintenance>},
    {{"LINEISDEPOSIT", "LINE"}, LineIs<LineKind::Deposit>},
    {{"LINEISADVANCE", "LINE"}, LineIs<LineKind::Advance>},
    {{"LINEISPAYMENT", "LINE"}, LineIs<LineKind::Payment>},
    {{"LINEISRESIDUAL", "LINE"}, LineIs<LineKind::Residual>},
};

constexpr SheetMarkers::Name kRepeated[] = {{"TABLE"}, {"VARIANT"}, {"LINE", "VARIANT"}};

template <typename Entry, std::size_t Count>
const Entry* FindEntry(const Entry (&entries)[Count], std::string_view name) {
  const auto* found =
      std::find_if(std::begin(entries), std::end(entries), [&](const Entry& entry) { return entry.name.name == name; });
  return found == std::end(entries) ? nullptr : found;
}

}  // namespace

std::string AsHtml(std::string_view text) {
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
      case '\n':
        html += "<br>";
        break;
      case '\r':
        break;
      default:
        // What no document can show; two of them are the marks of page numbers.
        html += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return html;
}

std::string SheetAmount(const CalculatorPreferencesRecord& prefs, Currency amount, int decimals) {
  const std::int64_t pence = amount.Hundredths();
  const std::uint64_t size = pence < 0 ? 0 - static_cast<std::uint64_t>(pence) : static_cast<std::uint64_t>(pence);
  std::string text = std::to_string(size / 100);
  if (decimals > 0) {
    const std::string cents = std::to_string(size % 100);
    text += (cents.size() == 1 ? ".0" : ".") + cents;
  }
  std::string symbol = prefs.CurrencySymbol.Trimmed();
  const char last = symbol.empty() ? ' ' : symbol.back();
  if ((last >= 'a' && last <= 'z') || (last >= 'A' && last <= 'Z'))
    symbol += "\xC2\xA0";  // a blank that does not break
  return (pence < 0 ? "-" : "") + symbol + WithThousands(text);
}

std::string ColourCode(std::uint32_t colour) {
  char code[8];
  std::snprintf(code, sizeof code, "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
  return code;
}

std::uint32_t TintOf(std::uint32_t colour) {
  constexpr std::uint32_t kWhite = 0xFF, kShare = 8;
  std::uint32_t tint = 0;
  for (const int shift : {16, 8, 0}) tint |= (kWhite - (kWhite - (colour >> shift & kWhite)) / kShare) << shift;
  return tint;
}

SheetMarkers KnownSheetMarkers() {
  static const std::vector<SheetMarkers::Name> values = [] {
    std::vector<SheetMarkers::Name> names;
    for (const MarkerValue& value : kValues) names.push_back(value.name);
    for (const char* alias : kAliases) names.push_back({alias});
    return names;
  }();
  static const std::vector<SheetMarkers::Name> shown = [] {
    std::vector<SheetMarkers::Name> names;
    for (const Section& section : kSections) names.push_back(section.name);
    return names;
  }();
  return {values, shown, kRepeated};
}

std::string SheetValue(std::string_view name, const SheetPlace& place) {
  const MarkerValue* value = FindEntry(kValues, name);
  return value ? value->text(place) : Alias(name, place);
}

bool SheetShows(std::string_view name, const SheetPlace& place) {
  return FindEntry(kSections, name)->shown(place);
}

}  // namespace tarvolinex
