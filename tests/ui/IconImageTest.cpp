#include "ui/iconedit/IconImage.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvolinex {

IconImage AllDifferent() {
  IconImage image;
  for (int i = 0; i < kIconSide * kIconSide; ++i) image.Set(i % kIconSide, i / kIconSide, static_cast<Colour>(i));
  return image;
}

TEST(IconImage, TransformationsMoveEveryPixel) {
  const struct {
    const char* name;
    void (*act)(IconImage&);
    int x[3], y[3];  // where a pixel goes: factors of its column and its row, and what is added, modulo 32
  } transformations[] = {
      {"flip horizontal", [](IconImage& i) { i.FlipHorizontal(); }, {-1, 0, 31}, {0, 1, 0}},
      {"flip vertical", [](IconImage& i) { i.FlipVertical(); }, {1, 0, 0}, {0, -1, 31}},
      {"rotate", [](IconImage& i) { i.Rotate(); }, {0, -1, 31}, {1, 0, 0}},
      {"right", [](IconImage& i) { i.Shift(1, 0); }, {1, 0, 1}, {0, 1, 0}},
      {"down", [](IconImage& i) { i.Shift(0, 1); }, {1, 0, 0}, {0, 1, 1}},
      {"left", [](IconImage& i) { i.Shift(-1, 0); }, {1, 0, 31}, {0, 1, 0}},
      {"up", [](IconImage& i) { i.Shift(0, -1); }, {1, 0, 0}, {0, 1, 31}},
  };
  for (const auto& [name, act, x, y] : transformations) {
    IconImage image = AllDifferent();
    act(image);
    for (int i = 0; i < kIconSide * kIconSide; ++i) {
      const int column = i % kIconSide, row = i / kIconSide;
      const auto to = [&](const int* f) { return (f[0] * column + f[1] * row + f[2] + kIconSide) % kIconSide; };
      ASSERT_EQ(image.At(to(x), to(y)), static_cast<Colour>(i)) << name << " at " << column << "," << row;
    }
  }
}

TEST(IconImage, ReplacingReachesEveryAreaOfTheColour) {
  constexpr Colour kOld = 0xFF0000, kNew = 0xFFFFFF;
  IconImage image;
  for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {3, 0}, {31, 31}}) image.Set(x, y, kOld);
  image.Replace(kOld, kNew);
  for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {3, 0}, {31, 31}}) EXPECT_EQ(image.At(x, y), kNew);
  EXPECT_EQ(image.At(2, 0), kTransparentColour);
  image.Replace(kTransparentColour, kOld);
  EXPECT_EQ(image.At(2, 0), kOld);
  EXPECT_EQ(image.At(3, 0), kNew);
}

TEST(IconImage, LinesHaveNoGaps) {
  const std::tuple<IconCell, IconCell, const char*> lines[] = {
      {{3, 4}, {3, 4}, "3,4 "},         {{1, 5}, {4, 5}, "1,5 2,5 3,5 4,5 "},
      {{2, 2}, {0, 0}, "2,2 1,1 0,0 "}, {{0, 0}, {2, 5}, "0,0 0,1 1,2 1,3 2,4 2,5 "},
      {{30, 1}, {34, 1}, "30,1 31,1 "},  // leaves the picture
      {{-2, 29}, {1, 32}, "0,31 "}};     // crosses a corner of it
  for (const auto& [from, to, expected] : lines) {
    std::string cells;
    for (const IconCell& cell : CellsOfLine(from, to)) {
      cells += std::to_string(cell.x) + "," + std::to_string(cell.y) + " ";
    }
    EXPECT_EQ(cells, expected);
  }
}

}  // namespace tarvolinex
