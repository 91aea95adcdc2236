// The shown supplier's calculator: previewed, sent, made into an install file.
#include <memory>

#include "core/Launcher.h"
#include "core/Settings.h"
#include "distribute/Email.h"
#include "distribute/InstallPackage.h"
#include "distribute/Standing.h"
#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/FolderFiles.h"
#include "store/Forms.h"
#include "ui/main/FrmMain.h"
#include "ui/main/LongWork.h"
#include "ui/main/frmSendCalc.h"

namespace tarvolinex {

Publication FrmMain::Calculator() {
  Publication calculator = {OwnBranding(), run.SupplierCalcSettings, {}};
  try {
    calculator.forms = LinkedForms(database, shown.CurrentSupplierId);
  } catch (const RuntimeError&) {
    run.ShowError("Failed setting up calculator", true);
  }
  return calculator;
}

bool FrmMain::MayPublish() {
  const std::string obstacle =
      shown.CurrentSupplierId == 0 ? run.ReplaceAliases("There is no <SUPPLIER> to publish for") : shown.RateCardFault;
  if (obstacle.empty()) return true;
  run.MessageBox(obstacle, run.ReplaceAliases("<CALCNAME>"), BoxButtons::Ok, BoxIcon::Exclamation);
  return false;
}

void FrmMain::PreviewCalculator() {
  if (!MayPublish() || !CanPublish(run.CalculatorPreferences, run.OwnWords(), run)) return;
  BuildCalculatorFolder(Calculator(), run);
  DeleteFileIfPresent(run, run.CalculatorFolder() + "LastCalc.dat");
  LaunchDocument(run, run.CalculatorFolder() + "calc_test.html");
}

void FrmMain::PreviewFormPage(const std::string& pagePath) {
  const Enquiry enquiry = {run.CalculatorPreferences, run.SupplierCalcSettings, quote.Quote, run.AppFolder};
  LaunchDocument(run, CreateLivePage(pagePath, run.DataFolder + "\\logo", enquiry, run));
}

void FrmMain::SendCalculator() {
  if (!MayStore() || !SaveShown() || !MayPublish()) return;
  Sending sending;
  sending.publication = Calculator();
  sending.supplierId = shown.CurrentSupplierId;
  sending.recipients = send.TickedContacts();
  sending.subject = send.TxtEmail(0).Text();
  sending.message = send.TxtEmail(1).Text();
  sending.web = OwnWebAccount(run);
  SendSteps steps;
  steps.askHow = [this](Sending& asked) {
    frmSendCalc choice(run, asked, send);
    TheDesktop().ShowModal(choice);
    return choice.SendConfirmed;
  };
  steps.datesNoted = [this] { contacts.ListContacts(); };
  steps.recipientsChanged = [this](Sending& asked) {
    send.TickContacts(asked.recipients);
    asked.recipients = send.TickedContacts();
  };
  steps.work = [this] { return std::make_shared<LongWork>(*this); };
  tarvolinex::SendCalculator(sending, steps, database, run);
  standing.LookAt(shown.CurrentSupplierId);
}

void FrmMain::CreateInstallFile() {
  if (!SaveShown() || !MayPublish() || !CanPack(OwnBranding(), run)) return;
  send.CompletePath();
  const std::string path = send.TxtCalcCreate.Text();
  WriteIni(run.AppFolder, "General", "OPTIONS", "LASTINSTALLFILE", path);
  {
    const LongWork work(*this);
    const Publication calculator = Calculator();
    BuildCalculatorFolder(calculator, run);
    if (!BuildDistFiles(OwnBranding(), kSendProgram, path, run)) return;
    NoteMade(database, shown.CurrentSupplierId, calculator, EndsWithNoCase(path, ".zip") ? "zip" : "exe", run);
  }
  run.SetStatus(false, "", -1);
  run.MessageBox(Tr("Calculator install file created succesfully"), Tr("Calculator Install File"), BoxButtons::Ok,
                 BoxIcon::Information);
}

}  // namespace tarvolinex
