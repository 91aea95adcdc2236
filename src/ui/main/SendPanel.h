// How a calculator goes out: by e-mail to contacts, or as an install file.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "controls/Controls.h"
#include "core/Run.h"
#include "distribute/Email.h"
#include "platform/text/Translation.h"
#include "store/Contacts.h"

namespace tarvolinex {

// Indexes of SendPanel::CmdCalcGo, and the captions of the last.
enum SendButton { kGoSend = 0, kGoBrowse = 1, kGoCreate = 2, kGoCheckAll = 3 };
inline constexpr const char *kCheckAll = Marked("Check &All"), *kUncheckAll = Marked("Uncheck &All");

class SendPanel {
 public:
  SendPanel(Window& window, Run& run);
  ControlArray<OptionButton> OpCalcCreate;  // send by e-mail, create an install file
  ControlArray<Frame> FraCalCreate;
  ControlArray<Label> LblSend;
  ListView lvSendContacts;
  ControlArray<TextBox> TxtEmail;  // subject, message
  TextBox TxtCalcCreate;
  ComboBox cmboFileType;
  ControlArray<CommandButton> CmdCalcGo;  // send, browse, create, check all

  // Of the last send; each one's dialog sets them anew.
  int SendType = kSendProgram;
  bool WayChosen = false;  // by the user, in this run
  bool IncludeInstructions = false;
  std::array<std::string, 3> Instructions;  // what each way explains to its readers, with aliases

  // The keys of General.INI's "OPTIONS" that the panel remembers. Throws RuntimeError.
  void LoadPath();
  void LoadTexts();

  // Those of them that have an e-mail address; none is ticked.
  void ListContacts(const std::vector<ContactRow>& contacts);
  // The same, with the ticks and the selection that the list has.
  void RenewContacts(const std::vector<ContactRow>& contacts);
  std::vector<Recipient> TickedContacts() const;
  void TickContacts(const std::vector<Recipient>& contacts);

  // 0 the e-mail, 1 the install file.
  void ShowSendFrame(int mode);
  // The path of the install file, with an ending: without one Windows would not start a program nor open an archive.
  void CompletePath();
  // Blocks or frees everything that a click could start.
  void Block(bool blocked);

 private:
  void Wire();
  void CheckAllContacts();
  void BrowseForInstallFile();
  void cmboFileType_Click();
  void TxtCalcCreate_Change();
  Run& run_;
};

}  // namespace tarvolinex
