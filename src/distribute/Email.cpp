#include "distribute/Email.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "controls/Desktop.h"
#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "distribute/InstallPackage.h"
#include "distribute/LongWork.h"
#include "distribute/SentMail.h"
#include "distribute/Upload.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Clock.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/CalculatorFolder.h"
#include "publish/PageText.h"
#include "store/Contacts.h"
#include "store/Statements.h"
#include "store/Suppliers.h"

namespace tarvolinex {

namespace {

constexpr const char* kTwoLines = "\r\n\r\n";
constexpr int kDivisionByZero = 11;

struct Recipient {
  int id;
  std::string name, email;
};

std::vector<Recipient> TickedContacts() {
  std::vector<Recipient> ticked;
  for (const ListView::Row& row : MainForm().send.lvSendContacts.Rows()) {
    if (row.checked) ticked.push_back({IdOfKey(row.key), row.text, row.cells.at(0)});
  }
  return ticked;
}

std::vector<SentMail> AsSent(const std::vector<Recipient>& recipients) {
  const std::string date = LongDateTime(TheDesktop().Now());
  std::vector<SentMail> mail;
  for (const Recipient& to : recipients) mail.push_back({CurrentSupplierId, to.id, date, to.name});
  return mail;
}

std::string NamesOf(const std::vector<SentMail>& mail) {
  std::string names;
  for (const SentMail& each : mail) names += (names.empty() ? "" : "\n") + each.name;
  return names;
}

bool ReadyToSend(const std::vector<Recipient>& recipients) {
  const auto& texts = MainForm().send.TxtEmail;
  Desktop& desktop = TheDesktop();
  if (recipients.empty()) {
    desktop.MessageBox(Tr("You must select at least one contact to email"), Tr("No Contacts Selected"), BoxButtons::Ok,
                       BoxIcon::Exclamation);
    return false;
  }
  if (texts(0).Text().empty()) {
    desktop.MessageBox(Tr("You must enter a Subject for your email"), Tr("No subject"), BoxButtons::Ok,
                       BoxIcon::Exclamation);
    return false;
  }
  return !texts(1).Text().empty() || desktop.MessageBox(Tr("Your email has no message, continue?"), Tr("No Message"),
                                                        BoxButtons::YesNo, BoxIcon::Information) == Answer::Yes;
}

void RememberTexts() {
  const auto& texts = MainForm().send.TxtEmail;
  const std::string message = ReplaceAll(ReplaceAll(texts(1).Text(), "\r\n", "\n"), "\n", "|+|");
  WriteIni("General", "OPTIONS", "LASTSUBJECT", texts(0).Text());
  WriteIni("General", "OPTIONS", "LASTMSG", message);
}

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

// One step of the mail. False when the send has to end.
bool MailStep(const std::function<void()>& step) {
  try {
    step();
    return true;
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDivisionByZero || failure.Number() == kMailSignedOnAlready) return true;
    if (failure.Number() == kNotConnected) {
      ReportFailure(
          Marked("Failed to connect to remote host.\r\n\r\nPlease check your Internet connection and try again"),
          failure.Description());
      return true;
    }
    ReportFailure(Marked("Sending email failed"), failure.Description(), RemedyFor(failure.Number()));
    return false;
  }
}

// Returns who took the message; nullopt when nobody did. Then `onItsWay` holds what is still to be noted.
std::optional<std::string> Mail(const std::vector<Recipient>& recipients, const std::string& uploadIdentifier,
                                std::optional<MailOnItsWay>& onItsWay) {
  const SendPanel& panel = MainForm().send;
  MailSession session = NewMailSession(Tr("Creating Email"));
  const std::vector<std::function<void()>> steps = {
      // Building and uploading may have taken minutes.
      [&] { TryToNote(AsSent(recipients)); },
      [&] { onItsWay.emplace(AsSent(recipients)); },
      [&] { session.SignOn(MailProfilesPath(), GetDefaultMailProfile()); },
      [&] { session.Compose(); },
      [&] {
        for (const Recipient& to : recipients) session.AddRecipient(to.name, "SMTP:" + to.email);
      },
      [&] {
        session.SetSubject(panel.TxtEmail(0).Text());
        session.SetNoteText(addEmailInstructions(panel.TxtEmail(1).Text(), uploadIdentifier));
      },
      [&] {
        if (SendType != kSendLink) session.Attach(InstallFilePath(), FileNameOf(InstallFilePath()));
      },
      [&] { session.Send(); },
      [&] { session.SignOff(); },
  };
  for (const auto& step : steps) {
    if (!MailStep(step)) return std::nullopt;
  }
  return session.Taker();
}

// Notes the date of sending. A failure ends the program as any statement's does, but not before the user knows who has
// got the message.
void RecordSending(const std::vector<Recipient>& recipients, MailOnItsWay& onItsWay) {
  const bool remembered = onItsWay.Remember();
  const std::string date = LongDateTime(TheDesktop().Now());
  std::vector<ContactDate> dates;
  for (const Recipient& to : recipients) dates.push_back({to.id, date});
  try {
    SetDatesLastSent(dates, true);
  } catch (const RuntimeError& failure) {
    const std::string next = Tr(
        remembered ? Marked("The program remembers this: the next send of this supplier notes it and leaves them out.")
                   : Marked("This could not be written down anywhere. Please do not send to them again."));
    const std::string report = Tr("Database update failed.\n\n%1", {failure.Description()}),
                      who = Tr("The message has gone out already to:\n\n%1", {NamesOf(onItsWay.Mail())});
    const std::string text = report + "\n\n" + who + "\n\n" + next;
    ShowError(text, true);
  }
  ForgetRememberedMail(CurrentSupplierId);
  ListContacts();
}

bool Among(const std::vector<SentMail>& mail, int contact) {
  return std::any_of(mail.begin(), mail.end(), [&](const SentMail& each) { return each.contact == contact; });
}

// Takes the ticks of contacts that have got this supplier's last message already, which only could not be noted then,
// unless the user wants them to get another.
void LeaveOutWhoHasGotIt() {
  std::vector<SentMail> known = RememberedMail();
  std::erase_if(known, [](const SentMail& mail) { return mail.supplier != CurrentSupplierId; });
  if (known.empty()) return;
  const std::vector<SentMail> ticked = AsSent(TickedContacts());
  std::erase_if(known, [&](const SentMail& mail) { return !Among(ticked, mail.contact); });
  ListContacts();  // with the dates that have just been noted
  const bool again =
      known.empty() ||
      TheDesktop().MessageBox(
          Tr("The message of %1 has gone out to these already; only the date could not be noted then:\n\n%2\n\n"
             "Send to them again?",
             {known.front().date, NamesOf(known)}),
          Tr("Email"), BoxButtons::YesNo, BoxIcon::Question) == Answer::Yes;
  ListView& list = MainForm().send.lvSendContacts;
  for (int row = 0; row < list.Count(); ++row) {
    const int id = IdOfKey(list.At(row).key);
    list.SetChecked(row, Among(ticked, id) && (again || !Among(known, id)));
  }
  if (!known.empty()) ForgetRememberedMail(CurrentSupplierId);
}

// Everything that runs with the window blocked. Returns the text to show when it succeeded.
std::optional<std::string> BuildAndSend(const std::vector<Recipient>& recipients) {
  const LongWork work;
  SetStatus(false, "Preparing Emails", 0);
  BuildCalculatorFolder();
  RememberTexts();
  if (!BuildDistFiles(false)) return std::nullopt;
  TheDesktop().DoEvents();
  std::string identifier;
  if (SendType == kSendLink) {
    const auto uploaded = TransferInstallFile();
    if (!uploaded) return std::nullopt;
    identifier = *uploaded;
  }
  SetStatus(true, "Creating Email", -1);
  std::optional<MailOnItsWay> onItsWay;
  const auto taker = Mail(recipients, identifier, onItsWay);
  TheDesktop().DoEvents();
  if (!taker) return std::nullopt;
  RecordSending(recipients, *onItsWay);
  SetStatus(false, "", -1);
  const std::string sent = ReplaceAliases(
      "<CALCNAME> has been sent successfully by Tarvolinex.\n\r\nPlease check your email application to verify");
  // Without a profile the user did not choose who takes it.
  return GetDefaultMailProfile().empty() ? sent + kTwoLines + Tr("The message went to %1.", {*taker}) : sent;
}

}  // namespace

