// A calculator on its way to a supplier's people.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Reports.h"
#include "distribute/InstallPackage.h"
#include "distribute/Upload.h"
#include "platform/network/Mail.h"
#include "publish/CalculatorFolder.h"
#include "store/Database.h"

namespace tarvolinex {

struct Recipient {
  int id = 0;  // of the contact
  std::string name, email;
};

// One message with a supplier's calculator.
struct Sending {
  Publication publication;
  int supplierId = 0;
  std::vector<Recipient> recipients;
  std::string subject, message;
  int sendType = kSendProgram;
  bool includeInstructions = false;
  std::string instructions;  // what this way explains to its readers, with aliases
  WebAccount web;
};

// The text that explains one way of sending to its readers. A failure is reported and leaves it empty.
std::string GetInstructions(const std::string& appFolder, int sendType, Reporter& reporter);

// The message's text: what the user wrote, for a link its address, and the instructions when they are wanted.
std::string addEmailInstructions(const Sending& sending, std::string_view uploadIdentifier);

// The mail profile that is used; "" for the built-in one.
std::string GetDefaultMailProfile(const std::string& appFolder);
std::string MailProfilesPath(const std::string& appFolder);

// Ready to sign on: knows the organisation as sender and shows its progress with this text. The reporter must outlive
// the session.
MailSession NewMailSession(const CalculatorPreferencesRecord& prefs, const std::string& progressText,
                           Reporter& reporter);

// Finds out, without sending, whether there is a sender and a mail profile to send by. Throws RuntimeError.
void CheckMailSettings(const Branding& branding, Reporter& reporter);

// What the user can do about a failure of that number.
std::string RemedyFor(int number);

// What whoever sends does in between.
struct SendSteps {
  // Asks how the calculator is to travel and says so in the sending; false: it is not sent.
  std::function<bool(Sending& sending)> askHow;
  // The dates of sending in the database are other ones now.
  std::function<void()> datesNoted;
  // Recipients who have got the message already have been left out; those that are left may be read anew.
  std::function<void(Sending& sending)> recipientsChanged;
  // What it returns lives while the calculator is built and sent.
  std::function<std::shared_ptr<void>()> work;
};

// The whole way: checks, builds, packs, uploads, mails, records the date of sending of each recipient. Returns true
// when the message was taken for every one of them; every failure has been reported.
bool SendCalculator(Sending& sending, const SendSteps& steps, Database& database, Reporter& reporter);

}  // namespace tarvolinex
