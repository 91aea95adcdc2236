#include "store/KeptQuotes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "core/RecordJson.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Changes.h"
#include "store/KeptContent.h"
#include "store/Schema.h"

namespace tarvolinex {

namespace {

template <auto Member>
QuoteMember Of(QuoteRecord& quote) {
  return &(quote.*Member);
}

constexpr QuoteField kQuoteFields[] = {
    {"CapitalCost", Of<&QuoteRecord::CapitalCost>, true},
    {"DepositMode", Of<&QuoteRecord::DepositMode>, true},
    {"DepositValue", Of<&QuoteRecord::DepositValue>, true},
    {"DepositPercent", Of<&QuoteRecord::DepositPercent>, true},
    {"AdvancedPayments", Of<&QuoteRecord::AdvancedPayments>, true},
    {"NumberOfPayments", Of<&QuoteRecord::NumberOfPayments>, true},
    {"Quarterly", Of<&QuoteRecord::Quarterly>, true},
    {"ResidualValue", Of<&QuoteRecord::ResidualValue>, true},
    {"ResidualPercent", Of<&QuoteRecord::ResidualPercent>, true},
    {"Maintenance", Of<&QuoteRecord::Maintenance>, true},
    {"ApplyPremium", Of<&QuoteRecord::ApplyPremium>, true},
    {"Yield", Of<&QuoteRecord::Yield>, true},
    {"CommissionPercent", Of<&QuoteRecord::CommissionPercent>, true},
    {"CommissionValue", Of<&QuoteRecord::CommissionValue>, true},
    {"Payment", Of<&QuoteRecord::Payment>, true},
    {"PaymentIncTax", Of<&QuoteRecord::PaymentIncTax>, false},
    {"NetCapital", Of<&QuoteRecord::NetCapital>, false},
    {"DepositIncTax", Of<&QuoteRecord::DepositIncTax>, false},
    {"ResidualIncTax", Of<&QuoteRecord::ResidualIncTax>, false},
    {"PremiumYield", Of<&QuoteRecord::PremiumYield>, false},
};

constexpr const char* kQuoteTable = "KeptQuotes";
constexpr const char* kAsked = "Asked";

// In the order of QuoteState.
constexpr std::string_view kStates[] = {"open", "accepted", "declined"};

// A state that another program has made up counts as open.
QuoteState StateOf(std::string_view name) {
  if (name == kStates[1]) return QuoteState::Accepted;
  return name == kStates[2] ? QuoteState::Declined : QuoteState::Open;
}

// What of both records has a column: its name and the field in the record that it belongs to.
void ForEachFigure(QuoteFigures& figures, const std::function<void(const std::string&, QuoteMember)>& visit) {
  for (const QuoteField& field : kQuoteFields) {
    if (field.input) visit(std::string(kAsked) + field.name, field.member(figures.asked));
  }
  for (const QuoteField& field : kQuoteFields) visit(field.name, field.member(figures.priced));
}

std::string Quoted(std::string_view text) {
  return "'" + EscapeQuotes(text) + "'";
}

// A line break or a tab becomes a blank: such a text is a cell of lists.
std::string OneLine(std::string_view text) {
  std::string line = EscapeQuotes(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return line;
}

std::string DayLiteral(const std::optional<CalendarDay>& day) {
  return day ? Quoted(DayText(*day)) : "NULL";
}

struct Literal {
  const std::string& column;
  std::string operator()(const std::int16_t* number) const { return std::to_string(*number); }
  std::string operator()(const float* rate) const {
    if (std::isfinite(*rate)) return FormatSingle(*rate);
    throw RuntimeError(kOverflow, Tr("%1 is no number; the quote cannot be kept", {column}));
  }
  // The database holds 15 digits.
  std::string operator()(const Currency* amount) const {
    constexpr std::int64_t kMostUnits = 1'000'000'000'000'000;
    if (std::abs(amount->Units()) < kMostUnits) return ValueText(*amount);
    throw RuntimeError(kOverflow, Tr("%1 of %2 is too large to be kept", {column, ValueText(*amount)}));
  }
  std::string operator()(const bool* truth) const { return *truth ? "YES" : "NO"; }
};

void CheckLength(const std::string& text, int most, const std::string& name) {
  if (FirstCharacters(text, most).size() == text.size()) return;
  throw RuntimeError(kOverflow, Tr("%1 has more than %2 characters: %3", {name, std::to_string(most), text}));
}

void CheckLengths(const QuoteDetails& details) {
  CheckLength(details.customer, kMostInCustomer, Tr("The customer"));
  CheckLength(details.customerEmail, kMostInEmail, Tr("The customer's e-mail address"));
  CheckLength(details.customerTel, kMostInTel, Tr("The customer's telephone number"));
  CheckLength(details.equipment, kMostInEquipment, Tr("The equipment"));
  CheckLength(details.reference, kMostInReference, Tr("The reference"));
  CheckLength(details.note, kMostInNote, Tr("The note"));
}

// A column list and a value list, filled side by side.
class Lists {
 public:
  void Add(const std::string& column, const std::string& literal) {
    columns_ += (columns_.empty() ? "" : ",") + column;
    values_ += (values_.empty() ? "" : ",") + literal;
  }
  std::string Statement() const {
    return FillStatement(statements::kInsertKeptQuote, {{"<FIELDS>", columns_}, {"<VALUES>", values_}});
  }

 private:
  std::string columns_, values_;
};

void AddDetails(const QuoteDetails& details, Lists& lists) {
  lists.Add("Customer", Quoted(OneLine(details.customer)));
  lists.Add("CustomerEmail", Quoted(OneLine(details.customerEmail)));
  lists.Add("CustomerTel", Quoted(OneLine(details.customerTel)));
  lists.Add("Equipment", Quoted(OneLine(details.equipment)));
  lists.Add("Reference", Quoted(OneLine(details.reference)));
  lists.Add("Note", Quoted(details.note));
  lists.Add("StartDate", DayLiteral(details.start));
  lists.Add("ValidUntil", DayLiteral(details.validUntil));
  lists.Add("State", Quoted(StateName(details.state)));
}

// Without apostrophes: in JSON they can be written in another way, so that nothing is lost.
template <typename Record>
std::string ContentOf(const Record& record) {
  return ReplaceAll(FormatJsonObject(RecordToJson(record)), "'", "\\u0027");
}

// The ID of the record's content, which is stored once however many quotes it priced.
std::string KeepRecord(Database& database, const std::string& content) {
  std::string id;
  database.Report([&] { id = KeepContent(database.Plain(), kKeptRecordsTable, content); });
  return id;
}

template <typename Record>
void ReadContent(Database& database, const Value& id, Record& record) {
  Recordset found;
  found.Open(FillStatement(statements::kKeptRecord, "<ID>", id), database.Plain());
  ChangeRecord(record, ParseJsonObject(ValueText(found.Field("Content"))));
}

// A figure from its column; false when that holds no number. Null is 0.
struct FigureReader {
  const Value& value;
  bool operator()(std::int16_t* number) const {
    const double stored = ValueNumber(value);
    *number = static_cast<std::int16_t>(stored);
    return !IsNoNumber(value) && *number == stored;
  }
  bool operator()(float* rate) const {
    *rate = static_cast<float>(ValueNumber(value));
    return !IsNoNumber(value) && std::isfinite(*rate);
  }
  bool operator()(Currency* amount) const {
    const auto* exact = std::get_if<Currency>(&value);
    if (exact) *amount = *exact;
    return exact || IsNull(value);
  }
  bool operator()(bool* truth) const {
    *truth = ValueTruth(value);
    return true;
  }
};

RuntimeError NoNumber(std::string_view number, std::string_view column, std::string_view text) {
  return {kItemNotFound,
          Tr("Quote %1: the column %2 holds \"%3\", which is no number that fits", {number, column, text})};
}

// What a list shows of each, in the order of QuoteListRow's reading.
const std::vector<std::string> kListColumns = {
    "ID",        "QuoteDate", "SupplierId",  "CompanyName",      "Customer", "CustomerEmail", "CustomerTel",
    "Equipment", "Reference", "CapitalCost", "NumberOfPayments", "Payment",  "PaymentIncTax", "ValidUntil",
    "State"};

QuoteFigures FiguresOf(const Row& row) {
  QuoteFigures figures;
  figures.mode = row.Number("Mode");
  figures.capitalCostLocked = ValueTruth(row.At("CapLock"));
  ForEachFigure(figures, [&](const std::string& column, QuoteMember member) {
    const Value& value = row.At(column);
    if (std::visit(FigureReader{value}, member)) return;
    throw NoNumber(row.Text("ID"), column, ValueText(value));
  });
  return figures;
}

QuoteDetails DetailsOf(const Row& row) {
  QuoteDetails details;
  details.customer = row.Text("Customer");
  details.customerEmail = row.Text("CustomerEmail");
  details.customerTel = row.Text("CustomerTel");
  details.equipment = row.Text("Equipment");
  details.reference = row.Text("Reference");
  details.note = row.Text("Note");
  details.start = DayFromText(row.Text("StartDate"));
  details.validUntil = DayFromText(row.Text("ValidUntil"));
  details.state = StateOf(row.Text("State"));
  return details;
}

Row RowOf(Database& database, int number) {
  if (!database.Plain().HasTable(kQuoteTable)) return {};
  Recordset found;
  found.Open(FillStatement(statements::kKeptQuote, "<ID>", number), database.Plain());
  return Row(found);
}

template <typename Number>
Number WholeOf(std::string_view text) {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

std::span<const QuoteField> QuoteFields() {
  return kQuoteFields;
}

std::string_view StateName(QuoteState state) {
  return kStates[static_cast<std::size_t>(state)];
}

std::string_view StateName(QuoteState state, const std::optional<CalendarDay>& validUntil, CalendarDay today) {
  return state == QuoteState::Open && validUntil && *validUntil < today ? "expired" : StateName(state);
}

QuoteOrigin OriginOf(const SupplierRow& supplier, const CalculatorPreferencesRecord& preferences) {
  return {supplier.id, supplier.row.Text("CompanyName"), supplier.settings, preferences};
}

void CheckKeepable(QuoteFigures figures) {
  ForEachFigure(figures, [](const std::string& column, QuoteMember member) { std::visit(Literal{column}, member); });
}

std::vector<int> KeepQuotes(Database& database, const KeptQuote& common, const std::vector<QuoteFigures>& figures) {
  CheckLengths(common.details);
  Lists shared;
  shared.Add("QuoteDate", Quoted(DayText(common.date)));
  shared.Add("SupplierId", std::to_string(common.origin.supplierId));
  shared.Add("CompanyName", Quoted(OneLine(common.origin.companyName)));
  AddDetails(common.details, shared);
  std::vector<Lists> rows;
  for (QuoteFigures row : figures) {
    Lists& lists = rows.emplace_back(shared);
    lists.Add("Mode", std::to_string(row.mode));
    lists.Add("CapLock", row.capitalCostLocked ? "YES" : "NO");
    ForEachFigure(row, [&](const std::string& column, QuoteMember member) {
      lists.Add(column, std::visit(Literal{column}, member));
    });
  }
  std::vector<int> numbers;
  Transaction transaction(database);
  database.BringTo(SchemaStep::Quotes);
  const std::string supplier = KeepRecord(database, ContentOf(common.origin.supplier));
  const std::string preferences = KeepRecord(database, ContentOf(common.origin.preferences));
  for (Lists& lists : rows) {
    lists.Add("SupplierRecord", supplier);
    lists.Add("PreferencesRecord", preferences);
    database.ExecuteStatement(lists.Statement());
    numbers.push_back(database.Plain().LastInsertedId());
    NoteChange(database, Changed::Quote, numbers.back());
  }
  transaction.Commit();
  return numbers;
}

int KeepQuote(Database& database, const KeptQuote& quote) {
  return KeepQuotes(database, quote, {quote.figures}).front();
}

std::optional<KeptQuote> ReadQuote(Database& database, int number) {
  const Row row = RowOf(database, number);
  if (!row.Found()) return std::nullopt;
  KeptQuote quote;
  quote.number = number;
  quote.date = DayFromText(row.Text("QuoteDate")).value_or(CalendarDay());
  quote.details = DetailsOf(row);
  quote.figures = FiguresOf(row);
  quote.origin.supplierId = row.Number("SupplierId");
  quote.origin.companyName = row.Text("CompanyName");
  try {
    ReadContent(database, row.At("SupplierRecord"), quote.origin.supplier);
    ReadContent(database, row.At("PreferencesRecord"), quote.origin.preferences);
  } catch (const RuntimeError& failure) {
    throw RuntimeError(kItemNotFound, Tr("Quote %1: what priced it cannot be read: %2",
                                         {std::to_string(number), failure.Description()}));
  }
  return quote;
}

void ListQuotes(Database& database, CalendarDay today, const std::function<void(const QuoteListRow&)>& read) {
  if (!database.Plain().HasTable(kQuoteTable)) return;
  const std::string day = DayText(today);
  const auto amount = [](const std::vector<std::string_view>& texts, std::size_t column) {
    const std::string_view text = texts[column];
    const auto stored = text.empty() ? Currency() : Currency::FromText(text);
    if (!stored) throw NoNumber(texts[0], kListColumns[column], text);
    return *stored;
  };
  Recordset quotes;
  quotes.Open(statements::kKeptQuotes, database.Plain(), Recordset::Rows::Later);
  quotes.ReadRows(kListColumns, [&](const std::vector<std::string_view>& texts) {
    QuoteListRow row;
    row.number = WholeOf<int>(texts[0]);
    row.date = texts[1];
    row.supplierId = WholeOf<int>(texts[2]);
    row.companyName = texts[3];
    row.customer = texts[4];
    row.customerEmail = texts[5];
    row.customerTel = texts[6];
    row.equipment = texts[7];
    row.reference = texts[8];
    row.capitalCost = amount(texts, 9);
    row.numberOfPayments = WholeOf<int>(texts[10]);
    row.payment = amount(texts, 11);
    row.paymentIncTax = amount(texts, 12);
    row.validUntil = texts[13];
    const QuoteState state = StateOf(texts[14]);
    // Such days follow each other as their texts do.
    const bool expired = state == QuoteState::Open && !row.validUntil.empty() && row.validUntil < day;
    row.state = expired ? "expired" : StateName(state);
    read(row);
  });
}

bool UpdateQuote(Database& database, int number, const QuoteDetails& details) {
  CheckLengths(details);
  Transaction transaction(database);
  if (!RowOf(database, number).Found()) return false;
  database.ExecuteStatement(
      FillStatement(statements::kUpdateKeptQuote, {{"<CUSTOMER>", OneLine(details.customer)},
                                                   {"<EMAIL>", OneLine(details.customerEmail)},
                                                   {"<TEL>", OneLine(details.customerTel)},
                                                   {"<EQUIPMENT>", OneLine(details.equipment)},
                                                   {"<REFERENCE>", OneLine(details.reference)},
                                                   {"<NOTE>", EscapeQuotes(details.note)},
                                                   {"<START>", DayLiteral(details.start)},
                                                   {"<VALIDUNTIL>", DayLiteral(details.validUntil)},
                                                   {"<STATE>", std::string(StateName(details.state))},
                                                   {"<ID>", std::int64_t{number}}}));
  transaction.Commit();
  return true;
}

RemovedRows RemoveQuote(Database& database, int number) {
  RemovedRows removed;
  Transaction transaction(database);
  const Row row = RowOf(database, number);
  if (!row.Found()) return removed;
  removed.quote = number;
  removed.statements.push_back(FillStatement(statements::kInsertKeptQuote, RowLists(row)));
  database.ExecuteStatement(FillStatement(statements::kDeleteKeptQuote, "<ID>", number));
  transaction.Commit();
  return removed;
}

}  // namespace tarvolinex
