// A calculator on its way to a supplier's people.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/network/Mail.h"

namespace tarvolinex {

// Loads the text that explains one way of sending to its readers into `Instructions`. A failure is reported and leaves
// the text empty.
void GetInstructions(int sendType);

// The message's text: what the user wrote, for a link its address, and the instructions when they are wanted.
std::string addEmailInstructions(std::string_view body, std::string_view uploadIdentifier);

// The mail profile that is used; "" for the built-in one.
std::string GetDefaultMailProfile();
std::string MailProfilesPath();

// Ready to sign on: knows the organisation as sender and shows its progress with this text.
MailSession NewMailSession(const std::string& progressText);

// The whole way: checks, builds, packs, uploads, mails, records the date of sending on each ticked contact.
// askHow shows the dialog that sets `SendType`, `SendConfirmed` and `IncludeInstructions`. Returns true when the
// message was taken for every ticked contact.
bool SendCalculator(const std::function<void()>& askHow);

}  // namespace tarvolinex
