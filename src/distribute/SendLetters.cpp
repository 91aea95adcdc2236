#include "distribute/SendLetters.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <thread>

#include "core/Aliases.h"
#include "distribute/Email.h"
#include "distribute/Unattended.h"
#include "exchange/Csv.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Ingredients.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

// Contacts that were sent a calculator before.
std::set<int> SentBefore(Database& database) {
  std::set<int> contacts;
  ListDeliveries(database, [&](int, const Delivery& each) {
    if (each.result == "sent") contacts.insert(each.contactId);
  });
  return contacts;
}

bool IsOpen(const Letter& letter) {
  return letter.state == LetterState::Waiting || letter.state == LetterState::Sending;
}

// One run on its way.
class Postman {
 public:
  Postman(Database& database, const LetterRun& run, Reporter& reporter)
      : database_(database), run_(run), reporter_(reporter), prints_(run.branding.folders.data) {}

  void Run() {
    letters_ = Letters(database_);
    for (Letter& letter : letters_) {
      // The run ended while this message was leaving.
      if (letter.state == LetterState::Sending)
        Settle(letter, LetterState::Doubtful, Tr("The program ended while it was being sent"));
    }
    for (std::size_t i = 0; i < letters_.size() && !ended_; ++i) {
      if (letters_[i].state != LetterState::Waiting) continue;
      if (!Prepare(letters_[i])) continue;
      done_ = i;
      Deliver(letters_[i]);
    }
    reporter_.SetStatus(false, "", -1);
  }

 private:
  // Everything for the letter's supplier. False when its calculator cannot be made.
  bool Prepare(Letter& letter) {
    if (job_ && job_->supplierId == letter.supplierId) {
      if (fault_.empty()) return true;
      Settle(letter, LetterState::Refused, fault_);
      return false;
    }
    reporter_.SetStatus(false, letter.companyName, Percent());
    const auto jobs =
        BatchJobs(database_, run_.branding, [&](const Standing& each) { return each.supplierId == letter.supplierId; });
    job_ = jobs.empty() ? BatchJob{letter.supplierId,
                                   letter.companyName,
                                   {run_.branding, {}, {}},
                                   Tr("There is no such supplier any more")}
                        : jobs.front();
    fault_ = Build(letter);
    if (ended_) return false;
    if (!fault_.empty()) Settle(letter, LetterState::Refused, fault_);
    return fault_.empty();
  }

  std::string Build(const Letter& letter) {
    const Folders& folders = run_.branding.folders;
    std::string warnings;
    attachment_ = InstallFilePath(folders.app, letter.sendType);
    const std::string fault =
        MakeOne(*job_, letter.sendType, folders.calculator, attachment_, reporter_.Now(), warnings);
    if (!fault.empty()) return fault;
    instructions_ = letter.instructions ? GetInstructions(folders.app, letter.sendType, reporter_) : std::string();
    organisation_ = OrganisationIngredients(run_.branding);
    supplier_ = SupplierIngredients(job_->publication.supplier, job_->publication.forms, prints_);
    identifier_.clear();
    if (letter.sendType != kSendLink) return {};
    Unattended quiet(reporter_.Now());
    const auto uploaded = TransferInstallFile(folders.app, run_.web, quiet);
    if (uploaded) identifier_ = *uploaded;
    return uploaded ? std::string() : quiet.Reports();
  }

  int Percent() const { return letters_.empty() ? 0 : static_cast<int>(done_ * 100 / letters_.size()); }

