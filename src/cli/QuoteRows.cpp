#include "cli/QuoteRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <system_error>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// Each of these tries the cell as it is first: nearly all are plain numbers, and this runs for every cell.
bool Parse(std::string_view cell, Currency& target) {
  if (const auto plain = Currency::FromText(cell)) {
    target = *plain;
    return true;
  }
  std::string buffer;
  const auto number = ExactNumberText(cell, buffer);
  const auto amount = number ? Currency::FromText(*number) : std::nullopt;
  if (amount) target = *amount;
  return amount.has_value();
}

bool StartsWithDigit(std::string_view cell) {
  return !cell.empty() && cell.front() >= '0' && cell.front() <= '9';
}

bool Parse(std::string_view cell, float& target) {
  if (StartsWithDigit(cell)) {
    const auto plain = std::from_chars(cell.data(), cell.data() + cell.size(), target, std::chars_format::fixed);
    if (plain.ec == std::errc() && plain.ptr == cell.data() + cell.size()) return true;
  }
  std::string buffer;
  const auto number = ExactNumberText(cell, buffer);
  return number && std::from_chars(number->data(), number->data() + number->size(), target).ec == std::errc();
}

// A whole number that fits; "36.00" is one.
bool Parse(std::string_view cell, std::int16_t& target) {
  const auto plain = std::from_chars(cell.data(), cell.data() + cell.size(), target);
  if (plain.ec == std::errc() && plain.ptr == cell.data() + cell.size()) return true;
  std::string buffer;
  auto number = ExactNumberText(cell, buffer);
  if (!number) return false;
  if (const auto point = number->find('.'); point != std::string_view::npos) {
    if (number->find_first_not_of('0', point + 1) != std::string_view::npos) return false;
    number = number->substr(0, point);
  }
  const auto end = std::from_chars(number->data(), number->data() + number->size(), target);
  return end.ec == std::errc() && end.ptr == number->data() + number->size();
}

bool Parse(std::string_view cell, bool& target) {
  std::int16_t number = 0;
  if (!Parse(cell, number) || number < 0 || number > 1) return false;
  target = number == 1;
  return true;
}

bool ParseWithin(std::string_view cell, std::int16_t most, std::int16_t& target) {
  return Parse(cell, target) && target >= 0 && target <= most;
}

struct InputColumn {
  const char* name;
  bool (*set)(std::string_view, QuoteRow&);
};

template <auto Member>
bool Take(std::string_view cell, QuoteRow& row) {
  return Parse(cell, row.quote.*Member);
}

const InputColumn kInputColumns[] = {
    {"Mode",
     [](std::string_view cell, QuoteRow& row) {
       std::int16_t mode = 0;
       const bool valid = ParseWithin(cell, 6, mode);
       row.mode = mode;
       return valid;
     }},
    {"CapitalCost", Take<&QuoteRecord::CapitalCost>},
    {"DepositMode", [](std::string_view cell, QuoteRow& row) { return ParseWithin(cell, 2, row.quote.DepositMode); }},
    {"DepositValue", Take<&QuoteRecord::DepositValue>},
    {"DepositPercent", Take<&QuoteRecord::DepositPercent>},
    {"AdvancedPayments", Take<&QuoteRecord::AdvancedPayments>},
    {"NumberOfPayments", Take<&QuoteRecord::NumberOfPayments>},
    {"Quarterly", Take<&QuoteRecord::Quarterly>},
    {"ResidualValue", Take<&QuoteRecord::ResidualValue>},
    {"ResidualPercent", Take<&QuoteRecord::ResidualPercent>},
    {"Maintenance", Take<&QuoteRecord::Maintenance>},
    {"ApplyPremium", Take<&QuoteRecord::ApplyPremium>},
    {"Yield", Take<&QuoteRecord::Yield>},
    {"CommissionPercent", Take<&QuoteRecord::CommissionPercent>},
    {"CommissionValue", Take<&QuoteRecord::CommissionValue>},
    {"Payment", Take<&QuoteRecord::Payment>},
    {"CapLock", [](std::string_view cell, QuoteRow& row) { return Parse(cell, row.capitalCostLocked); }},
};

