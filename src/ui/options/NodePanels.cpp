// The editor that a selected node brings up, and what its value becomes.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "store/Statements.h"
#include "ui/NumberBoxes.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

namespace {

using Prefs = CalculatorPreferencesRecord;

constexpr int kAliasWidth = 3100, kSymbolWidth = 1000;  // twips

// Halves to even; what the field cannot hold becomes the nearest that it can.
template <typename Whole>
Whole ToWhole(double number) {
  using Limits = std::numeric_limits<Whole>;
  return static_cast<Whole>(std::clamp<double>(std::nearbyint(number), Limits::min(), Limits::max()));
}

// Of an item of the list of languages, whose first is none.
std::string CodeOf(int item) {
  return item > 0 ? PageLanguages()[static_cast<std::size_t>(item) - 1].code : "";
}

template <typename T>
T& FieldOf(Prefs& prefs, const OptionNode& node) {
  return prefs.*std::get<T Prefs::*>(node.field);
}

}  // namespace

void FrmOptions::HidePanels() {
  for (Frame* panel : {&FraBlank, &FraTextString, &FraValue, &FraColour, &FraYesNo, &FraDepOptions, &FraForms, &FraIcon,
                       &FraLogo, &FraLanguage, &FraMeaning}) {
    panel->SetVisible(false);
  }
  cmdForm(1).SetVisible(false);
}

void FrmOptions::TreeOptions_NodeClick() {
  HidePanels();
  SaveChangedValue();
  currentKey_ = TreeOptions.Selected();
  const OptionNode* node = FindOptionNode(currentKey_);
  ShowHint(node);
  if (IsFormKey(currentKey_)) return ShowForm();
  if (node && node->editor != OptionEditor::None) return ShowEditor(*node);
  FraBlank.SetVisible(true);
  cmdForm(1).SetVisible(currentKey_ == kFormsKey);
}

void FrmOptions::ShowEditor(const OptionNode& node) {
  Frame* panel = &FraBlank;
  switch (node.editor) {
    case OptionEditor::TextLine:
      ShowText(node);
      panel = &FraTextString;
      break;
    case OptionEditor::Number:
      ShowValue(node);
      panel = &FraValue;
      break;
    case OptionEditor::Swatch:
      SetSwatch(FieldOf<Colour>(edited_, node));
      panel = &FraColour;
      break;
    case OptionEditor::OnOff:
      ShowOnOff(node);
      panel = &FraYesNo;
      break;
    case OptionEditor::DepositTypes:
      ShowDepositTypes(node);
      panel = &FraDepOptions;
      break;
    case OptionEditor::PictureImport:
      ShowPictureImport(node);
      panel = &FraLogo;
      break;
    case OptionEditor::IconList:
      panel = &FraIcon;
      break;
    case OptionEditor::Language:
      ShowLanguage(node);
      panel = &FraLanguage;
      break;
    case OptionEditor::Meaning:
      TxtMeaning.SetMaxLength(node.limit);
      TxtMeaning.SetText(TextOf(node));
      panel = &FraMeaning;
      break;
    case OptionEditor::None:
      break;
  }
  const bool named = panel != &FraYesNo && panel != &FraIcon && panel != &FraLogo;
  if (named) panel->SetCaption(CaptionOf(TreeOptions.Find(currentKey_)->text));
  panel->SetVisible(true);
}

void FrmOptions::ShowText(const OptionNode& node) {
  TxtString.SetMaxLength(node.limit);
  TxtString.SetText(FieldOf<FixedText>(edited_, node).Trimmed());
  TxtString.SetPosition({0, 0, currentKey_ == "CURRENCY" ? kSymbolWidth : kAliasWidth, 0});
}

void FrmOptions::ShowValue(const OptionNode& node) {
  valueKind_ = node.kind;
  valueLimit_ = node.limit;
  AttachUpDown(valueKind_, UpDown1, TxtIncre);
  UpDown1.Max = valueLimit_;
  const int decimals = valueKind_ == kInputCount ? 0 : 2;
  if (std::holds_alternative<float Prefs::*>(node.field)) {
    const float rate = FieldOf<float>(edited_, node);
    TxtIncre.SetText(currentKey_ == "TAX" ? FormatSingle(rate) : FormatFixed(rate, decimals));
  } else if (std::holds_alternative<std::int16_t Prefs::*>(node.field)) {
    TxtIncre.SetText(FormatFixed(FieldOf<std::int16_t>(edited_, node), decimals));
  } else {
    TxtIncre.SetText(FormatFixed(WholeOf(node), decimals));
  }
  valueTyped_ = false;
}