  // Lets the windows live. False when the user wants the run to end.
  bool Wait(std::chrono::steady_clock::duration time) {
    constexpr auto kLook = std::chrono::milliseconds(50);
    const auto end = std::chrono::steady_clock::now() + time;
    for (auto now = std::chrono::steady_clock::now(); now < end && !reporter_.Stopped();
         now = std::chrono::steady_clock::now()) {
      std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(kLook, end - now));
      reporter_.DoEvents();
    }
    ended_ = ended_ || reporter_.Stopped();
    return !ended_;
  }

  bool WaitForTurn() {
    if (run_.perMinute > 0 && last_) {
      const auto due = *last_ + std::chrono::milliseconds(60'000 / run_.perMinute);
      if (!Wait(due - std::chrono::steady_clock::now())) return false;
    }
    reporter_.DoEvents();
    ended_ = ended_ || reporter_.Stopped();
    last_ = std::chrono::steady_clock::now();
    return !ended_;
  }

  void Deliver(Letter& letter) {
    reporter_.SetStatus(false, letter.companyName + " - " + letter.contact, Percent());
    for (std::size_t attempt = 0;; ++attempt) {
      if (!WaitForTurn()) return;
      const auto failure = TryOnce(letter);
      if (!failure) return;
      const auto& [number, fate, reason] = *failure;
      if (fate == MailFate::Unknown) return Settle(letter, LetterState::Doubtful, reason);
      const bool account = number == kMailLoginRefused;  // nobody's letter, but everybody's
      if (fate == MailFate::Refused && !account) return Settle(letter, LetterState::Refused, reason);
      Mark(letter, LetterState::Waiting, reason);
      ended_ = ended_ || account || reporter_.Stopped();
      if (ended_) return;
      if (attempt == run_.pauses.size()) {
        ended_ = fate == MailFate::NotTaken;  // no server is there for the others either
        return;
      }
      reporter_.SetStatus(false, Tr("Waiting for the mail server"), Percent());
      if (!Wait(run_.pauses[attempt])) return;
    }
  }

  struct Failure {
    int number;
    MailFate fate;
    std::string reason;
  };
  // nullopt when the message was taken.
  std::optional<Failure> TryOnce(Letter& letter) {
    const WrittenLetter written =
        Written(letter, run_.branding, job_->publication.supplier, instructions_, identifier_, run_.web);
    const std::string app = run_.branding.folders.app;
    MailSession session = NewMailSession(run_.branding.prefs, Tr("Creating Email"), reporter_);
    bool leaving = false;
    try {
      session.SignOn(MailProfilesPath(app), GetDefaultMailProfile(app));
      session.Compose();
      session.AddRecipient(letter.contact, "SMTP:" + letter.email);
      session.SetSubject(written.subject);
      session.SetNoteText(written.text);
      if (letter.sendType != kSendLink) session.Attach(attachment_, written.attachment);
      leaving = true;
      Mark(letter, LetterState::Sending, "");
      session.Send();
    } catch (const RuntimeError& failure) {
      const bool address = failure.Number() == kMailRecipientRefused && !leaving;
      return Failure{failure.Number(), address ? MailFate::Refused : session.Fate(), failure.Description()};
    }
    letter.subject = written.subject;
    letter.message = written.text;
    Settle(letter, LetterState::Sent, "");
    return std::nullopt;
  }

  void Mark(Letter& letter, LetterState state, const std::string& detail) {
    letter.state = state;
    letter.detail = detail;
    Store([&] { SetLetterState(database_, letter.id, state, detail); });
  }

  // The letter's end, its delivery and, when it was taken, the contact's date: together.
  void Settle(Letter& letter, LetterState state, const std::string& detail) {
    letter.state = state;
    letter.detail = detail;
    Delivery delivery = {DeliveryDate(reporter_.Now()),
                         letter.supplierId,
                         letter.companyName,
                         letter.contactId,
                         letter.contact,
                         letter.email,
                         WayName(letter.sendType),
                         NameOf(state),
                         letter.subject,
                         letter.message};
    if (state == LetterState::Refused) delivery.result += ": " + detail;
    Store([&] {
      SetLetterState(database_, letter.id, state, detail);
      if (state == LetterState::Sent) SetDateLastSent(database_, LongDateTime(reporter_.Now()), letter.contactId);
      AddDeliveries(database_, {delivery}, organisation_, supplier_);
    });
  }

  void Store(const std::function<void()>& write) {
    Transaction transaction(database_);
    try {
      write();
    } catch (const RuntimeError& failure) {
      reporter_.ShowError(Tr("Database update failed.\n\n%1", {failure.Description()}), true);
    }
    transaction.Commit();
  }

  Database& database_;
  const LetterRun& run_;
  Reporter& reporter_;
  FormPrints prints_;
  std::vector<Letter> letters_;
  std::size_t done_ = 0;
  bool ended_ = false;
  std::optional<std::chrono::steady_clock::time_point> last_;  // a message left
  // Of the supplier in hand.
  std::optional<BatchJob> job_;
  std::string fault_, attachment_, instructions_, identifier_, organisation_, supplier_;
};

}  // namespace

std::vector<Letter> LettersFor(Database& database, const std::vector<BatchJob>& jobs, const LetterOrder& order) {
  const std::set<int> before = order.toLast ? SentBefore(database) : std::set<int>();
  std::vector<Letter> letters;
  for (const BatchJob& job : jobs) {
    std::set<std::string> addresses;
    for (const ContactRow& contact : ContactsOf(database, job.supplierId)) {
      if (contact.email.empty() || (order.toLast && !before.contains(contact.id))) continue;
      if (!addresses.insert(FoldCase(contact.email)).second) continue;
      Letter letter;
      letter.supplierId = job.supplierId;
      letter.companyName = job.companyName;
      letter.contactId = contact.id;
      letter.contact = contact.name;
      letter.firstName = contact.row.Text("FirstName");
      letter.email = contact.email;
      letter.subject = order.subject;
      letter.message = order.message;
      letter.sendType = order.sendType;
      letter.instructions = order.instructions;
      letters.push_back(letter);
    }
  }
  return letters;
}

WrittenLetter Written(const Letter& letter, const Branding& branding, const SupplierCalcSettingsRecord& supplier,
                      const std::string& instructions, const std::string& uploadIdentifier, const WebAccount& web) {
  const Words words = {branding.prefs, supplier};
  const auto filled = [&](const std::string& text) {
    return ReplaceAllNoCase(ReplaceAliases(text, words), "<FIRSTNAME>", letter.firstName);
  };
  Sending sending = {{branding, supplier, {}}, letter.supplierId,   {},           "", filled(letter.message),
                     letter.sendType,          letter.instructions, instructions, web};
  WrittenLetter written;
  written.to = letter.contact + " <" + letter.email + ">";
  written.subject = filled(letter.subject);
  written.text = addEmailInstructions(sending, uploadIdentifier.empty() ? "..." : uploadIdentifier);
  if (letter.sendType != kSendLink) written.attachment = FileNameOf(InstallFilePath("", letter.sendType));
  return written;
}

int LettersLeft(Database& database) {
  const std::vector<Letter> letters = Letters(database);
  return static_cast<int>(std::count_if(letters.begin(), letters.end(), IsOpen));
}

void SendLetters(Database& database, const LetterRun& run, Reporter& reporter) {
  Postman(database, run, reporter).Run();
}

std::string LetterReport(const std::vector<Letter>& letters) {
  std::string report = "SupplierID,CompanyName,Contact,Email,Result,Detail\n";
  for (const Letter& each : letters) {
    report += std::to_string(each.supplierId) + "," + CsvCell(each.companyName) + "," + CsvCell(each.contact) + "," +
              CsvCell(each.email) + "," + (IsOpen(each) ? "left" : NameOf(each.state)) + "," +
              CsvCell(ReplaceAll(ReplaceAll(each.detail, "\r", ""), "\n", " ")) + "\n";
  }
  return report;
}

}  // namespace tarvolinex
