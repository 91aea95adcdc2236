// The picture of an icon: 32 by 32 pixels in 16 colours and transparent.
#pragma once

#include <array>
#include <vector>

#include "controls/Window.h"

namespace tarvolinex {

inline constexpr int kIconSide = 32;
inline constexpr int kPaletteSize = 16;

// The colours that an icon file holds, in the order of its colour table. The numbers stand in files: never change them.
inline constexpr std::array<Colour, kPaletteSize> kIconPalette = {
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
    0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
// Stands for "no colour here"; no colour of the palette is like it.
inline constexpr Colour kTransparentColour = 0xFFC0C0;

// Index of the first palette colour that is exactly this one; -1 when there is none.
int PaletteIndex(Colour colour);

// Pixel (x, y) counts from 0 at the top left. A picture that was loaded may hold colours outside the palette; they stay
// until they are painted over.
class IconImage {
 public:
  // Entirely transparent.
  IconImage() { Fill(kTransparentColour); }

  // REQUIRES: x and y from 0 to 31.
  Colour At(int x, int y) const { return pixels_[Index(x, y)]; }
  void Set(int x, int y, Colour colour) { pixels_[Index(x, y)] = colour; }
  // Row by row from the top.
  const std::array<Colour, kIconSide * kIconSide>& Pixels() const { return pixels_; }

  void Fill(Colour colour) { pixels_.fill(colour); }
  // Every pixel of one colour, connected or not, takes the other.
  void Replace(Colour from, Colour to);

  void FlipHorizontal();  // left to right
  void FlipVertical();    // top to bottom
  void Rotate();          // 90 degrees clockwise
  // Moves every pixel dx to the right and dy down; what leaves on one side enters on the other.
  void Shift(int dx, int dy);

  bool operator==(const IconImage&) const = default;

 private:
  static constexpr std::size_t Index(int x, int y) {
    const int index = y * kIconSide + x;
    return static_cast<std::size_t>(index);
  }
  // Makes each pixel (x, y) of the new picture from the pixel that `source(x, y)` names in the old one.
  template <typename Source>
  void Rearrange(Source source);

  std::array<Colour, kIconSide * kIconSide> pixels_;
};

struct IconCell {
  int x = 0, y = 0;
  bool operator==(const IconCell&) const = default;
};

// The cells of a straight line from one to the other, both included; neighbours in it touch at a side or a corner.
// Cells outside the picture are left out, so a line may start and end there.
std::vector<IconCell> CellsOfLine(IconCell from, IconCell to);

}  // namespace tarvolinex
