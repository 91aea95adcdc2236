#include "cli/CommandLine.h"

#include <algorithm>
#include <iostream>

#include "cli/Commands.h"
#include "platform/RuntimeError.h"
#include "platform/text/Encoding.h"

namespace tarvolinex {

namespace {

struct Command {
  const char* name;
  const char* summary;
  const char* usage;
  int (*run)(Run&, const std::vector<std::string>&);
  bool usesFolders = true;  // app folder and data folder
  bool writesFolders = false;
  const char* onlyFile = "";
};

constexpr Command kCommands[] = {
    {"quote", "price leases from a CSV file",
     R"(usage: tarvolinex quote [--supplier FILE|ID] [--general FILE] [INPUT.csv|-] [--output FILE]

Prices one lease a row. The first line names the columns, in any order; a column that is missing is 0:
  Mode, CapitalCost, DepositMode, DepositValue, DepositPercent, AdvancedPayments, NumberOfPayments, Quarterly,
  ResidualValue, ResidualPercent, Maintenance, ApplyPremium, Yield, CommissionPercent, CommissionValue, Payment, CapLock
Writes, row for row: CapitalCost, DepositValue, ResidualValue, ResidualPercent, Yield, CommissionPercent,
  CommissionValue, Payment, PaymentIncTax, NetCapital, DepositIncTax, ResidualIncTax, PremiumYield
Money has four decimals, a rate is the shortest decimal that reads back as the same number.

  --supplier FILE|ID  rate card: a record file (Supplier.dat) or a supplier of the database; without it there are no
                      bands, so every yield and commission has to be given
  --general FILE      preferences with the tax rate (default: General.dat of the app folder)
  --output FILE       write there instead of to standard output; a name that ends in ".xlsx" gives a spreadsheet
Without INPUT, or with "-", rows come from standard input. A cell that is not a number is an error that names its line
and column; nothing is then written.
)",
     RunQuote},
    {"schedule", "what is paid when, to the penny",
     R"(usage: tarvolinex schedule [--supplier FILE|ID] [--general FILE] [--start YYYY-MM-DD] [--internal] [INPUT.csv|-]
                           [--output FILE.csv|FILE.xlsx]

Prices the rows as quote does (tarvolinex quote --help) and writes the lines of each: Row, Number, Date, Kind, Amount,
Tax, AmountIncTax. Kind is deposit, advance, payment or residual; amounts have two decimals.

  --start DAY      the day of the deposit or the payments in advance (default: today); payments follow every month or
                   every third one, on the same day or the month's last
  --internal       also Interest, Principal and Balance, which is what would settle the lease after the line
  --output FILE    write there instead of to standard output; a name that ends in ".xlsx" gives a spreadsheet
A row that cannot be priced is an error that names its line; nothing is then written.
)",
     RunSchedule},
    {"compare", "price leases at several terms",
     R"(usage: tarvolinex compare [--supplier FILE|ID] [--general FILE] --terms N,N,... [INPUT.csv|-]
                          [--output FILE.csv|FILE.xlsx]

Prices each row as quote does (tarvolinex quote --help), once for each number of payments instead of its own, and
writes Row, NumberOfPayments, Payment, PaymentIncTax, Total, TotalIncTax. Totals are the sums of the schedule. A row
that cannot be priced at one of the terms is an error that names its line; nothing is then written.
)",
     RunCompare},
    {"quotes", "keep quotes in the database and list them",
     R"(usage: tarvolinex quotes keep --supplier ID [--customer TEXT] [--equipment TEXT] [--valid-until YYYY-MM-DD]
                              [INPUT.csv|-]
       tarvolinex quotes list [--supplier ID] [--output FILE.csv|FILE.xlsx]
       tarvolinex quotes show NUMBER
       tarvolinex quotes sheet NUMBER --output FILE.pdf

keep prices the rows of INPUT (see "quote --help") on the supplier's rate card, keeps each as a quote and prints their
numbers, one a line. A row that cannot be priced is an error that names its line; nothing is then kept.
list writes CSV: Number, Date, SupplierID, CompanyName, Customer, Equipment, CapitalCost, NumberOfPayments, Payment,
  PaymentIncTax, ValidUntil, State (open, accepted, declined, expired). Money has two decimals, days are YYYY-MM-DD.
show prints a quote as one JSON object: its details, what was asked (AskedCapitalCost, ...), what it came to, and the
  supplier's record and the preferences that priced it, as "record show" prints them.
sheet writes the quote sheet (see "sheet --help") of what was quoted then.

  --supplier ID     the supplier that is quoted; of list: that supplier's quotes alone
  --output FILE     write there; a name that ends in ".xlsx" gives a spreadsheet
  --valid-until     the last day on which the quote is valid; without it, it does not expire
)",
     RunQuotes},
    {"record", "show or change a preference record",
     R"(usage: tarvolinex record show FILE
       tarvolinex record write FILE

show prints the record (General.dat or Supplier.dat, told apart by their sizes) as one JSON object: money as a decimal
text, reserved bytes as hexadecimal digits under the name of their offset (Reserved32).
write reads such an object from standard input and changes the fields that it names; the others keep what the file
holds. A file that does not exist is made; the names of the fields tell which record it is.
)",
     RunRecord, false},
    {"suppliers", "list the suppliers of the database",
     R"(usage: tarvolinex suppliers

Prints CSV with the columns ID, CompanyName, Tel, Town, PostCode, in the order of the names.
)",
     RunSuppliers},
    {"database", "copy a whole database, or look it through",
     R"(usage: tarvolinex database copy --from FILE|STRING --to FILE|STRING
       tarvolinex database check [FILE|STRING]

copy brings every row with its ID from one database to another: to a new file, or into a database on a server that has
no suppliers yet. All of it is stored or nothing; the database that it comes from stays as it is. The form pages,
pictures and icons beside a file are not copied: the first desk that opens the database on the server brings its own.
check prints a line for everything that is wrong: contacts, form links and deliveries that lead nowhere, rate cards that
cannot price, forms without a page, quotes that cannot be read. The exit status is then 1.

  FILE      a database file
  STRING    as after --database: "driver={PostgreSQL};server=HOST;port=N;database=NAME;uid=USER;sslmode=MODE"
)",
     RunDatabase},
    {"export", "write the suppliers or contacts into a table",
     R"(usage: tarvolinex export suppliers|contacts [--output FILE.csv|FILE.xlsx]

Writes every column of the table, in its order and that of the IDs; of contacts ID, SupplierID, CompanyName and then
the others. CSV is UTF-8 with its mark, lines end in CR LF, money and rates are the shortest decimals, switches are Yes
or No, and a text that a spreadsheet would run as a formula has an apostrophe before it. "import" takes it back.

  --output FILE    write there instead of to standard output; a name that ends in ".xlsx" gives a spreadsheet
)",
     RunExport},
    {"import", "take suppliers or contacts from a table or an old database",
     R"(usage: tarvolinex import suppliers|contacts FILE.csv [--dry-run]
       tarvolinex import database FILE.mdb [--dry-run]

Reads CSV with commas, semicolons or tabs, in UTF-8, UTF-16 with its mark or Windows-1252, and prints Line, Result (new,
changed, unchanged, refused) and Detail for each row. The first line names the columns as "export" does, in any order;
those that are missing stay as they are, or in a new supplier are the default supplier's. A supplier is found by its
ID, then by name and post code; a contact by its ID, then by its name at its supplier. All rows are stored, or, when
one is refused, none. Numbers have a decimal point, or a comma where that can be nothing else.

database reads the tables suppliers, DefaultSupplier, contacts, forms and SupplierFormLink of an old database file,
through mdb-tables and mdb-export of the package mdbtools. The Detail begins with the table.

  --dry-run        only print what would be done
)",
     RunImport},
    {"preferences", "change the organisation's preferences",
     R"(usage: tarvolinex preferences write

Reads a JSON object from standard input, with field names as "record show" prints them, changes those fields of the app
folder's General.dat, and makes the calculator's pages anew. Fields that are not named keep their values. On a shared
database they are the office's, and every desk gets them.
)",
     RunPreferences, true, true},
    {"publish", "build a supplier's calculator folder",
     R"(usage: tarvolinex publish --supplier ID
       tarvolinex publish --all|--stale --output DIR

Builds the folder "calculator" of the app folder for the supplier and prints its path. calc.html in it is the
calculator. A linked form whose page is missing is a warning; the rest is published.

With --all, or --stale for those whose last sent calculator is out of date, each supplier's is built in a folder of its
own in DIR, named by the ID and the name, and "report.csv" there says what became of each: ID, CompanyName, Result
(done or failed), Detail, Path. A supplier that fails does not stop the others; the exit status is then 1.
)",
     RunPublish, true, true},
    {"package", "pack a supplier's calculator into one file",
     R"(usage: tarvolinex package --supplier ID --output FILE.exe|FILE.zip
       tarvolinex package --all|--stale --as exe|zip --output DIR

Builds the supplier's calculator folder and packs it: a name that ends in ".zip" gives a plain archive, any other a
Windows program that installs the calculator. Prints the file's path. A file that exists is replaced only with --yes.
With --all or --stale a file for each supplier goes into DIR, with "report.csv" as publish writes it; files of an
earlier time are replaced.
)",
     RunPackage, true, true},
    {"send", "e-mail a supplier's calculator to its contacts",
     R"(usage: tarvolinex send --supplier ID --contact ID ... --as exe|zip|link --subject TEXT --message TEXT
                       [--instructions]
       tarvolinex send --all|--stale --to all|last --as exe|zip|link --subject TEXT --message TEXT [--instructions]
                       [--per-minute N] [--dry-run] [--resume]
       tarvolinex send --resume [--per-minute N] [--dry-run]

Builds and packs the supplier's calculator and sends one message to the contacts, in the way that Mail.INI of the app
folder says; without it through the local sendmail, or into the folder "Outbox". The day of sending is noted with each
contact. Who has got a message that could not be noted is left out of the next one, unless --yes is given.

  --contact ID     a contact of the supplier with an e-mail address; once for each
  --as exe         with an install program attached, which many mail providers reject
  --as zip         with a zip file attached
  --as link        with a link to the install program, which is uploaded to the web server first
  --instructions   adds the text that explains to the reader what to do

With --all, or --stale for suppliers whose last sent calculator is out of date, each reader gets a message of his own;
<FIRSTNAME>, <SUPPLIERNAME> and <CALCNAME> in subject and message stand for his. Prints SupplierID, CompanyName,
Contact, Email, Result, Detail: sent, refused with the server's words, doubtful (it may have been taken and is not sent
again by itself) or left.

  --to all|last    every contact with an address, or those who were sent one before
  --per-minute N   at most so many messages a minute
  --dry-run        prints each message as it will be; nothing is written anywhere
  --resume         goes on with a run that was stopped, with what it was begun with; nobody gets two
)",
     RunSend, true, true},
    {"status", "which published calculators are out of date",
     R"(usage: tarvolinex status [--output FILE.csv|FILE.xlsx]

Writes ID, CompanyName, State, LastSent, As, Changes for every supplier, in the order of the names. State is never
(nothing has been sent by mail), current or stale; Changes says what has changed since, in words.
)",
     RunStatus},
    {"sent", "list what has gone out",
     R"(usage: tarvolinex sent [--supplier ID] [--output FILE.csv|FILE.xlsx]

Writes Date, SupplierID, CompanyName, Contact, Email, As, Result: one row a calculator and reader. As is exe, zip, link
or folder, Result is sent, doubtful (it may have been taken), refused with the server's words, or made for a file or
folder that somebody hands on.
)",
     RunSent},
    {"sheet", "write a quote sheet for a customer",
     R"(usage: tarvolinex sheet --supplier ID [--customer TEXT] [--equipment TEXT] [--reference TEXT]
                        [--start YYYY-MM-DD] [--valid-until YYYY-MM-DD] [--schedule] [INPUT.csv|-] --output FILE.pdf

Prices the rows of INPUT as "quote" does and writes a PDF on A4: one quote, or several variants side by side. What it
says stands in QuoteSheet.html of the app folder.

  --customer TEXT     for whom it is
  --equipment TEXT    what is leased
  --start DAY         of the lease (default: today); payments fall due a month, or three, after it and so on
  --valid-until DAY   until when the offer stands
  --schedule          with every payment
A row that cannot be priced is an error that names its line; nothing is then written.
)",
     RunSheet, true, false, "QuoteSheet.html"},
    {"live", "fill an enquiry page for a supplier",
     R"(usage: tarvolinex live --supplier ID PAGE.html

Writes the page with its markers filled, and with the form that e-mails the answers, beside it as PAGE_live.html, and
prints that path. The figures are those of an empty quote over 12 months.
)",
     RunLive},
};

