// The library of form pages: its nodes in the tree, the details of one, the import of another.
#include <charconv>

#include "controls/Desktop.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/PageText.h"
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
  if (database_.ReadOnly()) {
    for (Control* control : {static_cast<Control*>(&cmdForm(kEditForm)), static_cast<Control*>(&cmdForm(kImportForm)),
                             static_cast<Control*>(&ChkFrmAvailable)}) {
      control->SetEnabled(false);
    }
    for (int i : {kDescription, kLinkName}) txtForms(i).SetLocked(true);
  }
  cmdForm(kEditForm).Click = [this] {
    SaveChangedValue();
    frmFormEditWarning warning(run_, FormPagePath(run_.DataFolder, currentFormId_));
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

void FrmOptions::AddFormsToTree(const std::vector<FormRow>& forms) {
  const std::string selected = TreeOptions.Selected();
  for (const FormRow& form : forms) {
    const std::string key = kFormsKey + std::to_string(form.id);
    TreeOptions.Remove(key);
    TreeOptions.Add({key, kFormsKey, form.description});
  }
  TreeOptions.Select(selected);
}

void FrmOptions::ShowForm() {
  const std::string_view digits = std::string_view(currentKey_).substr(std::string_view(kFormsKey).size());
  currentFormId_ = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), currentFormId_);
  FormRow form;
  try {
    form = ReadForm(database_, currentFormId_);
  } catch (const RuntimeError&) {
    // The row has gone: the panel shows an empty one.
  }
  txtForms(kDescription).SetText(form.description);
  txtForms(kLinkName).SetText(form.linkName);
  ChkFrmAvailable.SetValue(form.available);
  formDetailsChanged_ = false;
  FraForms.SetVisible(true);
  cmdForm(kImportForm).SetVisible(true);
}

void FrmOptions::SaveFormDetails() {
  formsListChanged_ = true;
  formDetailsChanged_ = false;
  try {
    SaveFormRow(database_,
                {currentFormId_, txtForms(kDescription).Text(), txtForms(kLinkName).Text(), ChkFrmAvailable.Value()});
  } catch (const RuntimeError&) {
    run_.ShowError("Save form error");
  }
}

void FrmOptions::DeleteSupplierLinks() {
  try {
    DeleteUnavailableLinks(database_);
  } catch (const RuntimeError&) {
    run_.ShowError("Removing redundant form links");
  }
}

void FrmOptions::ImportHTMLform() {
  SaveChangedValue();
  const std::string path = TheDesktop().OpenFile({Tr("HTML Form Inport"), run_.AppFolder, "", Tr("HTML Files|*.HTM*")});
  if (path.empty()) return;
  const BusyWhile busy;
  try {
    const std::string description = AskDescription(path);
    if (description.empty()) {
      TheDesktop().MessageBox(Tr("Forms require a title, import cancelled"), Tr("No Title"), BoxButtons::Ok,
                              BoxIcon::Information);
      return;
    }
    AddFormPage(database_, description, path);
    AddFormsToTree(AllForms(database_));
    TreeOptions.Expand(kFormsKey);
  } catch (const RuntimeError&) {
    run_.ShowError("HTML import Failed");
  }
}

void FrmOptions::ViewForm() {
  const std::string page = FormPagePath(run_.DataFolder, currentFormId_);
  SaveChangedValue();
  SavePreferences();
  // A page that has gone must not end the program.
  if (!FileExists(page)) return run_.ShowError("HTML file creation failed");
  if (Around.previewForm) Around.previewForm(page);
  TheDesktop().DoEvents();
}

}  // namespace tarvolinex
