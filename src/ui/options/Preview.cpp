// What a setting does, and what it makes of a calculator: a sentence, a small calculator, the picture itself.
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/Pictures.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"
#include "publish/Template.h"
#include "ui/options/FrmOptions.h"

namespace tarvolinex {

namespace {

enum PreviewText { kHeading, kCaption, kInput, kAnswer, kOrganisation };

// Black or white, whichever reads better on the colour; as the calculator writes its answer.
Colour ReadableOn(Colour colour) {
  constexpr Colour kByte = 0xFF, kWhite = 0xFFFFFF;
  constexpr unsigned kRedWeight = 299, kGreenWeight = 587, kBlueWeight = 114, kMiddle = 140'000;
  const unsigned grey =
      kRedWeight * (colour & kByte) + kGreenWeight * (colour >> 8 & kByte) + kBlueWeight * (colour >> 16 & kByte);
  return grey > kMiddle ? 0 : kWhite;
}

bool IsPicture(const std::string& path) {
  try {
    if (!FileExists(path) || FileLength(path) > kLargestPicture) return false;
    LoadPicture(path);
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

bool IsPreviewed(std::string_view key) {
  return key.starts_with("COLOURS") || key == "GRAPHICS1" || key == "GRAPHICS3";
}

}  // namespace

std::string FrmOptions::InLogoFolder(const std::string& name) const {
  return name.empty() ? name : run_.DataFolder + "\\logo\\" + name;
}

void FrmOptions::ShowHint(const OptionNode* node) {
  const char* hint = node                     ? node->hint
                     : IsFormKey(currentKey_) ? kFormHint
                                              : Marked("Select a setting on the left to see what it does.");
  LblHint.SetCaption(run_.CaptionWithAliases(hint));
  ShowPreview();
}

void FrmOptions::ShowPreview() {
  const bool previewed = IsPreviewed(currentKey_);
  LblPreviewTitle.SetVisible(previewed);
  PicPage.SetVisible(previewed);
  if (!previewed) return;
  CalculatorPreferencesRecord prefs = edited_;
  const OptionNode& node = *FindOptionNode(currentKey_);
  if (const auto* colour = std::get_if<Colour CalculatorPreferencesRecord::*>(&node.field);
      colour && FraColour.Visible()) {
    prefs.*(*colour) = PicColour.BackColour();
  }
  if (const auto* shown = std::get_if<bool CalculatorPreferencesRecord::*>(&node.field); shown && FraYesNo.Visible()) {
    prefs.*(*shown) = ChkYesNo.Value();
  }
  const auto write = [&](PreviewText text, const std::string& words, Colour ink, Colour paper) {
    LblPreview(text).SetCaption(CaptionOf(words));
    LblPreview(text).SetForeColour(ink);
    LblPreview(text).SetBackColour(paper);
  };
  PicPage.SetBackColour(prefs.PageBackColour);
  PicPage.SetPicture(prefs.ShowBackground ? InLogoFolder(BackgroundFileName(run_.DataFolder)) : std::string());
  LblPreviewPanel.SetBackColour(prefs.CalcBackColour);
  const std::string logo = prefs.ShowHeaderLogo ? InLogoFolder(LogoFileName(run_.DataFolder)) : std::string();
  PicPageLogo.SetPicture(logo);
  PicPageLogo.SetVisible(!logo.empty());
  const Colour panel = prefs.CalcBackColour;
  write(kHeading, prefs.AliasCalcName.Trimmed(), prefs.CaptionColour, panel);
  write(kCaption, Tr("%1 cost", {prefs.AliasCapEquip.Trimmed()}), prefs.CaptionColour, panel);
  write(kInput, prefs.CurrencySymbol.Trimmed() + " 12,500.00", prefs.InputTextColour, prefs.InputBackColour);
  write(kAnswer, Tr("Monthly payment %1", {prefs.CurrencySymbol.Trimmed() + "395.20"}), ReadableOn(prefs.BorderColour),
        prefs.BorderColour);
  write(kOrganisation, prefs.OrgCompanyName.Trimmed(), prefs.OrgCaptionColour, panel);
}

void FrmOptions::ShowChosenPicture() {
  const OptionNode* node = FindOptionNode(currentKey_);
  if (!node || node->editor != OptionEditor::PictureImport) return;
  const std::string typed(Trim(TxtLogo.Text()));
  const bool chosen = !typed.empty() && IsPicture(typed);
  const std::string inUse =
      InLogoFolder(PictureKind(*node) == 1 ? BackgroundFileName(run_.DataFolder) : LogoFileName(run_.DataFolder));
  LblPicture.SetCaption(chosen          ? Tr("The picture that you have chosen:")
                        : inUse.empty() ? Tr("There is no picture yet.")
                                        : Tr("The picture in use:"));
  // On the colour that dealers see behind it.
  PicLogo.SetBackColour(PictureKind(*node) == 1 ? edited_.PageBackColour : edited_.CalcBackColour);
  PicLogo.SetPicture(chosen ? typed : inUse);
}

}  // namespace tarvolinex