const Command* FindCommand(const std::string& name) {
  const auto* found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                   [&](const Command& command) { return command.name == name; });
  return found == std::end(kCommands) ? nullptr : found;
}

// Where the value of an option goes that has one; nullptr for every other word.
std::string* ValueOf(const std::string& word, ProgramOptions& options) {
  if (word == "--app-folder") return &options.appFolder;
  if (word == "--data-folder") return &options.dataFolder;
  return word == "--database" ? &options.database : nullptr;
}

}  // namespace

ProgramOptions ParseProgramOptions(const std::vector<std::string>& arguments) {
  ProgramOptions options;
  std::size_t i = 0;
  for (; i < arguments.size() && arguments[i].rfind('-', 0) == 0; ++i) {
    const std::string& word = arguments[i];
    if (word == "--help" || word == "-h") {
      options.help = true;
    } else if (word == "--version") {
      options.version = true;
    } else if (word == "--yes") {
      options.yes = true;
    } else if (std::string* value = ValueOf(word, options)) {
      if (i + 1 == arguments.size()) {
        options.error = word + (word == "--database" ? " needs a connection string" : " needs a folder");
        return options;
      }
      *value = arguments[++i];
    } else {
      options.error = "unknown option " + word;
      return options;
    }
  }
  if (i == arguments.size()) return options;
  options.command = arguments[i];
  options.arguments.assign(arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1, arguments.end());
  if (!FindCommand(options.command)) options.error = "unknown command " + options.command;
  const auto asksFor = [&](const char* word) {
    return std::find(options.arguments.begin(), options.arguments.end(), word) != options.arguments.end();
  };
  if (asksFor("--help") || asksFor("-h")) options.help = true;
  if (asksFor("--yes")) options.yes = true;
  std::erase(options.arguments, "--yes");
  return options;
}

