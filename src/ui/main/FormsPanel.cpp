#include "ui/main/FormsPanel.h"

#include <vector>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/FolderFiles.h"
#include "store/Forms.h"
#include "store/Suppliers.h"

namespace tarvolinex {

FormsPanel::FormsPanel(Window& window, Run& run, Database& database, ShownSupplier& shown)
    : FraForms(window, "FraForms", -1, Tr("Available Forms/Information pages")),
      LvwForms(window, "LvwForms"),
      run_(run),
      database_(database) {
  LvwForms.CheckBoxes = true;
  LvwForms.Columns() = {{Tr("Form"), "", 4000}};
  LvwForms.ItemCheck = [this, &shown](int) {
    FormLinksChanged = TicksChanged = true;
    shown.SupplierChanged = true;
  };
  LvwForms.DblClick = [this] { LvwForms_DblClick(); };
}

std::vector<ListView::Row> FormsPanel::AvailableRows() const {
  std::vector<ListView::Row> rows;
  for (const FormRow& form : AvailableForms(database_)) {
    if (!FileExists(FormPagePath(run_.DataFolder, form.id))) continue;
    rows.push_back({"ID" + std::to_string(form.id),
                    std::string(Trim(form.linkName)),
                    {},
                    Tr("Double click to view <%1> form", {std::string(Trim(form.description))})});
  }
  return rows;
}

bool FormsPanel::Follow(int supplierId) {
  std::set<std::string> listed;
  for (const ListView::Row& row : LvwForms.Rows()) listed.insert(row.key);
  LvwForms.Renew(AvailableRows());
  if (supplierId != loadedSupplier_) return false;
  for (int row = 0; row < LvwForms.Count(); ++row) {
    // One that has just come into the list has had no tick to change.
    const std::string& key = LvwForms.At(row).key;
    if (!listed.contains(key)) LvwForms.SetChecked(row, loaded_.contains(IdOfKey(key)));
  }
  return TakeStored(StoredLinks(supplierId));
}

void FormsPanel::LoadFormsList() {
  run_.SetStatus(false, "Loading forms List", 30);
  std::vector<ListView::Row> rows;
  try {
    rows = AvailableRows();
  } catch (const RuntimeError& failure) {
    if (failure.Number() == kDatabaseGone) throw;
    run_.ShowError(failure.Description());
  }
  LvwForms.BeginFill();
  LvwForms.Clear();
  for (ListView::Row& row : rows) LvwForms.Add(std::move(row));
  LvwForms.EndFill();
  FormLinksChanged = false;
  run_.SetStatus(false, "", -1);
}

void FormsPanel::LoadSupplierFormLinks(int supplierId) {
  run_.SetStatus(false, run_.ReplaceAliases("Getting Forms"), 40);
  try {
    ClearTicks();  // first, so that a failed read leaves no ticks of another supplier
    const std::vector<int> links = FormLinksOf(database_, supplierId);
    for (const int form : links) LvwForms.SetChecked(LvwForms.Find("ID" + std::to_string(form)), true);
    loadedSupplier_ = supplierId;
    loaded_ = {links.begin(), links.end()};
    if (supplierId == 0) defaults_ = loaded_;
  } catch (const RuntimeError&) {
    run_.ShowError(run_.ReplaceAliases("Error Getting <SUPPLIER> List"));
  }
  FormLinksChanged = false;
  run_.SetStatus(false, "", -1);
}

void FormsPanel::SaveSupplierFormLinks(int supplierId) {
  if (supplierId == 0 && !FormLinksChanged) return;
  run_.SetStatus(false, "Saving froms", 60);
  std::set<int> elsewhere;  // forms that somebody else has chosen, and that this list does not have yet
  if (supplierId != 0 && supplierId == loadedSupplier_) {
    const std::set<int> links = StoredLinks(supplierId);
    for (const int form : links) {
      if (!loaded_.contains(form) && LvwForms.Find("ID" + std::to_string(form)) < 0) elsewhere.insert(form);
    }
    TakeStored(links);
  }
  std::vector<int> links;
  for (const auto& row : LvwForms.Rows()) {
    if (row.checked) links.push_back(IdOfKey(row.key));
  }
  links.insert(links.end(), elsewhere.begin(), elsewhere.end());
  if (supplierId == 0) links = NewDefaultLinks();
  ReplaceFormLinks(database_, supplierId, links);
  if (supplierId != 0) {
    loadedSupplier_ = supplierId;
    loaded_ = {links.begin(), links.end()};
  }
  FormLinksChanged = false;
  run_.SetStatus(false, "", -1);
}

std::set<int> FormsPanel::StoredLinks(int supplierId) const {
  try {
    Recordset records;
    records.Open(FillStatement(statements::kFormLinks, "<ID>", supplierId), database_.Plain());
    std::set<int> links;
    for (; !records.EndOfFile(); records.MoveNext())
      links.insert(static_cast<int>(ValueNumber(records.Field("Formid"))));
    return links;
  } catch (const RuntimeError&) {
    return loaded_;  // the statement that writes them will tell
  }
}

// A tick that reads as it did follows what somebody else has stored.
std::vector<int> FormsPanel::NewDefaultLinks() {
  const std::set<int> now = StoredLinks(0), ticked = Ticked();
  std::set<int> links, all = now;
  all.insert(ticked.begin(), ticked.end());
  for (const int form : all) {
    const bool mine = ticked.contains(form);
    if (mine == defaults_.contains(form) ? now.contains(form) : mine) links.insert(form);
  }
  defaults_ = links;
  return {links.begin(), links.end()};
}

std::set<int> FormsPanel::Ticked() const {
  std::set<int> ticked;
  for (const auto& row : LvwForms.Rows()) {
    if (row.checked) ticked.insert(IdOfKey(row.key));
  }
  return ticked;
}

bool FormsPanel::TakeStored(const std::set<int>& links) {
  bool changed = false;
  const std::set<int> ticked = Ticked();
  for (int row = 0; row < LvwForms.Count(); ++row) {
    const int form = IdOfKey(LvwForms.At(row).key);
    const bool edited = ticked.contains(form) != loaded_.contains(form);
    if (edited || links.contains(form) == loaded_.contains(form)) continue;
    LvwForms.SetChecked(row, links.contains(form));
    changed = true;
  }
  loaded_ = links;
  return changed;
}

void FormsPanel::RefreshFormsList() {
  std::vector<std::string> ticked;
  for (const auto& row : LvwForms.Rows()) {
    if (row.checked) ticked.push_back(row.key);
  }
  LoadFormsList();
  for (const std::string& key : ticked) LvwForms.SetChecked(LvwForms.Find(key), true);
}

void FormsPanel::ClearTicks() {
  for (int row = 0; row < LvwForms.Count(); ++row) {
    if (LvwForms.At(row).checked) LvwForms.SetChecked(row, false);
  }
}

// A copy of the form's page is opened, so that nothing the reader does there touches the form itself.
void FormsPanel::LvwForms_DblClick() {
  const int row = LvwForms.Selected();
  if (row < 0) return;
  const std::string copy = run_.AppFolder + "\\temp.html";
  try {
    DeleteFileIfPresent(run_, copy);
    CopyFile(FormPagePath(run_.DataFolder, IdOfKey(LvwForms.At(row).key)), copy);
  } catch (const RuntimeError&) {
    run_.MessageBox(Tr("File Not Found"), "", BoxButtons::Ok, BoxIcon::None);
    return;
  }
  if (View) View(copy);
}

}  // namespace tarvolinex
