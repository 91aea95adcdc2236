#include "ui/iconedit/IconImage.h"

#include <algorithm>
#include <cstdlib>

namespace tarvolinex {

int PaletteIndex(Colour colour) {
  const auto found = std::find(kIconPalette.begin(), kIconPalette.end(), colour);
  return found == kIconPalette.end() ? -1 : static_cast<int>(found - kIconPalette.begin());
}

template <typename Source>
void IconImage::Rearrange(Source source) {
  const IconImage old = *this;
  for (int y = 0; y < kIconSide; ++y) {
    for (int x = 0; x < kIconSide; ++x) {
      const IconCell from = source(x, y);
      Set(x, y, old.At(from.x, from.y));
    }
  }
}

void IconImage::Replace(Colour from, Colour to) {
  std::replace(pixels_.begin(), pixels_.end(), from, to);
}

void IconImage::FlipHorizontal() {
  Rearrange([](int x, int y) { return IconCell{kIconSide - 1 - x, y}; });
}

void IconImage::FlipVertical() {
  Rearrange([](int x, int y) { return IconCell{x, kIconSide - 1 - y}; });
}

void IconImage::Rotate() {
  Rearrange([](int x, int y) { return IconCell{y, kIconSide - 1 - x}; });
}

void IconImage::Shift(int dx, int dy) {
  const auto wrapped = [](int n) { return ((n % kIconSide) + kIconSide) % kIconSide; };
  Rearrange([&](int x, int y) { return IconCell{wrapped(x - dx), wrapped(y - dy)}; });
}

std::vector<IconCell> CellsOfLine(IconCell from, IconCell to) {
  const int width = std::abs(to.x - from.x), height = std::abs(to.y - from.y);
  const int stepX = from.x < to.x ? 1 : -1, stepY = from.y < to.y ? 1 : -1;
  std::vector<IconCell> cells;
  int error = width - height;
  for (IconCell cell = from;;) {
    if (cell.x >= 0 && cell.x < kIconSide && cell.y >= 0 && cell.y < kIconSide) cells.push_back(cell);
    if (cell == to) return cells;
    const int twice = 2 * error;
    if (twice > -height) {
      error -= height;
      cell.x += stepX;
    }
    if (twice < width) {
      error += width;
      cell.y += stepY;
    }
  }
}

}  // namespace tarvolinex