void GetInstructions(int sendType) {
  std::string& text = Instructions.at(static_cast<std::size_t>(sendType));
  text.clear();
  try {
    // The lines are joined by line ends; none stands before the first.
    const std::string lines = ReadPageText(AppFolder + "\\inst" + std::to_string(sendType) + ".txt");
    text = lines.substr(std::min(lines.size(), std::string_view("\r\n").size()));
  } catch (const RuntimeError&) {
    ShowError("Instruction File load failed");
  }
}

std::string addEmailInstructions(std::string_view body, std::string_view uploadIdentifier) {
  std::string text(body), instructions;
  if (IncludeInstructions) {
    text += kTwoLines;
    instructions = ReplaceAliases(Instructions.at(static_cast<std::size_t>(SendType)));
  }
  if (SendType == kSendLink) {
    text += kTwoLines + std::string("http://") + WebServer + "/download/Get.asp?ID=" + std::string(uploadIdentifier) +
            kTwoLines;
  }
  return text + instructions;
}

std::string MailProfilesPath() {
  return AppFolder + "\\Mail.INI";
}

std::string GetDefaultMailProfile() {
  return DefaultMailProfileName(MailProfilesPath());
}

MailSession NewMailSession(const std::string& progressText) {
  MailSession session;
  session.DefaultSender = {CalculatorPreferences.OrgContactName.Trimmed(), CalculatorPreferences.OrgEmail.Trimmed()};
  if (session.DefaultSender.name.empty()) session.DefaultSender.name = CalculatorPreferences.OrgCompanyName.Trimmed();
  session.Progress = ShowProgress(progressText);
  return session;
}

bool SendCalculator(const std::function<void()>& askHow) {
  std::vector<Recipient> recipients = TickedContacts();
  if (!ReadyToSend(recipients)) return false;
  if (!CanPack()) return false;
  // Before anything is built, packed and uploaded in vain.
  const bool noted = MailStep([&] {
    TryToNote(AsSent(recipients));
    NoteRememberedMail();
  });
  if (!noted) return false;
  LeaveOutWhoHasGotIt();
  recipients = TickedContacts();
  if (recipients.empty()) {
    TheDesktop().MessageBox(Tr("All of them have got the message; nothing was sent."), Tr("Email"), BoxButtons::Ok,
                            BoxIcon::Information);
    return true;
  }
  SendConfirmed = false;
  askHow();
  if (!SendConfirmed) return false;
  const auto sent = BuildAndSend(recipients);
  if (!sent) return false;
  TheDesktop().MessageBox(*sent, Tr("Email"), BoxButtons::Ok, BoxIcon::Information);
  return true;
}

}  // namespace tarvolinex
