#include "store/DatabaseCopy.h"

#include <algorithm>
#include <filesystem>

#include "platform/RuntimeError.h"
#include "platform/data/ConnectionText.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Schema.h"
#include "store/SharedDatabase.h"
#include "store/SharedFiles.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr std::size_t kRowsAtOnce = 500;

int CountOf(Connection& connection, const std::string& table) {
  if (!connection.HasTable(table)) return 0;
  Recordset count;
  count.Open("SELECT COUNT(*) FROM " + table, connection);
  return static_cast<int>(ValueNumber(count.Field(0)));
}

bool IsNumeric(ColumnType type) {
  return type != ColumnType::Text && type != ColumnType::Date && type != ColumnType::YesNo;
}

// What the column of the new table cannot hold; empty = it fits.
std::string WhyItDoesNotFit(const Column& column, const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  if (!text) return {};
  std::string buffer;
  if (IsNumeric(column.type) && !Trim(*text).empty() && !ExactNumberText(*text, buffer)) {
    return Tr("\"%1\", which is no number", {*text});
  }
  if (column.type != ColumnType::Text || FirstCharacters(*text, column.size).size() == text->size()) return {};
  return Tr("\"%1\", which has more than %2 characters", {*text, std::to_string(column.size)});
}

// Copies the rows of one table.
class TableCopy {
 public:
  TableCopy(Connection& from, Connection& to, const TableDesign& design) : to_(to), table_(design.name) {
    rows_.Open("SELECT * FROM " + table_, from);
    Recordset columns;
    columns.Open("SELECT * FROM " + table_ + " WHERE 1=0", to);
    for (int i = 0; i < rows_.ColumnCount(); ++i) {
      const std::string& name = rows_.ColumnName(i);
      if (columns.ColumnIndex(name) < 0) {
        throw RuntimeError(kItemNotFound, Tr("The new table %1 has no column %2", {table_, name}));
      }
      Column& column = columns_.emplace_back();
      column = {name, columns.TypeOf(name), columns.DefinedSize(name)};
      // A column of long texts reports the size that a box gives them.
      for (const ColumnDesign& each : design.columns) {
        if (EqualNoCase(each.name, name) && each.size == 0) column.size = std::numeric_limits<int>::max();
      }
      names_.push_back(name);
    }
  }

  void Run(const std::function<void(int rows)>& progress) {
    std::vector<std::vector<Value>> rows;
    const auto store = [&] {
      if (rows.empty()) return;
      to_.InsertRows(table_, names_, rows.size(),
                     [&](std::size_t row, std::size_t column) -> const Value& { return rows[row][column]; });
      progress(static_cast<int>(rows.size()));
      rows.clear();
    };
    for (; !rows_.EndOfFile(); rows_.MoveNext()) {
      rows.push_back(RowValues());
      if (rows.size() == kRowsAtOnce) store();
    }
    store();
    to_.Flush();
  }

 private:
  std::vector<Value> RowValues() {
    std::vector<Value> values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      values.push_back(rows_.Field(static_cast<int>(i)));
      const std::string why = WhyItDoesNotFit(columns_[i], values[i]);
      if (why.empty()) continue;
      throw RuntimeError(kItemNotFound, Tr("%1, ID %2: the column %3 holds %4",
                                           {table_, ValueText(values[0]), columns_[i].name, why}));
    }
    return values;
  }

  Connection& to_;
  std::string table_;
  std::vector<std::string> names_;
  Recordset rows_;
  std::vector<Column> columns_;
};

// Whatever is read while it lives is of one moment.
class OneMoment {
 public:
  explicit OneMoment(Connection& connection) : connection_(connection) { connection_.BeginReading(); }
  ~OneMoment() { connection_.Rollback(); }
  OneMoment(const OneMoment&) = delete;
  OneMoment& operator=(const OneMoment&) = delete;

 private:
  Connection& connection_;
};

void CopyTables(Connection& from, Connection& to, const CopyProgress& progress) {
  const OneMoment moment(from);
  auto tables = AllTables();
  std::erase_if(tables, [](const TableDesign& table) { return table.name == kOfficeFilesTable; });
  int all = 0, done = 0;
  for (const TableDesign& table : tables) all += CountOf(from, table.name);
  for (const TableDesign& table : tables) {
    if (!from.HasTable(table.name)) continue;
    TableCopy(from, to, table).Run([&](int rows) {
      done += rows;
      progress(done * 100 / std::max(all, 1), table.name);
    });
    to.KeepIdsAbove(table.name, from.LargestIdGiven(table.name));
  }
}

}  // namespace

void CopyDatabase(Connection& from, Connection& to, const CopyProgress& progress) {
  if (!from.HasTable("suppliers")) {
    throw RuntimeError(kDatabase, Tr("What is to be copied is no database of this program: it has no table suppliers"));
  }
  to.Begin();
  try {
    BringTo(to, kNewestStep);
    if (CountOf(to, "suppliers") > 0) {
      throw RuntimeError(kDatabase, Tr("The database that is to be filled already has suppliers; nothing was copied"));
    }
    CopyTables(from, to, progress);
    to.Commit();
  } catch (const RuntimeError&) {
    to.Rollback();
    throw;
  }
}

void CopyDatabaseToFile(Connection& from, const std::string& path, const CopyProgress& progress) {
  if (FileExists(path)) {
    throw RuntimeError(kFileAlreadyOpen, Tr("There is a file %1 already; nothing was copied", {path}));
  }
  const UnfinishedFile mine(path);
  const std::string beside = mine.Path() + ".mdb";
  try {
    WriteFile(beside, "");  // an empty file is a database without tables
    Connection to;
    to.Open("dbq=" + beside);
    CopyDatabase(from, to, progress);
    to.Close();
    std::filesystem::rename(beside, NativePath(path));
  } catch (const RuntimeError&) {
    if (FileExists(beside)) DeleteFile(beside);
    throw;
  }
}

void CopyOffice(const std::string& from, const std::string& to, const CopyProgress& progress) {
  Connection source;
  OpenShared(from, source);
  RefuseNewer(source, DatabaseName(from));
  const FilesByName files = OfficeFilesOf(source, FolderOf(WholePath(FileIn(from))));
  if (!IsPostgres(to)) {
    const std::string path = WholePath(FileIn(to));
    CopyDatabaseToFile(source, path, progress);
    try {
      return LayOut(files, FolderOf(path));
    } catch (const RuntimeError&) {
      DeleteFile(path);
      throw;
    }
  }
  Connection target;
  OpenShared(to, target);
  RefuseNewer(target, DatabaseName(to));
  target.Begin();
  try {
    CopyDatabase(source, target, progress);
    StoreOfficeFiles(files, target);
    target.Commit();
  } catch (const RuntimeError&) {
    target.Rollback();
    throw;
  }
}

}  // namespace tarvolinex
