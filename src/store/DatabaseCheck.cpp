#include "store/DatabaseCheck.h"

#include <functional>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "store/Forms.h"
#include "store/KeptQuotes.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

// Rows that lead nowhere: what is said of each stands before and behind its first column.
struct Orphans {
  const char* table;
  const char* statement;
  const char* before;
  const char* behind;
};

constexpr Orphans kOrphans[] = {
    {"contacts",
     "SELECT ID FROM contacts WHERE Supplierid IS NULL OR Supplierid NOT IN (SELECT ID FROM suppliers) ORDER BY ID",
     "contact ", ": its supplier does not exist"},
    {"SupplierFormLink",
     "SELECT SupplierId FROM SupplierFormLink WHERE SupplierId<>0 AND SupplierId NOT IN (SELECT ID FROM suppliers) "
     "ORDER BY SupplierId",
     "form link of supplier ", ": there is no such supplier"},
    {"SupplierFormLink",
     "SELECT SupplierId FROM SupplierFormLink WHERE FormId NOT IN (SELECT ID FROM Forms) ORDER BY SupplierId",
     "form link of supplier ", ": its form does not exist"},
    {"Deliveries",
     "SELECT ID FROM Deliveries WHERE Message NOT IN (SELECT ID FROM DeliveredContents) OR OrganisationContent NOT IN "
     "(SELECT ID FROM DeliveredContents) OR SupplierContent NOT IN (SELECT ID FROM DeliveredContents) ORDER BY ID",
     "delivery ", ": what went out is missing"},
};

using Found = std::vector<std::string>;

void FindOrphans(Connection& connection, Found& found) {
  for (const Orphans& each : kOrphans) {
    if (!connection.HasTable(each.table)) continue;
    Recordset rows;
    for (rows.Open(each.statement, connection); !rows.EndOfFile(); rows.MoveNext()) {
      found.push_back(each.before + ValueText(rows.Field(0)) + each.behind);
    }
  }
}

void FindBadRates(Database& database, Found& found) {
  Recordset rows;
  for (rows.Open(FillStatement(statements::kTableById, "<TABLE>", std::string("suppliers")), database.Plain());
       !rows.EndOfFile(); rows.MoveNext()) {
    try {
      static_cast<void>(ReadSupplierSettings(Row(rows)));
    } catch (const RuntimeError& failure) {
      found.push_back("supplier " + ValueText(rows.Field("ID")) + ": " + failure.Description());
    }
  }
}

// The pages of a file lie beside it, those of a server in it.
bool HasPage(Database& database, const std::string& page) {
  Connection& connection = database.Plain();
  if (connection.IsFile()) return FileExists(page);
  if (!connection.HasTable(kOfficeFilesTable)) return false;
  Recordset found;
  found.Open(FillStatement(statements::kOfficeFileId, "<NAME>", "Forms/" + FileNameOf(page)), connection);
  return !found.EndOfFile();
}

void FindMissingPages(Database& database, Found& found) {
  for (const FormRow& form : AllForms(database)) {
    const std::string page = FormPagePath(database.Folder(), form.id);
    if (form.available && !HasPage(database, page)) {
      found.push_back("form " + std::to_string(form.id) + " (" + form.description + "): its page is missing: " + page);
    }
  }
}

void FindUnreadableQuotes(Database& database, Found& found) {
  std::vector<int> numbers;
  try {
    ListQuotes(database, CalendarDay(), [&](const QuoteListRow& row) { numbers.push_back(row.number); });
  } catch (const RuntimeError& failure) {
    found.push_back(failure.Description());
  }
  for (const int number : numbers) {
    try {
      ReadQuote(database, number);
    } catch (const RuntimeError& failure) {
      found.push_back(failure.Description());
    }
  }
}

// What the file says of its own pages.
void AskTheFile(Connection& connection, Found& found) {
  if (!connection.IsFile()) return;
  Recordset rows;
  for (rows.Open("PRAGMA integrity_check", connection); !rows.EndOfFile(); rows.MoveNext()) {
    if (const std::string said = ValueText(rows.Field(0)); said != "ok") found.push_back("the file: " + said);
  }
}

}  // namespace

std::vector<std::string> CheckDatabase(Database& database) {
  Found found;
  AskTheFile(database.Plain(), found);
  FindOrphans(database.Plain(), found);
  FindBadRates(database, found);
  FindMissingPages(database, found);
  FindUnreadableQuotes(database, found);
  return found;
}

}  // namespace tarvolinex
