#include <algorithm>
#include <array>

#include "cli/ChosenSupplier.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "core/Globals.h"
#include "core/MainWindow.h"
#include "distribute/Email.h"
#include "distribute/InstallPackage.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "store/Contacts.h"

namespace tarvolinex {

namespace {

// The words of --as, by send type.
constexpr std::array<const char*, 3> kWays = {"exe", "zip", "link"};

int WayOf(const std::string& word) {
  const auto* found = std::find(kWays.begin(), kWays.end(), word);
  if (found == kWays.end()) throw UsageError{"--as is one of exe, zip, link"};
  return static_cast<int>(found - kWays.begin());
}

void Tick(ListView& list, const std::string& contact) {
  const int row = list.Find("ID" + contact);
  if (row < 0) {
    throw RuntimeError(kItemNotFound, "The supplier has no contact with the ID " + contact + " and an e-mail address");
  }
  list.SetChecked(row, true);
}

}  // namespace

int RunSend(const std::vector<std::string>& arguments) {
  const Arguments parsed(arguments, {"--supplier", "--contact", "--as", "--subject", "--message"}, {"--instructions"},
                         0);
  const std::string id = SupplierIdOf(parsed);
  const auto contacts = parsed.Values("--contact");
  if (contacts.empty()) throw UsageError{"--contact ID is needed, once for each contact"};
  const int way = WayOf(parsed.Value("--as"));
  MainWindow form;
  ChooseSupplierToPublish(id);
  ListContacts();
  for (const std::string& contact : contacts) Tick(form.send.lvSendContacts, contact);
  form.send.TxtEmail(0).SetText(parsed.Value("--subject"));
  form.send.TxtEmail(1).SetText(ReplaceAll(ReplaceAll(parsed.Value("--message"), "\r\n", "\n"), "\n", "\r\n"));
  const bool instructions = parsed.Has("--instructions");
  if (instructions) GetInstructions(way);
  const bool sent = SendCalculator([&] {
    SendType = way;
    IncludeInstructions = instructions;
    SendConfirmed = true;
  });
  return sent ? kDone : kFailed;
}

}  // namespace tarvolinex
