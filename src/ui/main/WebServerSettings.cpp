// The web server of the mail settings: which one it is, its secret, and whether it takes what is sent as a link.
#include <chrono>

#include "core/Reports.h"
#include "core/Settings.h"
#include "distribute/Progress.h"
#include "distribute/Upload.h"
#include "platform/RuntimeError.h"
#include "platform/text/Translation.h"
#include "ui/main/FrmMailSettings.h"

namespace tarvolinex {

void FrmMailSettings::ShowWebServer() {
  const WebAccount account = OwnWebAccount(run_);
  const bool named = NamesServer(account), typed = named && account.secretCommand.empty();
  std::string note = Tr("The secret belongs to your customer reference. The desktop's key store will keep it.");
  if (!account.secret.empty()) {
    note =
        Tr("The secret stands in Tarvolinex.ini, in the server's name. Enter it here and take it out there: the key "
           "store keeps it better.");
  }
  if (!account.secretCommand.empty()) note = Tr("A command in Tarvolinex.ini prints the secret.");
  if (!named) note = WhatLinksLack(account);
  LblWebServer.SetCaption(
      CaptionOf(named ? Tr("%1, customer reference %2", {account.server, account.customerReference}) : Tr("None")));
  LblNote(kWebServerNote).SetCaption(CaptionOf(note));
  LblMail(kWebSecretCaption).SetVisible(typed);
  TxtWebSecret.SetVisible(typed);
  CmdWebTest.SetVisible(named);
}

void FrmMailSettings::CmdWebTest_Click() {
  WebAccount account = OwnWebAccount(run_);
  if (!TxtWebSecret.Text().empty()) account.secret = TxtWebSecret.Text();
  constexpr std::chrono::seconds kPatience{15};
  std::string said;
  bool good = false, answers = true;
  SetSending(true);
  try {
    const BusyWhile busy;
    const UploadAnswer answer =
        AskUploadPage(account, ShowProgress(run_, Tr("Asking the web server")), {kPatience, kPatience, kPatience});
    good = answer.accepted;
    said = answer.status.empty() ? Tr("It answers, but it is not a server that takes calculators.") : answer.status;
  } catch (const RuntimeError& failure) {
    said = failure.Description();
    answers = failure.Number() != kNotConnected;
  }
  run_.SetStatus(false, "", -1);
  SetSending(false);
  const char* const found =
      good      ? Marked("The web server takes calculators.\r\n\r\n%1")
      : answers ? Marked("The web server takes nothing from here.\r\n\r\n%1")
                : Marked(
                      "The web server does not answer.\r\n\r\n%1\r\n\r\nPlease check your Internet connection and "
                      "the name of the web server in Tarvolinex.ini.");
  const std::string what = Tr(found, {said});
  run_.MessageBox(what, Tr("E-mail Settings"), BoxButtons::Ok, good ? BoxIcon::Information : BoxIcon::Exclamation);
}

bool FrmMailSettings::KeepWebSecret() {
  if (TxtWebSecret.Text().empty()) return true;
  try {
    const BusyWhile busy;
    KeepUploadSecret(OwnWebAccount(run_), TxtWebSecret.Text());
    return true;
  } catch (const RuntimeError& failure) {
    run_.MessageBox(Tr("The web server's secret cannot be kept.\r\n\r\n%1\r\n\r\nWithout a key store a command can "
                       "print it: SecretCommand under [WEB] in Tarvolinex.ini.",
                       {failure.Description()}),
                    Tr("E-mail Settings"), BoxButtons::Ok, BoxIcon::Exclamation);
    TxtWebSecret.SetFocus();
    return false;
  }
}

}  // namespace tarvolinex
