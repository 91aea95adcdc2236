// The library of form pages: its nodes in the tree, the details of one, the import of another.
#include <charconv>

#include "controls/Desktop.h"
#include "core/Globals.h"
#include "core/Reports.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/LivePage.h"
#include "publish/PageText.h"
#include "store/FormPages.h"
#include "store/Forms.h"
#include "store/Statements.h"
#include "ui/options/FrmOptions.h"
#include "ui/options/frmFormEditWarning.h"

namespace tarvolinex {

namespace {

constexpr int kDescription = 0, kLinkName = 1;
constexpr int kEditForm = 0, kImportForm = 1, kViewForm = 2;

std::string CutDescription(std::string_view text) {
  return std::string(FirstCharacters(text, kLongestDescription));
}

// The page's title, else what the user types; empty when there is neither.
std::string AskDescription(const std::string& path) {
  std::string description = CutDescription(PageTitle(ReadPageText(path)));
  if (description.empty()) {
    description =
        CutDescription(TheDesktop()
                           .InputBox(Tr("Please enter a description for the new form"), Tr("For Description"), "")
                           .value_or(""));
  }
  return std::string(Trim(description));
}

}  // namespace

void FrmOptions::WireForms() {
  cmdForm(kEditForm).SetCaption(Tr("Edit Form"));
  cmdForm(kImportForm).SetCaption(Tr("Import Form"));
  cmdForm(kViewForm).SetCaption(Tr("View"));
  cmdForm(kViewForm).SetToolTip(Tr("View Form in Internet Browser"));
  LblForms(kDescription).SetCaption(Tr("Description of form"));
  LblForms(kLinkName).SetCaption(Tr("Name of form as seen by users"));
  for (int i : {kDescription, kLinkName}) {
    TextBox& box = txtForms(i);
    box.Change = [this, i] {
      formDetailsChanged_ = true;
      if (i == kDescription) TreeOptions.SetNodeText(TreeOptions.Selected(), txtForms(i).Text());
    };
    box.Validate = [&box] { box.SetText(EscapeQuotes(box.Text())); };
  }
  ChkFrmAvailable.Click = [this] { formDetailsChanged_ = true; };
  cmdForm(kEditForm).Click = [this] {
    SaveChangedValue();
    frmFormEditWarning warning(FormPagePath(currentFormId_));
    TheDesktop().ShowModal(warning);
  };
  cmdForm(kImportForm).Click = [this] { ImportHTMLform(); };
  cmdForm(kViewForm).Click = [this] { ViewForm(); };
  TreeOptions.DblClick = [this] {
    if (IsFormKey(TreeOptions.Selected())) ViewForm();
  };
}

bool FrmOptions::IsFormKey(const std::string& key) const {
  const TreeView::Node* node = TreeOptions.Find(key);
  return node && node->parent == kFormsKey;
}

void FrmOptions::AddFormsToTree() {
  Recordset& records = TheStore->FormRecords;
  const std::string selected = TreeOptions.Selected();
  for (; !records.EndOfFile(); records.MoveNext()) {
    const auto id = static_cast<int>(ValueNumber(NullToDefault(records.Field("ID"), std::int64_t{0})));
    const std::string key = kFormsKey + std::to_string(id);
    TreeOptions.Remove(key);
    TreeOptions.Add({key, kFormsKey, ValueText(NullToDefault(records.Field("Description")))});
  }
  TreeOptions.Select(selected);
}

void FrmOptions::ShowForm() {
  const std::string_view digits = std::string_view(currentKey_).substr(std::string_view(kFormsKey).size());
  currentFormId_ = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), currentFormId_);
  Recordset& records = TheStore->FormRecords;
  std::string description, linkName;
  bool available = false;
  try {
    records.MoveFirst();
    records.Find("ID=" + std::to_string(currentFormId_));
    description = ValueText(records.Field("Description"));
    linkName = ValueText(records.Field("LinkName"));
    available = ValueTruth(records.Field("available"));
  } catch (const RuntimeError&) {
    // The row has gone: the panel shows an empty one.
  }
  txtForms(kDescription).SetText(description);
  txtForms(kLinkName).SetText(linkName);
  ChkFrmAvailable.SetValue(available);
  formDetailsChanged_ = false;
  FraForms.SetVisible(true);
  cmdForm(kImportForm).SetVisible(true);
}

void FrmOptions::SaveFormDetails() {
  formsListChanged_ = true;
  formDetailsChanged_ = false;
  try {
    SaveFormRow(currentFormId_, {txtForms(kDescription).Text(), txtForms(kLinkName).Text(), ChkFrmAvailable.Value()});
  } catch (const RuntimeError&) {
    ShowError("Save form error");
  }
}

void FrmOptions::DeleteSupplierLinks() {
  try {
    DeleteUnavailableLinks();
  } catch (const RuntimeError&) {
    ShowError("Removing redundant form links");
  }
}

void FrmOptions::ImportHTMLform() {
  SaveChangedValue();
  const std::string path = TheDesktop().OpenFile({Tr("HTML Form Inport"), AppFolder, "", Tr("HTML Files|*.HTM*")});
  if (path.empty()) return;
  const BusyWhile busy;
  try {
    const std::string description = AskDescription(path);
    if (description.empty()) {
      TheDesktop().MessageBox(Tr("Forms require a title, import cancelled"), Tr("No Title"), BoxButtons::Ok,
                              BoxIcon::Information);
      return;
    }
    AddFormPage(description, path);
    TheStore->FormRecords.Open(statements::kForms, TheStore->connection);
    AddFormsToTree();
    TreeOptions.Expand(kFormsKey);
  } catch (const RuntimeError&) {
    ShowError("HTML import Failed");
  }
}

void FrmOptions::ViewForm() {
  const std::string page = FormPagePath(currentFormId_);
  SaveChangedValue();
  SavePreferences();
  // A page that has gone must not end the program.
  if (!FileExists(page)) return ShowError("HTML file creation failed");
  PreviewFormPage(page);
  TheDesktop().DoEvents();
}

}  // namespace tarvolinex
