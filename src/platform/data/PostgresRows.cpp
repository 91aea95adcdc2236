// The rows of a SELECT from a server: they are read at once.
#include <utility>

#include "platform/data/PostgresDialect.h"
#include "platform/data/PostgresEngine.h"

namespace tarvolinex {

namespace {

class PostgresRows final : public RowSource {
 public:
  PostgresRows(PostgresEngine& engine, std::string_view statement, PostgresResult rows, bool read)
      : engine_(engine),
        statement_(statement),
        rows_(std::move(rows)),
        read_(read),
        columns_(engine.ColumnsOf(rows_.get())) {}

  const std::vector<Column>& Columns() override { return columns_; }

  bool AtEnd() override {
    Read();
    return row_ >= PQntuples(Current());
  }

  void MoveFirst() override {
    found_.reset();
    row_ = 0;
    read_ = false;
  }

  void MoveNext() override { ++row_; }

  void Find(const std::string& column, std::int64_t id) override {
    found_ = engine_.Rows(
        "SELECT * FROM (" + Statement(statement_) + ") AS rows WHERE " + column + "=" + std::to_string(id), statement_);
    row_ = 0;
  }

  Value Field(int column) override {
    if (PQgetisnull(Current(), row_, column)) return Null{};
    return PostgresValue(ValueAt(Current(), row_, column), columns_.at(static_cast<std::size_t>(column)));
  }

  void ReadRows(const std::string& list, std::size_t columns, const RowReader& read) override {
    const PostgresResult narrow = engine_.Rows(
        "SELECT " + list + " FROM (" + Statement(WithoutOrder(statement_)) + ") AS rows ORDER BY ID", statement_);
    const std::vector<Column> types = engine_.ColumnsOf(narrow.get());
    std::vector<std::string> buffers(columns);
    std::vector<std::string_view> texts(columns);
    for (int row = 0; row < PQntuples(narrow.get()); ++row) {
      for (std::size_t i = 0; i < columns; ++i) {
        texts[i] = PostgresText(ValueAt(narrow.get(), row, static_cast<int>(i)), types[i], buffers[i]);
      }
      read(texts);
    }
  }

 private:
  std::string Statement(std::string_view statement) const { return PostgresStatement(statement, engine_.Catalogue()); }
  const PGresult* Current() const { return found_ ? found_.get() : rows_.get(); }
  void Read() {
    if (found_ || std::exchange(read_, true)) return;
    rows_ = engine_.Rows(Statement(statement_) + OwnOrder(statement_, engine_.Catalogue()), statement_);
  }

  PostgresEngine& engine_;
  std::string statement_;
  PostgresResult rows_, found_;
  bool read_;
  std::vector<Column> columns_;
  int row_ = 0;
};

}  // namespace

std::unique_ptr<RowSource> PostgresEngine::Select(std::string_view statement, bool rowsLater) {
  const std::string text = PostgresStatement(statement, catalogue_);
  if (!rowsLater || inTransaction_) {
    return std::make_unique<PostgresRows>(*this, statement, Rows(text + OwnOrder(statement, catalogue_), statement),
                                          true);
  }
  for (;;) {
    try {
      return std::make_unique<PostgresRows>(*this, statement, session_.Describe({text, statement}), false);
    } catch (const ConnectionLost& lost) {
      session_.Reconnect(lost.why);
    }
  }
}

}  // namespace tarvolinex
