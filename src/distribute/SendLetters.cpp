#include "distribute/SendLetters.h"

#include <algorithm>
#include <functional>
#include <thread>

#include "distribute/BuildAhead.h"
#include "distribute/Email.h"
#include "distribute/Unattended.h"
#include "platform/RuntimeError.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Ingredients.h"
#include "publish/Template.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

// One run on its way.
class Postman {
 public:
  Postman(Database& database, const LetterRun& run, Reporter& reporter)
      : database_(database), run_(run), reporter_(reporter), prints_(run.branding.folders.data) {}

  void SettleInterrupted() {
    for (Letter& letter : Letters(database_)) {
      if (letter.state == LetterState::Sending)
        Settle(letter, LetterState::Doubtful, Tr("The program ended while it was being sent"));
    }
  }

  void Run() {
    if (!RefreshPages(run_.branding, reporter_)) return;
    letters_ = Letters(database_);
    ahead_.emplace(run_.branding);
    for (std::size_t i = 0; i < letters_.size() && !ended_; ++i) {
      if (letters_[i].state != LetterState::Waiting) continue;
      done_ = i;
      if (Prepare(i)) Deliver(letters_[i]);
    }
    reporter_.SetStatus(false, "", -1);
  }

 private:
  static BuildAhead::Which WhichOf(const Letter& letter) { return {letter.supplierId, letter.sendType}; }

  // Begins what this letter and the next ones need, as far as there is room.
  void BuildFrom(std::size_t index) {
    for (std::size_t i = index; i < letters_.size() && (i == index || ahead_->HasRoom()); ++i) {
      const Letter& letter = letters_[i];
      if (letter.state != LetterState::Waiting || ahead_->Holds(WhichOf(letter))) continue;
      ahead_->Begin(WhichOf(letter), JobFor(database_, run_.branding, letter.supplierId, letter.companyName),
                    reporter_.Now());
    }
  }

  // Everything for the letter's supplier. False when its calculator cannot be made.
  bool Prepare(std::size_t index) {
    Letter& letter = letters_[index];
    if (which_ != WhichOf(letter)) {
      reporter_.SetStatus(false, letter.companyName, Percent());
      BuildFrom(index);
      which_ = WhichOf(letter);
      built_ = ahead_->Take(*which_, reporter_);
      Accompany(letter);
    }
    if (!built_.fault.empty()) Settle(letter, LetterState::Refused, built_.fault);
    if (!uploadFault_.empty()) Mark(letter, LetterState::Waiting, uploadFault_);
    return built_.fault.empty() && uploadFault_.empty() && !ended_;
  }

  // What goes with the file that was built.
  void Accompany(const Letter& letter) {
    for (std::string* text : {&instructions_, &identifier_, &organisation_, &supplier_, &uploadFault_}) text->clear();
    if (!built_.fault.empty()) return;
    const std::string& app = run_.branding.folders.app;
    const Publication& publication = built_.job.publication;
    instructions_ = letter.instructions ? GetInstructions(app, letter.sendType, reporter_) : std::string();
    organisation_ = OrganisationIngredients(run_.branding);
    supplier_ = SupplierIngredients(publication.supplier, publication.forms, prints_);
    if (letter.sendType == kSendLink && WaitForIdentifier()) Upload();
  }

  // An identifier names a second: no two files have the same.
  bool WaitForIdentifier() {
    if (uploaded_ && !Wait(*uploaded_ + std::chrono::seconds(1) - std::chrono::steady_clock::now())) return false;
    uploaded_ = std::chrono::steady_clock::now();
    return true;
  }