struct ResultWriter {
  std::string& out;
  void operator()(Currency amount) const {
    char text[24];
    out.append(text, amount.WriteText(text));
  }
  void operator()(float rate) const {
    std::array<char, 128> text;
    out.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), rate, std::chars_format::fixed).ptr);
  }
};

struct ResultColumn {
  const char* name;
  void (*write)(const QuoteRecord&, ResultWriter);
};

template <auto Member>
void Give(const QuoteRecord& quote, ResultWriter write) {
  write(quote.*Member);
}

constexpr ResultColumn kResultColumns[] = {
    {"CapitalCost", Give<&QuoteRecord::CapitalCost>},
    {"DepositValue", Give<&QuoteRecord::DepositValue>},
    {"ResidualValue", Give<&QuoteRecord::ResidualValue>},
    {"ResidualPercent", Give<&QuoteRecord::ResidualPercent>},
    {"Yield", Give<&QuoteRecord::Yield>},
    {"CommissionPercent", Give<&QuoteRecord::CommissionPercent>},
    {"CommissionValue", Give<&QuoteRecord::CommissionValue>},
    {"Payment", Give<&QuoteRecord::Payment>},
    {"PaymentIncTax", Give<&QuoteRecord::PaymentIncTax>},
    {"NetCapital", Give<&QuoteRecord::NetCapital>},
    {"DepositIncTax", Give<&QuoteRecord::DepositIncTax>},
    {"ResidualIncTax", Give<&QuoteRecord::ResidualIncTax>},
    {"PremiumYield", Give<&QuoteRecord::PremiumYield>},
};

}  // namespace

QuoteColumns::QuoteColumns(const std::vector<std::string_view>& header, const std::string& place) {
  for (const std::string_view cell : header) {
    const std::string_view name = Trim(cell);
    const auto* column = std::find_if(std::begin(kInputColumns), std::end(kInputColumns),
                                      [&](const InputColumn& c) { return EqualNoCase(c.name, name); });
    if (column == std::end(kInputColumns)) {
      throw RuntimeError(kItemNotFound, place + ": no column is called \"" + std::string(name) + "\"");
    }
    const int index = static_cast<int>(column - kInputColumns);
    if (std::find(columns_.begin(), columns_.end(), index) != columns_.end()) {
      throw RuntimeError(kItemNotFound, place + ": the column " + column->name + " stands twice");
    }
    columns_.push_back(index);
  }
}

bool QuoteColumns::Set(int column, std::string_view cell, QuoteRow& row) {
  return kInputColumns[column].set(cell, row);
}

void QuoteColumns::Fail(const std::string& place, std::size_t cells) const {
  throw RuntimeError(kItemNotFound, place + " has " + std::to_string(cells) + " cells, the header has " +
                                        std::to_string(columns_.size()));
}

void QuoteColumns::Fail(const std::string& place, int column, std::string_view cell) {
  const std::string name = kInputColumns[column].name;
  std::string wants = " is not a number that fits";
  if (name == "Mode") wants = " is not a mode from 0 to 6";
  if (name == "DepositMode") wants = " is not 0, 1 or 2";
  if (name == "Quarterly" || name == "ApplyPremium" || name == "CapLock") wants = " is not 0 or 1";
  if (name == "AdvancedPayments" || name == "NumberOfPayments") wants = " is not a whole number that fits";
  throw RuntimeError(kItemNotFound, place + ", column " + name + ": \"" + std::string(cell) + "\"" + wants);
}

std::vector<SheetColumn> QuoteResultColumns() {
  std::vector<SheetColumn> columns;
  for (const ResultColumn& column : kResultColumns) columns.push_back({column.name, CellKind::Number});
  return columns;
}

void AppendQuoteResult(const QuoteRecord& quote, std::string& out) {
  for (const ResultColumn& column : kResultColumns) {
    column.write(quote, {out});
    out += ',';
  }
  out.back() = '\n';
}

}  // namespace tarvolinex
