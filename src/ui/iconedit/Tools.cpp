// The editor's tools and its undo.
#include "core/Reports.h"
#include "platform/text/Translation.h"
#include "ui/iconedit/FrmIconEdit.h"

namespace tarvolinex {

namespace {

// The grid lines tell by their colour whether they are shown.
constexpr Colour kShownLines = 0x004040, kHiddenLines = 0xFFC0FF;

enum ToolbarButton { kPaintButton = 2, kChangeButton = 3, kUndoButton = 5 };

bool OnLine(int x, int y) {
  return x % PixelGrid::kUnits == 0 || y % PixelGrid::kUnits == 0;
}

// The cell of a point, also outside the grid.
IconCell CellOf(int x, int y) {
  const auto floored = [](int n) { return n >= 0 ? n / PixelGrid::kUnits : (n + 1) / PixelGrid::kUnits - 1; };
  return {floored(x), floored(y)};
}

}  // namespace

void FrmIconEdit::StartDrawing() {
  Picture3.SetLineColour(kShownLines);
  Picture3.SetCells(image_.Pixels());
  PicPreview.SetCells(image_.Pixels());
  SelectTool(false);
  SelectColour(0);
  before_ = after_ = Taken();
}

void FrmIconEdit::Before() {
  EndStroke();
  modified_ = true;
  undone_ = false;
  Toolbar1.SetButtonEnabled(kUndoButton, true);
  MnuUndo.SetEnabled(true);
  before_ = Taken();
}

void FrmIconEdit::After() {
  Picture3.SetCells(image_.Pixels());
  PicPreview.SetCells(image_.Pixels());
  after_ = Taken();
}

void FrmIconEdit::Apply(const std::function<void(IconImage&)>& change) {
  Before();
  change(image_);
  After();
}

void FrmIconEdit::Undo() {
  EndStroke();
  const Snapshot& shown = undone_ ? after_ : before_;
  undone_ = !undone_;
  modified_ = true;
  image_ = shown.image;
  Picture3.SetLineColour(shown.lineColour);
  Picture3.SetCells(image_.Pixels());
  PicPreview.SetCells(image_.Pixels());
}

void FrmIconEdit::SelectTool(bool changeColour) {
  changingColour_ = changeColour;
  Toolbar1.SetButtonDown(kPaintButton, !changeColour);
  Toolbar1.SetButtonDown(kChangeButton, changeColour);
  Picture3.SetPointerShape(changeColour ? Pointer::UpArrow : Pointer::Pencil);
}

void FrmIconEdit::SelectColour(int box) {
  for (int i = 0; i < kPaletteSize; ++i) Picture2(i).SetMarked(i == box);
  Picture4.SetMarked(box == kPaletteSize);
  current_ = box == kPaletteSize ? kTransparentColour : kIconPalette.at(static_cast<std::size_t>(box));
  Picture5.SetBackColour(current_);
  Picture5.SetToolTip(Tr("Current color: %1", {ColourName(current_)}));
}

void FrmIconEdit::Fill() {
  Apply([this](IconImage& image) {
    image.Fill(current_);
    const bool dark = current_ == kIconPalette[0] || current_ == kIconPalette[1];
    Picture3.SetLineColour(dark ? kHiddenLines : kShownLines);
  });
}

void FrmIconEdit::ToggleGrid() {
  Picture3.SetLineColour(Picture3.ColourAt(0, 0) == kShownLines ? kHiddenLines : kShownLines);
}

void FrmIconEdit::Picture3_MouseDown(MouseButton button, int x, int y) {
  const Colour colour = Picture3.ColourAt(x, y);
  if (colour == PixelGrid::kNoColour || colour == kShownLines || colour == kHiddenLines) return;
  if (button == MouseButton::Right) return PickColour(colour);
  if (button != MouseButton::Left) return;
  Before();
  pressed_ = true;
  if (changingColour_) return ChangeColour(colour);
  painting_ = true;
  last_ = CellOf(x, y);
  PaintTo(x, y);
}

void FrmIconEdit::Picture3_MouseMove(int x, int y) {
  if (painting_) PaintTo(x, y);
}

void FrmIconEdit::Picture3_MouseUp(MouseButton button) {
  painting_ = false;
  if (button == MouseButton::Left) EndStroke();
}

// The "after" of a press is kept when the button is released, or before a command that comes first.
void FrmIconEdit::EndStroke() {
  painting_ = false;
  if (!pressed_) return;
  pressed_ = false;
  After();
}

void FrmIconEdit::PickColour(Colour colour) {
  const int index = PaletteIndex(colour);
  if (index >= 0) SelectColour(index);
  if (colour == kTransparentColour) SelectColour(kPaletteSize);
}

// A fast pointer skips cells between two of its reports; they belong to the stroke.
void FrmIconEdit::PaintTo(int x, int y) {
  if (OnLine(x, y)) return;
  const IconCell cell = CellOf(x, y);
  for (const IconCell& crossed : CellsOfLine(last_, cell)) {
    image_.Set(crossed.x, crossed.y, current_);
    Picture3.SetCell(crossed.x, crossed.y, current_);
  }
  last_ = cell;
}

void FrmIconEdit::ChangeColour(Colour from) {
  if (from == current_) return;
  const BusyWhile busy;
  image_.Replace(from, current_);
  Picture3.SetCells(image_.Pixels());
}

}  // namespace tarvolinex
