#include "distribute/Email.h"

#include <algorithm>
#include <optional>

#include "core/Aliases.h"
#include "core/Settings.h"
#include "distribute/Progress.h"
#include "distribute/SentMail.h"
#include "distribute/Standing.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Ingredients.h"
#include "publish/PageText.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

constexpr const char* kTwoLines = "\r\n\r\n";
constexpr int kDivisionByZero = 11;

std::string NamesOf(const std::vector<SentMail>& mail) {
  std::string names;
  for (const SentMail& each : mail) names += (names.empty() ? "" : "\n") + each.name;
  return names;
}

// One sending on its way.
class Dispatch {
 public:
  Dispatch(Sending& sending, const SendSteps& steps, Database& database, Reporter& reporter)
      : sending_(sending), steps_(steps), database_(database), reporter_(reporter) {}

  bool ReadyToSend();
  // Before anything is built, packed and uploaded in vain.
  bool NoteEarlierMail();
  void LeaveOutWhoHasGotIt();
  // Everything that runs with the window blocked. Returns the text to show when it succeeded.
  std::optional<std::string> BuildAndSend();

 private:
  const Folders& Places() const { return sending_.publication.branding.folders; }
  SentList List() const { return {Places().app, database_.Folder()}; }
  std::vector<SentMail> AsSent() const;
  std::vector<SentMail> AsSentNow() const;
  void NoteAs(const char* result);
  void RememberTexts() const;
  bool MailStep(const std::function<void()>& step);
  std::optional<std::string> Mail(const std::string& uploadIdentifier);
  void RecordSending();

  Sending& sending_;
  const SendSteps& steps_;
  Database& database_;
  Reporter& reporter_;
  std::string text_;                      // of the message, with all that is added to it
  std::optional<MailOnItsWay> onItsWay_;  // what is still to be noted
};

std::vector<SentMail> Dispatch::AsSent() const {
  const std::string date = LongDateTime(reporter_.Now());
  std::vector<SentMail> mail;
  for (const Recipient& to : sending_.recipients) mail.push_back({sending_.supplierId, to.id, date, to.name});
  return mail;
}

bool Dispatch::ReadyToSend() {
  if (sending_.recipients.empty()) {
    reporter_.MessageBox(Tr("You must select at least one contact to email"), Tr("No Contacts Selected"),
                         BoxButtons::Ok, BoxIcon::Exclamation);
    return false;
  }
  if (sending_.subject.empty()) {
    reporter_.MessageBox(Tr("You must enter a Subject for your email"), Tr("No subject"), BoxButtons::Ok,
                         BoxIcon::Exclamation);
    return false;
  }
  return !sending_.message.empty() || reporter_.MessageBox(Tr("Your email has no message, continue?"), Tr("No Message"),
                                                           BoxButtons::YesNo, BoxIcon::Information) == Answer::Yes;
}

void Dispatch::RememberTexts() const {
  const std::string message = ReplaceAll(ReplaceAll(sending_.message, "\r\n", "\n"), "\n", "|+|");
  WriteIni(Places().app, "General", "OPTIONS", "LASTSUBJECT", sending_.subject);
  WriteIni(Places().app, "General", "OPTIONS", "LASTMSG", message);
}

// One step of the mail. False when the send has to end.
bool Dispatch::MailStep(const std::function<void()>& step) {
  try {
    step();
    return true;
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDivisionByZero || failure.Number() == kMailSignedOnAlready) return true;
    if (failure.Number() == kNotConnected) {
      ReportFailure(
          reporter_,
          Marked("Failed to connect to remote host.\r\n\r\nPlease check your Internet connection and try again"),
          failure.Description());
      return true;
    }
    ReportFailure(reporter_, Marked("Sending email failed"), failure.Description(), RemedyFor(failure.Number()));
    return false;
  }
}

bool Dispatch::NoteEarlierMail() {
  return MailStep([&] {
    TryToNote(database_, AsSent());
    NoteRememberedMail(List(), database_);
  });
}

bool Among(const std::vector<SentMail>& mail, int contact) {
  return std::any_of(mail.begin(), mail.end(), [&](const SentMail& each) { return each.contact == contact; });
}

