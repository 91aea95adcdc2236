#include "store/Letters.h"

#include <iterator>

#include "platform/text/Text.h"
#include "store/Row.h"
#include "store/Schema.h"
#include "store/Statements.h"

namespace tarvolinex {

namespace {

constexpr const char* kLettersTable = "Letters";
constexpr const char* kLetterStates[] = {"waiting", "sending", "sent", "refused", "doubtful"};

// A state that nobody knows is a fate that nobody knows.
LetterState LetterStateOf(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kLetterStates); ++i) {
    if (name == kLetterStates[i]) return static_cast<LetterState>(i);
  }
  return LetterState::Doubtful;
}

}  // namespace

const char* NameOf(LetterState state) {
  return kLetterStates[static_cast<std::size_t>(state)];
}

std::vector<Letter> Letters(Database& database) {
  std::vector<Letter> letters;
  if (!database.Plain().HasTable(kLettersTable)) return letters;
  Recordset rows;
  for (rows.Open(statements::kLetters, database.Plain()); !rows.EndOfFile(); rows.MoveNext()) {
    const Row row(rows);
    Letter& letter = letters.emplace_back();
    letter.id = row.Number("ID");
    letter.supplierId = row.Number("SupplierId");
    letter.companyName = row.Text("CompanyName");
    letter.contactId = row.Number("ContactId");
    letter.contact = row.Text("Contact");
    letter.firstName = row.Text("FirstName");
    letter.email = row.Text("Email");
    letter.subject = row.Text("Subject");
    letter.message = ValueText(row.At("Message"));
    letter.sendType = row.Number("Way");
    letter.instructions = ValueTruth(row.At("Instructions"));
    letter.state = LetterStateOf(row.Text("State"));
    letter.detail = row.Text("Detail");
  }
  return letters;
}

void BeginLetters(Database& database, const std::vector<Letter>& letters) {
  Transaction transaction(database);
  database.BringTo(SchemaStep::Letters);
  database.ExecuteStatement(statements::kDeleteLetters);
  for (const Letter& letter : letters) {
    database.ExecuteStatement(
        FillStatement(statements::kInsertLetter, {{"<SUPPLIERID>", std::int64_t{letter.supplierId}},
                                                  {"<COMPANYNAME>", DoubleQuotes(letter.companyName)},
                                                  {"<CONTACTID>", std::int64_t{letter.contactId}},
                                                  {"<CONTACT>", DoubleQuotes(letter.contact)},
                                                  {"<FIRSTNAME>", DoubleQuotes(letter.firstName)},
                                                  {"<EMAIL>", DoubleQuotes(letter.email)},
                                                  {"<SUBJECT>", DoubleQuotes(letter.subject)},
                                                  {"<MESSAGE>", DoubleQuotes(letter.message)},
                                                  {"<WAY>", std::int64_t{letter.sendType}},
                                                  {"<INSTRUCTIONS>", letter.instructions ? "YES" : "NO"}}));
  }
  transaction.Commit();
}

bool ClaimLetter(Database& database, int id) {
  database.Plain().Execute(FillStatement(statements::kClaimLetter, "<ID>", id));
  return database.Plain().ChangedRows() == 1;
}

void SetLetterReader(Database& database, const Letter& letter) {
  database.Plain().Execute(FillStatement(statements::kLetterReader, {{"<CONTACT>", DoubleQuotes(letter.contact)},
                                                                     {"<FIRSTNAME>", DoubleQuotes(letter.firstName)},
                                                                     {"<EMAIL>", DoubleQuotes(letter.email)},
                                                                     {"<ID>", std::int64_t{letter.id}}}));
}

void SetLetterState(Database& database, int id, LetterState state, std::string_view detail) {
  constexpr int kMostInDetail = 250;
  database.Plain().Execute(
      FillStatement(statements::kLetterState, {{"<STATE>", std::string(NameOf(state))},
                                               {"<DETAIL>", DoubleQuotes(FirstCharacters(detail, kMostInDetail))},
                                               {"<ID>", std::int64_t{id}}}));
}

}  // namespace tarvolinex
