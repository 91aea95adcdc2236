#include "platform/data/PostgresCatalogue.h"

#include <charconv>

#include "platform/text/Clock.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

// Types, by the numbers that every database of this kind gives them.
enum : Oid {
  kOidBool = 16,
  kOidInt8 = 20,
  kOidInt2 = 21,
  kOidInt4 = 23,
  kOidFloat4 = 700,
  kOidFloat8 = 701,
  kOidVarchar = 1043
};
enum : Oid { kOidDate = 1082, kOidTimestamp = 1114, kOidTimestampTz = 1184, kOidNumeric = 1700 };

template <typename Number>
Number NumberIn(std::string_view text) {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

Column ColumnOf(std::string name, Oid type, int modifier) {
  constexpr int kLengthOfHeader = 4, kUnboundedText = 255;
  switch (type) {
    case kOidBool:
      return {std::move(name), ColumnType::YesNo, 2};
    case kOidInt2:
      return {std::move(name), ColumnType::WholeNumber, 2};
    case kOidInt4:
    case kOidInt8:
      return {std::move(name), ColumnType::WholeNumber, 4};
    case kOidFloat4:
      return {std::move(name), ColumnType::Single, 4};
    case kOidFloat8:
      return {std::move(name), ColumnType::Double, 8};
    case kOidNumeric:
      return {std::move(name), ColumnType::Currency, 8};
    case kOidDate:
    case kOidTimestamp:
    case kOidTimestampTz:
      return {std::move(name), ColumnType::Date, 8};
    default:
      return {std::move(name), ColumnType::Text,
              type == kOidVarchar && modifier >= kLengthOfHeader ? modifier - kLengthOfHeader : kUnboundedText};
  }
}

}  // namespace

const char* PostgresCatalogue::Statement() {
  return "SELECT c.oid, c.relname, a.attnum, COALESCE(d.description, a.attname), a.atttypid, a.atttypmod, "
         "a.attidentity <> '' FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT "
         "a.attisdropped LEFT JOIN pg_description d ON d.objoid = c.oid AND d.classoid = 'pg_class'::regclass AND "
         "d.objsubid = a.attnum AND lower(d.description) = a.attname WHERE c.relkind IN ('r', 'p', 'v') AND "
         "c.relnamespace = current_schema()::regnamespace";
}

void PostgresCatalogue::Read(const PGresult* rows) {
  tables_.clear();
  for (int row = 0; row < PQntuples(rows); ++row) {
    const auto number = [&](int column) { return NumberIn<std::int64_t>(PQgetvalue(rows, row, column)); };
    TableColumns& table = tables_[static_cast<Oid>(number(0))];
    table.name = PQgetvalue(rows, row, 1);
    table.columns[static_cast<int>(number(2))] =
        ColumnOf(PQgetvalue(rows, row, 3), static_cast<Oid>(number(4)), static_cast<int>(number(5)));
    table.givesIds = table.givesIds || *PQgetvalue(rows, row, 6) == 't';
  }
}

const PostgresCatalogue::TableColumns* PostgresCatalogue::Find(std::string_view name) const {
  for (const auto& [number, table] : tables_) {
    if (EqualNoCase(table.name, name)) return &table;
  }
  return nullptr;
}

bool PostgresCatalogue::HasTable(std::string_view name) const {
  return Find(name) != nullptr;
}

bool PostgresCatalogue::GivesIds(std::string_view table) const {
  const TableColumns* found = Find(table);
  return found && found->givesIds;
}

const Column* PostgresCatalogue::FindColumn(std::string_view column, const std::vector<std::string_view>& words) const {
  const auto point = column.find('.');
  const std::string_view name = point == std::string_view::npos ? column : column.substr(point + 1);
  for (const std::string_view word : words) {
    const TableColumns* table = Find(word);
    if (!table || (point != std::string_view::npos && !EqualNoCase(word, column.substr(0, point)))) continue;
    for (const auto& [number, each] : table->columns) {
      if (EqualNoCase(each.name, name)) return &each;
    }
  }
  return nullptr;
}

bool PostgresCatalogue::IsText(std::string_view column, const std::vector<std::string_view>& words) const {
  const Column* found = FindColumn(column, words);
  return found && found->type == ColumnType::Text;
}

bool PostgresCatalogue::IsOther(std::string_view column, const std::vector<std::string_view>& words) const {
  const Column* found = FindColumn(column, words);
  return found && found->type != ColumnType::Text;
}

std::vector<Column> PostgresCatalogue::ColumnsOf(const PGresult* result) const {
  std::vector<Column> columns;
  for (int i = 0; i < PQnfields(result); ++i) {
    const auto table = tables_.find(PQftable(result, i));
    Column column = ColumnOf(PQfname(result, i), InvalidOid, -1);
    if (table != tables_.end()) {
      const auto known = table->second.columns.find(PQftablecol(result, i));
      // Under another name it is still of its type.
      if (known != table->second.columns.end()) {
        column.type = known->second.type;
        column.size = known->second.size;
        if (EqualNoCase(known->second.name, column.name)) column.name = known->second.name;
      }
    }
    columns.push_back(std::move(column));
  }
  return columns;
}

bool PostgresCatalogue::Knows(const PGresult* result) const {
  for (int i = 0; i < PQnfields(result); ++i) {
    const Oid table = PQftable(result, i);
    if (table == InvalidOid) continue;
    const auto known = tables_.find(table);
    if (known == tables_.end() || !known->second.columns.contains(PQftablecol(result, i))) return false;
  }
  return true;
}

Value PostgresValue(std::string_view text, const Column& column) {
  switch (column.type) {
    case ColumnType::WholeNumber:
      return NumberIn<std::int64_t>(text);
    case ColumnType::Currency:
      return Currency::FromText(text).value_or(Currency());
    case ColumnType::Single:
      return NumberIn<float>(text);
    case ColumnType::Double:
      return NumberIn<double>(text);
    case ColumnType::YesNo:
      return text == "t";
    case ColumnType::Date:
      return LongMoment(text);
    case ColumnType::Text:
      break;
  }
  return std::string(text);
}

std::string_view PostgresText(std::string_view text, const Column& column, std::string& buffer) {
  if (text.empty()) return text;
  if (column.type == ColumnType::YesNo) return text == "t" ? "1" : "0";
  if (column.type == ColumnType::Date) return buffer = LongMoment(text);
  if (column.type != ColumnType::Currency || text.find('.') == std::string_view::npos) return text;
  text = text.substr(0, text.find_last_not_of('0') + 1);
  return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
}

}  // namespace tarvolinex