  void Upload() {
    Unattended quiet(reporter_.Now());
    const auto uploaded = TransferInstallFile(run_.branding.folders.app, built_.file, run_.web, quiet);
    if (uploaded) identifier_ = *uploaded;
    // The line's or the server's, and not the reader's.
    if (!uploaded) uploadFault_ = quiet.Reports().empty() ? Tr("File Upload failed") : quiet.Reports();
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
    constexpr auto kLook = std::chrono::milliseconds(50);
    while (reporter_.Paused() && Wait(kLook)) continue;
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
      if (!WaitForTurn() || !FindReader(letter)) return;
      const auto failure = TryOnce(letter);
      if (!failure) return;
      if (failure->fate == MailFate::Unknown) {
        Settle(letter, LetterState::Doubtful, failure->reason);
        if (++doubtfulInARow_ == kMostDoubtful) End(*failure);
        return;
      }
      if (failure->fate == MailFate::Refused) return Settle(letter, LetterState::Refused, failure->reason);
      Mark(letter, LetterState::Waiting, failure->reason);
      const bool last = attempt == run_.pauses.size();
      // What keeps everybody's letters back: a setting, or there is no server for the others either.
      if (failure->fate == MailFate::Barred || (last && failure->fate == MailFate::NotTaken)) return End(*failure);
      if (last) return;
      reporter_.SetStatus(false, Tr("Waiting for the mail server"), Percent());
      if (!Wait(run_.pauses[attempt])) return;
    }
  }

  // The contact as it is by now: a corrected name or address is the one, and who is gone gets nothing.
  bool FindReader(Letter& letter) {
    const Row contact = ReadContact(database_, letter.contactId, letter.supplierId);
    const std::string email(contact.Found() ? Trim(contact.Text("Email")) : "");
    if (email.empty()) {
      Settle(letter, LetterState::Refused,
             contact.Found() ? Tr("The contact has no e-mail address any more") : Tr("The contact has been removed"));
      return false;
    }
    const std::string firstName = contact.Text("FirstName");
    const std::string name(Trim(firstName + " " + contact.Text("Surname")));
    if (email == Trim(letter.email) && firstName == letter.firstName && name == letter.contact) return true;
    letter.email = email;
    letter.firstName = firstName;
    letter.contact = name;
    Store([&] { SetLetterReader(database_, letter); });
    return true;
  }

  struct Failure {
    int number;
    MailFate fate;
    std::string reason;
  };
  void End(const Failure& failure) {
    ended_ = true;
    if (reporter_.Stopped()) return;
    ReportFailure(reporter_, Marked("Sending email failed"), failure.reason, RemedyFor(failure.number));
  }

  // nullopt when the message was taken, by this program or another one.
  std::optional<Failure> TryOnce(Letter& letter) {
    const WrittenLetter written =
        Written(letter, run_.branding, built_.job.publication.supplier, instructions_, identifier_, run_.web);
    const std::string app = run_.branding.folders.app;
    MailSession session = NewMailSession(run_.branding.prefs, Tr("Creating Email"), reporter_);
    bool leaving = false;
    try {
      session.SignOn(MailProfilesPath(app), GetDefaultMailProfile(app));
      session.Compose();
      session.AddRecipient(letter.contact, "SMTP:" + letter.email);
      session.SetSubject(written.subject);
      session.SetNoteText(written.text);
      if (letter.sendType != kSendLink) session.Attach(built_.file, written.attachment);
      leaving = true;
      if (!Claim(letter)) return std::nullopt;
      session.Send();
    } catch (const RuntimeError& failure) {
      const bool address = failure.Number() == kMailRecipientRefused && !leaving;
      return Failure{failure.Number(), address ? MailFate::Refused : session.Fate(), failure.Description()};
    }
    letter.subject = written.subject;
    letter.message = written.text;
    doubtfulInARow_ = 0;
    Settle(letter, LetterState::Sent, "");
    return std::nullopt;
  }

  bool Claim(Letter& letter) {
    bool ours = false;
    Store([&] { ours = ClaimLetter(database_, letter.id); });
    if (ours) letter.state = LetterState::Sending;
    return ours;
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
  std::optional<std::chrono::steady_clock::time_point> last_, uploaded_;  // a message left, or a file
  std::optional<BuildAhead> ahead_;
  // What is in hand.
  std::optional<BuildAhead::Which> which_;
  BuildAhead::Built built_;
  std::string uploadFault_, instructions_, identifier_, organisation_, supplier_;
  // So many one after another are no accident of a message.
  static constexpr int kMostDoubtful = 3;
  int doubtfulInARow_ = 0;
};

constexpr const char* kLetters = "letters";

std::string LockPath(const Database& database) {
  return database.Folder() + "\\Letters.lock";
}

RuntimeError InOtherHands(const Database& database) {
  return RuntimeError(kFileAlreadyOpen, Tr("Another running Tarvolinex is sending the letters of the database in %1",
                                           {NativePath(database.Name())}));
}

}  // namespace

PostRoom::PostRoom(Database& database, LetterRun run, Reporter& reporter)
    : database_(database), run_(std::move(run)), reporter_(reporter) {
  try {
    alone_.emplace(LockPath(database), std::chrono::seconds(0), true);
  } catch (const RuntimeError& failure) {
    if (failure.Number() != kFileAlreadyOpen) throw;
    throw InOtherHands(database);
  }
  if (!database.Plain().Hold(kLetters)) throw InOtherHands(database);
  held_.reset(&database.Plain());
  Postman(database_, run_, reporter_).SettleInterrupted();
}

void PostRoom::LetGo::operator()(Connection* server) const {
  try {
    server->LetGo(kLetters);
  } catch (const RuntimeError&) {
    // The server has lost the connection, and lets go itself.
  }
}

void PostRoom::Begin(const std::vector<Letter>& letters) {
  CheckMailSettings(run_.branding, reporter_);
  BeginLetters(database_, letters);
}

void PostRoom::Forget() {
  BeginLetters(database_, {});
}

void PostRoom::Send() {
  Postman(database_, run_, reporter_).Run();
}

}  // namespace tarvolinex
