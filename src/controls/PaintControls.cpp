#include "controls/PaintControls.h"

#include <algorithm>
#include <utility>

namespace tarvolinex {

void PixelGrid::SetCell(int x, int y, Colour colour) {
  const std::size_t index = Index(x, y);
  if (std::exchange(cells_.at(index), colour) != colour) Paint(Aspect::Row, static_cast<int>(index));
}

void PixelGrid::SetCells(std::span<const Colour> colours) {
  if (std::equal(cells_.begin(), cells_.end(), colours.begin(), colours.end())) return;
  cells_.assign(colours.begin(), colours.end());
  Paint(Aspect::Items);
}

void PixelGrid::SetLineColour(Colour colour) {
  if (std::exchange(lineColour_, colour) != colour) Paint(Aspect::Items);
}

Colour PixelGrid::ColourAt(int unitX, int unitY) const {
  if (unitX < 0 || unitY < 0 || unitX > columns_ * kUnits || unitY > rows_ * kUnits) return kNoColour;
  if (unitX % kUnits == 0 || unitY % kUnits == 0) return lineColour_;
  return Cell(unitX / kUnits, unitY / kUnits);
}

void PixelGrid::SetPointerShape(Pointer shape) {
  if (std::exchange(pointer_, shape) != shape) Paint(Aspect::State);
}

void ColourBox::SetText(std::string text) {
  text_ = std::move(text);
  Paint(Aspect::State);
}

void ColourBox::SetMarked(bool marked) {
  if (std::exchange(marked_, marked) != marked) Paint(Aspect::State);
}

void ColourBox::Press() {
  if (!Enabled()) return;
  Owner().LeaveField();
  Fire(Click);
}

void BarChart::SetBars(std::vector<Bar> bars) {
  bars_ = std::move(bars);
  Paint(Aspect::Items);
}

}  // namespace tarvolinex
