#include "ui/iconedit/FrmIconEdit.h"

#include <array>
#include <utility>

#include "controls/Desktop.h"
#include "core/Launcher.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

namespace {

constexpr std::array<const char*, kPaletteSize> kColourNames = {
    Marked("Black"), Marked("Navy"),    Marked("Green"),  Marked("Teal"), Marked("Maroon"), Marked("Purple"),
    Marked("Olive"), Marked("Silver"),  Marked("Gray"),   Marked("Blue"), Marked("Lime"),   Marked("Cyan"),
    Marked("Red"),   Marked("Magenta"), Marked("Yellow"), Marked("White")};

}  // namespace

FrmIconEdit::FrmIconEdit(Run& run)
    : Window("FrmIconEdit", Tr("Icon Maker")),
      MnuFile(*this, "MnuFile", "", Tr("&File")),
      MnuSave(*this, "MnuSave", "MnuFile", Tr("&Save"), "Ctrl+S"),
      MnuSaveAs(*this, "MnuSaveAs", "MnuFile", Tr("&Save As"), "Ctrl+Shift+S"),
      MnuExit(*this, "MnuExit", "MnuFile", Tr("&Exit"), "Ctrl+Q"),
      MnuEdit(*this, "MnuEdit", "", Tr("E&dit")),
      MnuUndo(*this, "MnuUndo", "MnuEdit", Tr("&Undo"), "Ctrl+Z"),
      MnuEffects(*this, "MnuEffects", "", Tr("&Effects")),
      MnuFlipHorizontal(*this, "MnuFlipHorizontal", "MnuEffects", Tr("Flip &Horizontal"), "H"),
      MnuFlipVertical(*this, "MnuFlipVertical", "MnuEffects", Tr("Flip &Vertikal"), "V"),
      MnuRotate(*this, "MnuRotate", "MnuEffects", Tr("&Rotate"), "R"),
      MnuChangeColour(*this, "MnuChangeColour", "MnuEffects", Tr("Change Color"), "C"),
      MnuHelp(*this, "MnuHelp", "", Tr("&Help"), "F1"),
      Toolbar1(*this, "Toolbar1"),
      Picture3(*this, "Picture3", kIconSide, kIconSide, true),
      Picture2(*this, "Picture2", kPaletteSize),
      Picture4(*this, "Picture4"),
      Picture5(*this, "Picture5"),
      LblCurrent(*this, "LblCurrent", -1, Tr("Current color")),
      PicPreview(*this, "PicPreview", kIconSide, kIconSide, false),
      LblPreview(*this, "LblPreview", -1, Tr("Preview")),
      run_(run) {
  MakeToolbar();
  MakeMenus();
  MakePalette();
  Picture3.MouseDown = [this](MouseButton button, int x, int y) { Picture3_MouseDown(button, x, y); };
  Picture3.MouseMove = [this](int x, int y) { Picture3_MouseMove(x, y); };
  Picture3.MouseUp = [this](MouseButton button) { Picture3_MouseUp(button); };
  Picture3.Describe = [this](int x, int y) { return ColourName(Picture3.Cell(x, y)); };
  StartDrawing();
  MayClose = [this] { return MayLeave(); };
}

void FrmIconEdit::MakeToolbar() {
  // A command that a menu holds too has its shortcut there.
  Toolbar1.Add({"", "open", "", Tr("Open (Ctrl+O)"), "OPEN", true, "Ctrl+O"});
  Toolbar1.Add({"", "save", "", Tr("Save (Ctrl+S)"), "SAVE"});
  Toolbar1.Add({"", "paint", "", Tr("Paint (P)"), "PAINT", true, "P", true});
  Toolbar1.Add({"", "change", "", Tr("Change Color (C)"), "CHANGE", true, "", true});
  Toolbar1.Add({"", "fill", "", Tr("Fill (F)"), "FILL", true, "F"});
  Toolbar1.Add({"", "undo", "", Tr("Undo (Ctrl+Z)"), "UNDO", false});
  Toolbar1.Add({"", "grate", "", Tr("Grid (G)"), "GRATE", true, "G"});
  Toolbar1.Add({"", "up", "", Tr("Up (Ctrl+Up)"), "UP", true, "Ctrl+Up"});
  Toolbar1.Add({"", "down", "", Tr("Down (Ctrl+Down)"), "DOWN", true, "Ctrl+Down"});
  Toolbar1.Add({"", "left", "", Tr("Left (Ctrl+Left)"), "LEFT", true, "Ctrl+Left"});
  Toolbar1.Add({"", "right", "", Tr("Right (Ctrl+Right)"), "RIGHT", true, "Ctrl+Right"});
  Toolbar1.Add({"", "rotate", "", Tr("Rotate (R)"), "ROTATE"});
  Toolbar1.ButtonClick = [this](const std::string& key) { ToolbarClick(key); };
}

void FrmIconEdit::MakeMenus() {
  MnuUndo.SetEnabled(false);
  MnuSave.Click = [this] { Save(); };
  MnuSaveAs.Click = [this] { SaveAs(); };
  MnuExit.Click = [this] {
    if (MayLeave()) Close();
  };
  MnuUndo.Click = [this] { Undo(); };
  MnuFlipHorizontal.Click = [this] { Apply([](IconImage& image) { image.FlipHorizontal(); }); };
  MnuFlipVertical.Click = [this] { Apply([](IconImage& image) { image.FlipVertical(); }); };
  MnuRotate.Click = [this] { Apply([](IconImage& image) { image.Rotate(); }); };
  MnuChangeColour.Click = [this] { SelectTool(true); };
  MnuHelp.Click = [this] { ShowHelpPage(run_, 0); };
}

void FrmIconEdit::MakePalette() {
  for (int i = 0; i < kPaletteSize; ++i) {
    Picture2(i).SetBackColour(kIconPalette[static_cast<std::size_t>(i)]);
    Picture2(i).SetToolTip(Tr(kColourNames[static_cast<std::size_t>(i)]));
    Picture2(i).Click = [this, i] { SelectColour(i); };
  }
  Picture4.SetBackColour(kTransparentColour);
  Picture4.SetText(Tr("Transparent"));
  Picture4.SetToolTip(Tr("Transparent color"));
  Picture4.Click = [this] { SelectColour(kPaletteSize); };
}

std::string FrmIconEdit::ColourName(Colour colour) {
  if (colour == kTransparentColour) return Tr("Transparent");
  const int index = PaletteIndex(colour);
  return index < 0 ? Tr("Other color") : Tr(kColourNames[static_cast<std::size_t>(index)]);
}

void FrmIconEdit::ToolbarClick(const std::string& key) {
  const auto shift = [this](int dx, int dy) { Apply([=](IconImage& image) { image.Shift(dx, dy); }); };
  if (key == "open") Open();
  if (key == "save") Save();
  if (key == "paint") SelectTool(false);
  if (key == "change") SelectTool(true);
  if (key == "fill") Fill();
  if (key == "undo") Undo();
  if (key == "grate") ToggleGrid();
  if (key == "up") shift(0, -1);
  if (key == "down") shift(0, 1);
  if (key == "left") shift(-1, 0);
  if (key == "right") shift(1, 0);
  if (key == "rotate") Apply([](IconImage& image) { image.Rotate(); });
}

void EditIcon(Run& run, const std::string& iconName, std::function<void(const std::string& iconName)> refresh) {
  FrmIconEdit editor(run);
  editor.RefreshIconList = std::move(refresh);
  editor.SetLoadPic(iconName);
  TheDesktop().ShowModal(editor);
}

}  // namespace tarvolinex
