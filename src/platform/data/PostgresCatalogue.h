// What tables and columns a database of PostgreSQL has, and what they are to the program.
#pragma once

#include <libpq-fe.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/Values.h"

namespace tarvolinex {

struct ResultDeleter {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PostgresResult = std::unique_ptr<PGresult, ResultDeleter>;

class PostgresCatalogue {
 public:
  // The statement whose rows Read takes. Names are spelled as the comment on the column says, without one in small
  // letters, as the database has them.
  static const char* Statement();
  void Read(const PGresult* rows);

  bool HasTable(std::string_view name) const;
  // Whether the table gives its rows IDs.
  bool GivesIds(std::string_view table) const;
  // Whether the column, of one of these tables, is of texts or of something else; false for one that none of them has.
  // A name may have its table's before it, with a point.
  bool IsText(std::string_view column, const std::vector<std::string_view>& words) const;
  bool IsOther(std::string_view column, const std::vector<std::string_view>& words) const;
  // Of a result; a column that was calculated is a text.
  std::vector<Column> ColumnsOf(const PGresult* result) const;
  // Whether each column of the result was known.
  bool Knows(const PGresult* result) const;

 private:
  struct TableColumns {
    std::string name;
    bool givesIds = false;
    std::map<int, Column> columns;
  };
  const TableColumns* Find(std::string_view name) const;
  const Column* FindColumn(std::string_view column, const std::vector<std::string_view>& words) const;
  std::map<Oid, TableColumns> tables_;
};

// A value of the column as it stands in a result, and the text of it that a file would hold; that of a day or moment
// is made in `buffer`.
Value PostgresValue(std::string_view text, const Column& column);
std::string_view PostgresText(std::string_view text, const Column& column, std::string& buffer);

}  // namespace tarvolinex
