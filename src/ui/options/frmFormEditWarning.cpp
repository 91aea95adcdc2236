#include "ui/options/frmFormEditWarning.h"

#include "controls/Desktop.h"
#include "core/Launcher.h"
#include "core/WebAccount.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr Colour kLink = 0x800000, kLinkUnderPointer = 0xFF0000;
constexpr int kLabels = 4, kAddress = 1;

constexpr const char* kAboutService = Marked(
    "The design of information pages and particularly forms are an advanced part\r\n"
    "of Tarvolinex. A service is provided to help with this area such \r\n"
    "that forms can be designed for you.");
constexpr const char* kAboutAddress =
    Marked("(please click above for further details on the Tarvolinex form design service)");
constexpr const char* kAboutEditing = Marked(
    "If you wish to design/edit your own forms Tarvolinex does rely \r\n"
    "on you having a means to edit HTML style documents. Tarvolinex \r\n"
    "will attempt to launch your default HTML editor for this \r\n"
    "purpose should you click continue. Typically this will be \r\n"
    "Microsoft Word or Microsoft FrontPage. \r\n"
    " \r\n"
    "The calculator is based on the Internet and hence Internet \r\n"
    "Browser technology. At the very least some basic understanding \r\n"
    "of HTML is required should you choose to continue. A list of \r\n"
    "available fields and values that can be incorporated is available \r\n"
    "within the on-line help (please click help for further details) ");

}  // namespace

frmFormEditWarning::frmFormEditWarning(Run& run, std::string pagePath)
    : Window("frmFormEditWarning", Tr("Edit Form")),
      LblWarning(*this, "LblWarning", kLabels),
      chkNotePad(*this, "chkNotePad", -1, Tr("Open form in Windows Notepad")),
      cmdaction(*this, "cmdaction", 3),
      run_(run),
      pagePath_(std::move(pagePath)) {
  const std::string captions[] = {Tr(kAboutService), run.WebServer, Tr(kAboutAddress), Tr(kAboutEditing)};
  for (int i = 0; i < kLabels; ++i) {
    LblWarning(i).SetCaption(captions[i]);
    LblWarning(i).MouseMove = [this, i] {
      LblWarning(kAddress).SetForeColour(i == kAddress ? kLinkUnderPointer : kLink);
    };
  }
  MouseMove = [this] { LblWarning(kAddress).SetForeColour(kLink); };
  LblWarning(kAddress).SetForeColour(kLink);
  LblWarning(kAddress).Click = [this] { OpenDesignService(); };
  constexpr const char* kCaptions[] = {Marked("&Continue"), Marked("&Help"), Marked("C&ancel")};
  for (int i = 0; i < 3; ++i) cmdaction(i).SetCaption(Tr(kCaptions[i]));
  cmdaction(0).Click = [this] {
    OpenEditor();
    Close();
  };
  cmdaction(1).Click = [this] { ShowHelpPage(run_, 2); };
  cmdaction(2).Click = [this] { Close(); };
  KeyUp = [this](Key key) {
    auto* focused = dynamic_cast<CommandButton*>(ActiveControl());
    if (key == Key::Return && focused) focused->Press();  // the link answers by itself
    if (key == Key::Escape) cmdaction(2).Press();
  };
  cmdaction(0).SetFocus();
}

void frmFormEditWarning::OpenEditor() {
  if (!chkNotePad.Value()) {
    LaunchDocument(run_, pagePath_, true);
    return;
  }
  const std::string page = "\"" + NativePath(pagePath_) + "\"";
  ReportLaunch(run_, TheDesktop().ShellExecute("open", "notepad.exe", page, "", kShowNormal));
}

void frmFormEditWarning::OpenDesignService() {
  LaunchDocument(run_, WebAddress(run_.WebServer) + "\\formInfo.asp?ref=" + run_.CustomerReference +
                           "&emai=" + run_.CalculatorPreferences.OrgEmail.Trimmed());
}

}  // namespace tarvolinex
