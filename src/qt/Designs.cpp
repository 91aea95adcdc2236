#include "qt/Designs.h"

#include <QDialog>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>

#include "platform/RuntimeError.h"
#include "ui_FRmCreateDB.h"
#include "ui_FrmAbout.h"
#include "ui_FrmBatch.h"
#include "ui_FrmConflict.h"
#include "ui_FrmIconEdit.h"
#include "ui_FrmImport.h"
#include "ui_FrmKeepQuote.h"
#include "ui_FrmLeaseOrgDetails.h"
#include "ui_FrmMailSettings.h"
#include "ui_FrmMain.h"
#include "ui_FrmOptions.h"
#include "ui_FrmQuotes.h"
#include "ui_FrmRates.h"
#include "ui_FrmReaders.h"
#include "ui_FrmSchedule.h"
#include "ui_FrmSearch.h"
#include "ui_FrmSent.h"
#include "ui_FrmSharedDatabase.h"
#include "ui_FrmSheet.h"
#include "ui_FrmTerms.h"
#include "ui_frmFormEditWarning.h"
#include "ui_frmSendCalc.h"

// The resources of a static library are not found before they have been asked for, outside of any namespace.
static void LoadPictures() {
  Q_INIT_RESOURCE(pictures);
}

namespace tarvolinex {

namespace {

template <typename Design, typename Root>
std::unique_ptr<QWidget> Make() {
  auto root = std::make_unique<Root>();
  Design().setupUi(root.get());
  return root;
}

struct NamedDesign {
  const char* name;
  std::unique_ptr<QWidget> (*make)();
};

constexpr NamedDesign kDesigns[] = {
    {"FRmCreateDB", Make<Ui::FRmCreateDB, QDialog>},  //
    {"FrmAbout", Make<Ui::FrmAbout, QDialog>},
    {"FrmSharedDatabase", Make<Ui::FrmSharedDatabase, QDialog>},
    {"FrmBatch", Make<Ui::FrmBatch, QDialog>},
    {"FrmConflict", Make<Ui::FrmConflict, QDialog>},
    {"FrmSent", Make<Ui::FrmSent, QDialog>},
    {"FrmIconEdit", Make<Ui::FrmIconEdit, QDialog>},
    {"FrmImport", Make<Ui::FrmImport, QDialog>},
    {"FrmKeepQuote", Make<Ui::FrmKeepQuote, QDialog>},
    {"FrmLeaseOrgDetails", Make<Ui::FrmLeaseOrgDetails, QDialog>},
    {"FrmMailSettings", Make<Ui::FrmMailSettings, QDialog>},
    {"FrmMain", Make<Ui::FrmMain, QMainWindow>},
    {"FrmOptions", Make<Ui::FrmOptions, QDialog>},
    {"FrmQuotes", Make<Ui::FrmQuotes, QDialog>},
    {"FrmRates", Make<Ui::FrmRates, QDialog>},
    {"FrmReaders", Make<Ui::FrmReaders, QDialog>},
    {"FrmSchedule", Make<Ui::FrmSchedule, QDialog>},
    {"FrmSearch", Make<Ui::FrmSearch, QDialog>},
    {"FrmSheet", Make<Ui::FrmSheet, QDialog>},
    {"FrmTerms", Make<Ui::FrmTerms, QDialog>},
    {"frmFormEditWarning", Make<Ui::frmFormEditWarning, QDialog>},
    {"frmSendCalc", Make<Ui::frmSendCalc, QDialog>},
};

// What a design file cannot say: a scroll area lets the page behind it show, and Return presses no button by itself,
// because the windows decide what it does.
void Finish(QWidget& root) {
  for (QScrollArea* area : root.findChildren<QScrollArea*>()) {
    area->viewport()->setAutoFillBackground(false);
    if (area->widget()) area->widget()->setAutoFillBackground(false);
  }
  for (QPushButton* button : root.findChildren<QPushButton*>()) button->setAutoDefault(false);
}

}  // namespace

std::unique_ptr<QWidget> MakeDesign(const std::string& windowName) {
  LoadPictures();
  for (const NamedDesign& design : kDesigns) {
    if (windowName != design.name) continue;
    std::unique_ptr<QWidget> root = design.make();
    Finish(*root);
    return root;
  }
  throw RuntimeError(kItemNotFound, "no design for the window " + windowName);
}

std::vector<std::string> DesignNames() {
  std::vector<std::string> names;
  for (const NamedDesign& design : kDesigns) names.emplace_back(design.name);
  return names;
}

}  // namespace tarvolinex