// Contacts that have got this supplier's last message already, which only could not be noted then, unless the user
// wants them to get another.
void Dispatch::LeaveOutWhoHasGotIt() {
  std::vector<SentMail> known = RememberedMail(List());
  std::erase_if(known, [&](const SentMail& mail) { return mail.supplier != sending_.supplierId; });
  if (known.empty()) return;
  const std::vector<SentMail> ticked = AsSent();
  std::erase_if(known, [&](const SentMail& mail) { return !Among(ticked, mail.contact); });
  steps_.datesNoted();
  const bool again =
      known.empty() ||
      reporter_.MessageBox(
          Tr("The message of %1 has gone out to these already; only the date could not be noted then:\n\n%2\n\n"
             "Send to them again?",
             {known.front().date, NamesOf(known)}),
          Tr("Email"), BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes;
  std::erase_if(sending_.recipients, [&](const Recipient& to) { return !again && Among(known, to.id); });
  steps_.recipientsChanged(sending_);
  if (!known.empty()) ForgetRememberedMail(List(), sending_.supplierId);
}

// Returns who took the message; nullopt when nobody did.
std::optional<std::string> Dispatch::Mail(const std::string& uploadIdentifier) {
  const std::string app = Places().app, attached = InstallFilePath(app, sending_.sendType);
  text_ = addEmailInstructions(sending_, uploadIdentifier);
  MailSession session = NewMailSession(sending_.publication.branding.prefs, Tr("Creating Email"), reporter_);
  const std::vector<std::function<void()>> steps = {
      // Building and uploading may have taken minutes.
      [&] { TryToNote(database_, AsSent()); },
      [&] { onItsWay_.emplace(List(), AsSentNow()); },
      [&] { session.SignOn(MailProfilesPath(app), GetDefaultMailProfile(app)); },
      [&] { session.Compose(); },
      [&] {
        for (const Recipient& to : sending_.recipients) session.AddRecipient(to.name, "SMTP:" + to.email);
      },
      [&] {
        session.SetSubject(sending_.subject);
        session.SetNoteText(text_);
      },
      [&] {
        if (sending_.sendType != kSendLink) session.Attach(attached, FileNameOf(attached));
      },
      [&] {
        try {
          session.Send();
        } catch (const RuntimeError&) {
          if (session.Fate() == MailFate::Unknown) NoteAs("doubtful");
          throw;
        }
      },
      [&] { session.SignOff(); },
  };
  for (const auto& step : steps) {
    if (!MailStep(step)) return std::nullopt;
  }
  return session.Taker();
}

// Notes the date of sending. A failure ends the program as any statement's does, but not before the user knows who has
// got the message.
void Dispatch::RecordSending() {
  const bool remembered = onItsWay_->Remember();
  const std::string date = LongDateTime(reporter_.Now());
  std::vector<ContactDate> dates;
  for (const Recipient& to : sending_.recipients) dates.push_back({to.id, date});
  try {
    SetDatesLastSent(database_, dates, true);
  } catch (const RuntimeError& failure) {
    const std::string next = Tr(
        remembered ? Marked("The program remembers this: the next send of this supplier notes it and leaves them out.")
                   : Marked("This could not be written down anywhere. Please do not send to them again."));
    const std::string report = Tr("Database update failed.\n\n%1", {failure.Description()}),
                      who = Tr("The message has gone out already to:\n\n%1", {NamesOf(onItsWay_->Mail())});
    const std::string text = report + "\n\n" + who + "\n\n" + next;
    reporter_.ShowError(text, true);
  }
  NoteAs("sent");
  ForgetRememberedMail(List(), sending_.supplierId);
  steps_.datesNoted();
}

// With all that is to be known of the message later.
std::vector<SentMail> Dispatch::AsSentNow() const {
  const Publication& publication = sending_.publication;
  std::string organisation, supplier;
  try {
    FormPrints prints(Places().data);
    organisation = OrganisationIngredients(publication.branding);
    supplier = SupplierIngredients(publication.supplier, publication.forms, prints);
  } catch (const RuntimeError&) {
    // Told when the delivery is noted; the mail goes all the same.
  }
  std::vector<SentMail> mail = AsSent();
  for (std::size_t i = 0; i < mail.size(); ++i) {
    const Recipient& to = sending_.recipients[i];
    mail[i].delivery = {DeliveryDate(reporter_.Now()),
                        sending_.supplierId,
                        publication.supplier.CompanyName.Trimmed(),
                        to.id,
                        to.name,
                        to.email,
                        WayName(sending_.sendType),
                        "sent",
                        sending_.subject,
                        text_};
    mail[i].organisationIngredients = organisation;
    mail[i].supplierIngredients = supplier;
  }
  return mail;
}

void Dispatch::NoteAs(const char* result) {
  std::vector<Delivery> deliveries;
  for (const SentMail& each : onItsWay_->Mail()) {
    deliveries.push_back(each.delivery);
    deliveries.back().result = result;
  }
  NoteDelivery(database_, sending_.publication, deliveries, reporter_);
}

std::optional<std::string> Dispatch::BuildAndSend() {
  const std::shared_ptr<void> work = steps_.work();
  const Branding& branding = sending_.publication.branding;
  reporter_.SetStatus(false, "Preparing Emails", 0);
  BuildCalculatorFolder(sending_.publication, reporter_);
  RememberTexts();
  if (!BuildDistFiles(branding, sending_.sendType, std::nullopt, reporter_)) return std::nullopt;
  reporter_.DoEvents();
  std::string identifier;
  if (sending_.sendType == kSendLink) {
    const auto uploaded =
        TransferInstallFile(Places().app, InstallFilePath(Places().app, kSendLink), sending_.web, reporter_);
    if (!uploaded) return std::nullopt;
    identifier = *uploaded;
  }
  reporter_.SetStatus(true, "Creating Email", -1);
  const auto taker = Mail(identifier);
  reporter_.DoEvents();
  if (!taker) return std::nullopt;
  RecordSending();
  reporter_.SetStatus(false, "", -1);
  const std::string sent = ReplaceAliases(
      "<CALCNAME> has been sent successfully by Tarvolinex.\n\r\nPlease check your email application to verify",
      {branding.prefs, sending_.publication.supplier});
  // Without a profile the user did not choose who takes it.
  return GetDefaultMailProfile(Places().app).empty() ? sent + kTwoLines + Tr("The message went to %1.", {*taker})
                                                     : sent;
}

}  // namespace