std::string UsageText() {
  std::string text =
      "usage: tarvolinex [--app-folder DIR] [--data-folder DIR] [--database STRING] [COMMAND [ARGUMENTS]]\n\n"
      "Without a command the window opens. Commands:\n";
  for (const Command& command : kCommands) {
    text += "  " + std::string(command.name) + std::string(14 - std::string(command.name).size(), ' ') +
            command.summary + "\n";
  }
  return text +
         "\n  --app-folder DIR   where the program keeps its files; made when it is missing (default: the program's\n"
         "                     own folder where its delivered files lie in it, else $XDG_DATA_HOME/tarvolinex)\n"
         "  --data-folder DIR  where the database lies (default: as remembered, else the app folder)\n"
         "  --database STRING  the database on a server, "
         "\"driver={PostgreSQL};server=HOST;port=N;database=NAME;uid=USER;\n"
         "                     sslmode=MODE\", or a file, \"dbq=DIR/Tarvolinex.mdb\"; DIR is then the data folder\n"
         "  --yes              answer every question with yes; without it a command takes the safe answer\n"
         "  --help             this text, or with a command the command's own\n"
         "  --version          the program's version\n"
         "\nExit status: 0 done, 1 a reported failure, 2 a mistake in the words of the command.\n";
}

std::string UsageText(const std::string& command) {
  const Command* found = FindCommand(command);
  return found ? found->usage : std::string();
}

