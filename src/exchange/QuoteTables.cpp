#include "exchange/QuoteTables.h"

#include <charconv>

namespace tarvolinex {

namespace {

// Appends cells to a line, each with the comma after it; fast, because a schedule has many.
class LineWriter {
 public:
  explicit LineWriter(std::string& out) : out_(out) {}
  void Number(long number) {
    char text[24];
    Append(text, std::to_chars(text, text + sizeof text, number).ptr);
  }
  // Whole hundredths.
  void Money(Currency amount) {
    constexpr int kFinerDigits = 2;
    char text[24];
    Append(text, amount.WriteText(text) - kFinerDigits);
  }
  void Text(std::string_view text) {
    out_ += text;
    out_ += ',';
  }
  void End() { out_.back() = '\n'; }

 private:
  void Append(const char* from, const char* to) {
    out_.append(from, to);
    out_ += ',';
  }
  std::string& out_;
};

}  // namespace

std::vector<SheetColumn> ScheduleColumns(bool internal) {
  std::vector<SheetColumn> columns = {{"Row", CellKind::Count},
                                      {"Number", CellKind::Count},
                                      {"Date", CellKind::Date},
                                      {"Kind"},
                                      {"Amount", CellKind::Money, true},
                                      {"Tax", CellKind::Money, true},
                                      {"AmountIncTax", CellKind::Money, true}};
  if (internal) {
    columns.push_back({"Interest", CellKind::Money, true});
    columns.push_back({"Principal", CellKind::Money, true});
    columns.push_back({"Balance", CellKind::Money});
  }
  return columns;
}

void AppendSchedule(long row, const Schedule& schedule, bool internal, std::string& out) {
  LineWriter line(out);
  for (const ScheduleLine& each : schedule.lines) {
    line.Number(row);
    line.Number(each.number);
    line.Text(DayText(each.date));
    line.Text(KindName(each.kind));
    for (const Currency amount : {each.amount, each.tax, each.amountIncTax}) line.Money(amount);
    if (internal) {
      for (const Currency amount : {each.interest, each.principal, each.balance}) line.Money(amount);
    }
    line.End();
  }
}

std::vector<SheetColumn> VariantColumns() {
  return {{"Row", CellKind::Count},     {"NumberOfPayments", CellKind::Count},
          {"Payment", CellKind::Money}, {"PaymentIncTax", CellKind::Money},
          {"Total", CellKind::Money},   {"TotalIncTax", CellKind::Money}};
}

void AppendVariant(long row, const TermVariant& variant, std::string& out) {
  LineWriter line(out);
  line.Number(row);
  line.Number(variant.quote.NumberOfPayments);
  for (const Currency amount : {variant.quote.Payment, variant.quote.PaymentIncTax}) line.Money(Shown(amount));
  for (const Currency amount : {variant.total, variant.totalIncTax}) line.Money(amount);
  line.End();
}

}  // namespace tarvolinex