std::string RemedyFor(int number) {
  switch (number) {
    case kMailLoginRefused:
      return Tr("Please check the user name, the password and the server under Options > E-mail Settings.");
    case kMailRecipientRefused:
      return Tr("Nobody has got the message. Please check the e-mail addresses of the contacts.");
    case kDatabase:
      return Tr(
          "Please close other programs that use the database, look whether there is room on its disk, and try "
          "again.");
    case kDiskFull:
      return Tr("Please make room on the disk and try again.");
    default:
      return Tr("Please try again later, or check how mail is sent under Options > E-mail Settings.");
  }
}

std::string GetInstructions(const std::string& appFolder, int sendType, Reporter& reporter) {
  try {
    // The lines are joined by line ends; none stands before the first.
    const std::string lines = ReadPageText(appFolder + "\\inst" + std::to_string(sendType) + ".txt");
    return lines.substr(std::min(lines.size(), std::string_view("\r\n").size()));
  } catch (const RuntimeError&) {
    reporter.ShowError("Instruction File load failed");
    return {};
  }
}

std::string addEmailInstructions(const Sending& sending, std::string_view uploadIdentifier) {
  std::string text = sending.message, instructions;
  if (sending.includeInstructions) {
    text += kTwoLines;
    instructions =
        ReplaceAliases(sending.instructions, {sending.publication.branding.prefs, sending.publication.supplier});
  }
  if (sending.sendType == kSendLink) {
    text += kTwoLines + WebAddress(sending.web.server) + "/download/Get.asp?ID=" + std::string(uploadIdentifier) +
            kTwoLines;
  }
  return text + instructions;
}

std::string MailProfilesPath(const std::string& appFolder) {
  return appFolder + "\\Mail.INI";
}

std::string GetDefaultMailProfile(const std::string& appFolder) {
  return DefaultMailProfileName(MailProfilesPath(appFolder));
}

MailSession NewMailSession(const CalculatorPreferencesRecord& prefs, const std::string& progressText,
                           Reporter& reporter) {
  MailSession session;
  session.DefaultSender = {prefs.OrgContactName.Trimmed(), prefs.OrgEmail.Trimmed()};
  if (session.DefaultSender.name.empty()) session.DefaultSender.name = prefs.OrgCompanyName.Trimmed();
  session.Progress = ShowProgress(reporter, progressText);
  return session;
}

void CheckMailSettings(const Branding& branding, Reporter& reporter) {
  MailSession session = NewMailSession(branding.prefs, "", reporter);
  session.SignOn(MailProfilesPath(branding.folders.app), GetDefaultMailProfile(branding.folders.app));
  session.Compose();
}

bool SendCalculator(Sending& sending, const SendSteps& steps, Database& database, Reporter& reporter) {
  Dispatch dispatch(sending, steps, database, reporter);
  if (!dispatch.ReadyToSend()) return false;
  if (!CanPack(sending.publication.branding, reporter)) return false;
  if (!dispatch.NoteEarlierMail()) return false;
  dispatch.LeaveOutWhoHasGotIt();
  if (sending.recipients.empty()) {
    reporter.MessageBox(Tr("All of them have got the message; nothing was sent."), Tr("Email"), BoxButtons::Ok,
                        BoxIcon::Information);
    return true;
  }
  if (!steps.askHow(sending)) return false;
  const auto sent = dispatch.BuildAndSend();
  if (!sent) return false;
  reporter.MessageBox(*sent, Tr("Email"), BoxButtons::Ok, BoxIcon::Information);
  return true;
}

}  // namespace tarvolinex
