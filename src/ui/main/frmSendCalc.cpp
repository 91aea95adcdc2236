#include "ui/main/frmSendCalc.h"

#include "core/Aliases.h"
#include "core/Globals.h"
#include "core/Launcher.h"
#include "core/MainWindow.h"
#include "distribute/InstallPackage.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr int kWays = 3;
constexpr int kHelpTopic = 4;

struct Way {
  const char *caption, *hint;
};
constexpr Way kWayTexts[kWays] = {
    {Marked("An &install program, attached"),
     Marked("Installs with one click on Windows, but mail providers often reject programs.")},
    {Marked("A &zip file, attached"),
     Marked("Most mail providers let it through; the reader unpacks it and opens calc.html.")},
    {Marked("A &download link"),
     Marked("Mail providers let links through; the install program is uploaded to the web server first.")},
};

std::string SizeText(int sendType) {
  constexpr std::int64_t kKilobyte = 1024;
  return Tr("The message has at most %1 KB.", {std::to_string(LargestMessage(sendType) / kKilobyte + 1)});
}

}  // namespace

frmSendCalc::frmSendCalc()
    : Window("frmSendCalc", Tr("Send Calculator")),
      lblSendCalc(*this, "lblSendCalc"),
      TxtEmails(*this, "TxtEmails"),
      OpFileType(*this, "OpFileType", kWays),
      LblFileType(*this, "LblFileType", kWays),
      ChkInstructions(*this, "ChkInstructions"),
      cmdaction(*this, "cmdaction", 3) {
  SendConfirmed = false;
  SetCaption(ReplaceAliases("Send <CALCNAME>"));
  lblSendCalc.SetCaption(CaptionWithAliases("The <CALCNAME> for <SUPPLIERNAME> goes to:"));
  std::string names;
  for (const ListView::Row& row : MainForm().send.lvSendContacts.Rows()) {
    if (row.checked) names += (names.empty() ? "" : "\r\n") + row.text;
  }
  TxtEmails.SetText(names);
  TxtEmails.SetLocked(true);
  for (int i = 0; i < kWays; ++i) {
    OpFileType(i).SetCaption(Tr(kWayTexts[i].caption));
    LblFileType(i).SetCaption(Tr(kWayTexts[i].hint) + " " + SizeText(i));
  }
  OpFileType(SendType).SetValue(true);
  ChkInstructions.SetCaption(Tr("In&clude instructions for the reader"));
  ChkInstructions.SetValue(IncludeInstructions);
  const char* captions[] = {Marked("&Send"), Marked("Cancel"), Marked("&Help")};
  for (int i = 0; i < 3; ++i) {
    cmdaction(i).SetCaption(Tr(captions[i]));
    cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  }
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
}

void frmSendCalc::cmdaction_Click(int button) {
  if (button == 2) return ShowHelpPage(kHelpTopic);
  IncludeInstructions = ChkInstructions.Value();
  SendConfirmed = button == 0;
  for (int i = 0; SendConfirmed && i < kWays; ++i) {
    if (OpFileType(i).Value()) SendType = i;
  }
  Close();
}

}  // namespace tarvolinex
