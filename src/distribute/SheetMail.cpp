#include "distribute/SheetMail.h"

#include "distribute/Email.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

std::string MailSheet(const std::string& appFolder, const CalculatorPreferencesRecord& prefs, const SheetMail& mail,
                      Reporter& reporter) {
  reporter.SetStatus(true, "Creating Email", -1);
  try {
    MailSession session = NewMailSession(prefs, Tr("Creating Email"), reporter);
    session.SignOn(MailProfilesPath(appFolder), GetDefaultMailProfile(appFolder));
    session.Compose();
    session.AddRecipient(mail.customer, "SMTP:" + mail.to);
    session.SetSubject(mail.subject);
    session.SetNoteText(mail.message);
    session.Attach(mail.path, mail.attachedAs);
    session.Send();
    session.SignOff();
    reporter.SetStatus(false, "", -1);
    return session.Taker();
  } catch (const RuntimeError& failure) {
    ReportFailure(reporter, Marked("Sending email failed"), failure.Description(), RemedyFor(failure.Number()));
    return {};
  }
}

}  // namespace tarvolinex