bool CommandUsesFolders(const std::string& command) {
  const Command* found = FindCommand(command);
  return found && found->usesFolders;
}

bool WritesFolders(const ProgramOptions& options) {
  const Command* found = FindCommand(options.command);
  return found && found->writesFolders && !IsDryRun(options);
}

bool IsDryRun(const ProgramOptions& options) {
  return std::find(options.arguments.begin(), options.arguments.end(), "--dry-run") != options.arguments.end();
}

std::string_view OnlyFileOfCommand(const std::string& command) {
  const Command* found = FindCommand(command);
  return found ? found->onlyFile : "";
}

bool FlushOutput() {
  std::cout.flush();
  if (std::cout) return true;
  std::cerr << "tarvolinex: standard output cannot be written\n";
  return false;
}

int RunCommand(const ProgramOptions& options, Run& run) {
  try {
    const int status = FindCommand(options.command)->run(run, options.arguments);
    if (!FlushOutput()) return kFailed;
    return status == kDone && run.ErrorShown ? kFailed : status;
  } catch (const UsageError& mistake) {
    std::cerr << "tarvolinex " << options.command << ": " << mistake.text << "\n\n" << UsageText(options.command);
    return kUsageError;
  } catch (const RuntimeError& failure) {
    std::cerr << "tarvolinex " << options.command << ": " << Readable(failure.Description()) << '\n';
    return kFailed;
  }
}

}  // namespace tarvolinex
