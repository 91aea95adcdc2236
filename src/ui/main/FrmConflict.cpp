#include "ui/main/FrmConflict.h"

#include <algorithm>
#include <utility>

#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

using Choice = MetField::Choice;
constexpr int kStoredCell = 3;

std::string Shown(const std::string& text) {
  return text.empty() ? Tr("(empty)") : text;
}

bool IsOpen(const MetField& field) {
  return field.choice == Choice::Open;
}

}  // namespace

FrmConflict::FrmConflict(const std::string& about, std::vector<MetField>& met)
    : Window("FrmConflict", Tr("Changed by Two")),
      LblAbout(*this, "LblAbout", -1, CaptionOf(about)),
      LvwFields(*this, "LvwFields"),
      CmdMine(*this, "CmdMine", -1, Tr("Keep &Mine")),
      CmdTheirs(*this, "CmdTheirs", -1, Tr("Take &Theirs")),
      CmdAllMine(*this, "CmdAllMine", -1, Tr("&All Mine")),
      CmdAllTheirs(*this, "CmdAllTheirs", -1, Tr("All T&heirs")),
      CmdStore(*this, "CmdStore", -1, Tr("&Save")),
      CmdCancel(*this, "CmdCancel", -1, Tr("&Cancel")),
      met_(met) {
  ListFields();
  LvwFields.DblClick = [this] { Turn(); };
  CmdMine.Click = [this] { ChooseSelected(Choice::Mine); };
  CmdTheirs.Click = [this] { ChooseSelected(Choice::Theirs); };
  CmdAllMine.Click = [this] { ChooseAll(Choice::Mine); };
  CmdAllTheirs.Click = [this] { ChooseAll(Choice::Theirs); };
  CmdCancel.SetToolTip(Tr("Nothing is stored; what you typed stays in the fields"));
  CmdStore.Click = [this] {
    Confirmed = true;
    Close();
  };
  CmdCancel.Click = [this] { Close(); };
  AnswerKeys(*this, CmdStore, CmdCancel);
  ShowChoices();
}

void FrmConflict::ListFields() {
  LvwFields.Columns() = {{Tr("Field"), "", 2900},
                         {Tr("Before"), "", 2400},
                         {Tr("Mine"), "", 2400},
                         {Tr("Theirs"), "", 2400},
                         {Tr("To be stored"), "", 2400}};
  LvwFields.BeginFill();
  for (std::size_t i = 0; i < met_.size(); ++i) {
    const MetField& field = met_[i];
    LvwFields.Add({std::to_string(i),
                   field.words,
                   {Shown(field.was), Shown(field.mine), Shown(field.theirs), ""},
                   field.inOrder ? Tr("Chosen together with the others that it has to fit") : ""});
  }
  LvwFields.EndFill();
  LvwFields.Select(0);
}

void FrmConflict::Choose(int row, Choice choice) {
  MetField& chosen = met_.at(static_cast<std::size_t>(row));
  for (MetField& field : met_) {
    if (&field == &chosen || (chosen.inOrder && field.inOrder)) field.choice = choice;
  }
}

// The next field that waits for a choice comes into the user's hand.
void FrmConflict::ChooseSelected(Choice choice) {
  if (LvwFields.Selected() < 0) return;
  Choose(LvwFields.Selected(), choice);
  const auto next = std::ranges::find_if(met_, IsOpen);
  if (next != met_.end()) LvwFields.Select(static_cast<int>(next - met_.begin()));
  ShowChoices();
}

void FrmConflict::ChooseAll(Choice choice) {
  for (MetField& field : met_) field.choice = choice;
  ShowChoices();
}

void FrmConflict::Turn() {
  const int row = LvwFields.Selected();
  if (row < 0) return;
  Choose(row, met_.at(static_cast<std::size_t>(row)).choice == Choice::Mine ? Choice::Theirs : Choice::Mine);
  ShowChoices();
}

void FrmConflict::ShowChoices() {
  for (std::size_t i = 0; i < met_.size(); ++i) {
    const MetField& field = met_[i];
    LvwFields.SetCell(static_cast<int>(i), kStoredCell,
                      IsOpen(field) ? "" : Shown(field.choice == Choice::Mine ? field.mine : field.theirs));
  }
  CmdStore.SetEnabled(std::ranges::none_of(met_, IsOpen));
}

}  // namespace tarvolinex
