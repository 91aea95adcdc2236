#include "ui/main/frmSendCalc.h"

#include <chrono>

#include "core/Launcher.h"
#include "core/Reports.h"
#include "distribute/InstallPackage.h"
#include "distribute/Upload.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
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

}  // namespace

frmSendCalc::frmSendCalc(Run& run, Sending& sending, SendPanel& panel)
    : Window("frmSendCalc", Tr("Send Calculator")),
      lblSendCalc(*this, "lblSendCalc"),
      TxtEmails(*this, "TxtEmails"),
      OpFileType(*this, "OpFileType", kWays),
      LblFileType(*this, "LblFileType", kWays),
      ChkInstructions(*this, "ChkInstructions"),
      cmdaction(*this, "cmdaction", 3),
      run_(run),
      sending_(sending),
      panel_(panel) {
  SetCaption(run.ReplaceAliases("Send <CALCNAME>"));
  lblSendCalc.SetCaption(run.CaptionWithAliases("The <CALCNAME> for <SUPPLIERNAME> goes to:"));
  std::string names;
  for (const Recipient& to : sending.recipients) names += (names.empty() ? "" : "\r\n") + to.name;
  TxtEmails.SetText(names);
  TxtEmails.SetLocked(true);
  for (int i = 0; i < kWays; ++i) {
    OpFileType(i).SetCaption(Tr(kWayTexts[i].caption));
    LblFileType(i).SetCaption(Tr(kWayTexts[i].hint) + " " + SizeText(i));
  }
  OpFileType(panel.SendType).SetValue(true);
  OfferLink();
  ChkInstructions.SetCaption(Tr("In&clude instructions for the reader"));
  ChkInstructions.SetValue(panel.IncludeInstructions);
  const char* captions[] = {Marked("&Send"), Marked("Cancel"), Marked("&Help")};
  for (int i = 0; i < 3; ++i) {
    cmdaction(i).SetCaption(Tr(captions[i]));
    cmdaction(i).Click = [this, i] { cmdaction_Click(i); };
  }
  AnswerKeys(*this, cmdaction(0), cmdaction(1));
}

std::string frmSendCalc::SizeText(int sendType) const {
  constexpr std::int64_t kKilobyte = 1024;
  const std::size_t text = sending_.message.size() + panel_.Instructions.at(static_cast<std::size_t>(sendType)).size();
  return Tr("The message has at most %1 KB.",
            {std::to_string(LargestMessage(sendType, sending_.publication, text) / kKilobyte + 1)});
}

void frmSendCalc::OfferLink() {
  const std::string lacks = WhatLinksLack(sending_.web);
  if (!lacks.empty()) return LblFileType(kSendLink).SetCaption(CaptionOf(lacks));
  constexpr std::chrono::seconds kPatience{3};
  std::string hint = Tr(kWayTexts[kSendLink].hint);
  try {
    const BusyWhile busy;
    const UploadAnswer answer = AskUploadPage(sending_.web, {}, {kPatience, kPatience, kPatience});
    if (answer.accepted && !answer.status.empty()) {
      hint =
          Tr("The reader sees a page of yours and opens the calculator there with one tap, on a telephone too, or "
             "installs it on Windows.");
      if (!panel_.WayChosen) OpFileType(kSendLink).SetValue(true);
    } else if (!answer.status.empty()) {
      hint = Tr("The web server takes nothing from here.\r\n\r\n%1", {answer.status});
    }
  } catch (const RuntimeError& failure) {
    // An older server knows no such question; whether it takes the file shows when it is sent.
    if (failure.Number() == kNotConnected)
      hint = Tr("The web server does not answer now: %1.", {failure.Description()});
  }
  LblFileType(kSendLink).SetCaption(CaptionOf(ReplaceAll(hint, "\r\n\r\n", " ")) + " " + SizeText(kSendLink));
}

void frmSendCalc::cmdaction_Click(int button) {
  if (button == 2) return ShowHelpPage(run_, kHelpTopic);
  const std::string lacks = WhatLinksLack(sending_.web);
  if (button == 0 && OpFileType(kSendLink).Value() && !lacks.empty()) {
    run_.MessageBox(lacks, Caption(), BoxButtons::Ok, BoxIcon::Exclamation);
    return;
  }
  panel_.IncludeInstructions = ChkInstructions.Value();
  SendConfirmed = button == 0;
  for (int i = 0; SendConfirmed && i < kWays; ++i) {
    if (OpFileType(i).Value()) panel_.SendType = i;
  }
  panel_.WayChosen = panel_.WayChosen || SendConfirmed;
  sending_.sendType = panel_.SendType;
  sending_.includeInstructions = panel_.IncludeInstructions;
  sending_.instructions = panel_.Instructions.at(static_cast<std::size_t>(panel_.SendType));
  Close();
}

}  // namespace tarvolinex