void FrmOptions::ShowOnOff(const OptionNode& node) {
  const bool logo = currentKey_ == "GRAPHICS1", totals = currentKey_ == "PAGE1";
  ChkYesNo.SetCaption(logo     ? Tr("Header Logo Visible")
                      : totals ? Tr("Total Payable Visible")
                               : Tr("Background Picture Visible"));
  FraYesNo.SetCaption(logo     ? Tr("Header Logo On/Off")
                      : totals ? Tr("Total Payable On/Off")
                               : Tr("Background Picture On/Off"));
  ChkYesNo.SetValue(SwitchOf(node));
}

void FrmOptions::ShowLanguage(const OptionNode& node) {
  CboLanguage.Clear();
  CboLanguage.Add(Tr("As the reader's browser"));
  int item = 0, chosen = 0;
  for (const PageLanguage& language : PageLanguages()) {
    CboLanguage.Add(language.name);
    ++item;
    if (TextOf(node) == language.code) chosen = item;
  }
  CboLanguage.SetListIndex(chosen);
}

bool& FrmOptions::SwitchOf(const OptionNode& node) {
  const auto* ofPage = std::get_if<bool PageOptions::*>(&node.field);
  return ofPage ? page_.**ofPage : FieldOf<bool>(edited_, node);
}

std::string& FrmOptions::TextOf(const OptionNode& node) {
  return page_.*std::get<std::string PageOptions::*>(node.field);
}

std::int32_t& FrmOptions::WholeOf(const OptionNode& node) {
  const auto* ofPage = std::get_if<std::int32_t PageOptions::*>(&node.field);
  return ofPage ? page_.**ofPage : FieldOf<std::int32_t>(edited_, node);
}

void FrmOptions::ShowDepositTypes(const OptionNode& node) {
  const int options = FieldOf<std::int16_t>(edited_, node);
  filling_ = true;
  for (int i = 0; i <= ChkdepSelect.Last(); ++i) ChkdepSelect(i).SetValue((options >> i & 1) != 0);
  filling_ = false;
}

std::int16_t FrmOptions::TickedDepositTypes() const {
  int options = 0;
  for (int i = 0; i <= ChkdepSelect.Last(); ++i) options |= ChkdepSelect(i).Value() ? 1 << i : 0;
  return static_cast<std::int16_t>(options);
}

void FrmOptions::SaveChangedValue() {
  const OptionNode* node = FindOptionNode(currentKey_);
  switch (node ? node->editor : OptionEditor::None) {
    case OptionEditor::TextLine:
      FieldOf<FixedText>(edited_, *node) = EscapeQuotes(Trim(TxtString.Text()));
      break;
    case OptionEditor::Number:
      StoreValue(*node);
      break;
    case OptionEditor::Swatch:
      FieldOf<Colour>(edited_, *node) = PicColour.BackColour();
      break;
    case OptionEditor::OnOff:
      SwitchOf(*node) = ChkYesNo.Value();
      break;
    case OptionEditor::DepositTypes:
      FieldOf<std::int16_t>(edited_, *node) = TickedDepositTypes();
      break;
    case OptionEditor::PictureImport:
      StorePicture(*node);
      break;
    case OptionEditor::IconList:
      StoreIcon();
      break;
    case OptionEditor::Language:
      TextOf(*node) = CodeOf(CboLanguage.ListIndex());
      break;
    case OptionEditor::Meaning:
      TextOf(*node) = TxtMeaning.Text();
      break;
    case OptionEditor::None:
      break;
  }
  if (formDetailsChanged_) SaveFormDetails();
}

NumberRule FrmOptions::ValueRule() const {
  const TreeView::Node* node = TreeOptions.Find(currentKey_);
  return {valueKind_, static_cast<double>(valueLimit_), node ? node->text : std::string(), "",
          run_.CalculatorPreferences.CurrencySymbol.Trimmed()};
}

void FrmOptions::StoreValue(const OptionNode& node) {
  // Rounding a rate that was only looked at would change it.
  if (!std::exchange(valueTyped_, false)) return;
  const double number = TypedNumber(TxtIncre.Text(), run_.CalculatorPreferences.CurrencySymbol.Trimmed());
  if (std::holds_alternative<float Prefs::*>(node.field)) {
    FieldOf<float>(edited_, node) = static_cast<float>(number);
  } else if (std::holds_alternative<std::int16_t Prefs::*>(node.field)) {
    FieldOf<std::int16_t>(edited_, node) = ToWhole<std::int16_t>(number);
  } else {
    WholeOf(node) = ToWhole<std::int32_t>(number);
  }
}

}  // namespace tarvolinex
