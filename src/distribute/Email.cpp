#include "distribute/Email.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "core/Reports.h"
#include "core/Settings.h"
#include "distribute/InstallPackage.h"
#include "distribute/LongWork.h"
#include "distribute/Upload.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"
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

// Returns who took the message; nullopt when nobody did.
std::optional<std::string> Mail(const std::vector<Recipient>& recipients, const std::string& uploadIdentifier) {
  const SendPanel& panel = MainForm().send;
  MailSession session = NewMailSession(Tr("Creating Email"));
  const std::vector<std::function<void()>> steps = {
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

void RecordSending(const std::vector<Recipient>& recipients) {
  const std::string date = LongDateTime(TheDesktop().Now());
  {
    Transaction transaction;
    for (const Recipient& to : recipients) SetDateLastSent(date, to.id);
    transaction.Commit();
  }
  ListContacts();
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
  const auto taker = Mail(recipients, identifier);
  TheDesktop().DoEvents();
  if (!taker) return std::nullopt;
  RecordSending(recipients);
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
  if (!CanPack()) return false;
  const std::vector<Recipient> recipients = TickedContacts();
  if (!ReadyToSend(recipients)) return false;
  SendConfirmed = false;
  askHow();
  if (!SendConfirmed) return false;
  const auto sent = BuildAndSend(recipients);
  if (!sent) return false;
  TheDesktop().MessageBox(*sent, Tr("Email"), BoxButtons::Ok, BoxIcon::Information);
  return true;
}

}  // namespace tarvolinex
