#include "ui/iconedit/IconImage.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvolinex {
namespace {

// By the letters that pictures are written with here.
constexpr Colour kR = 0x0000FF, kB = 0xFF0000, kW = 0xFFFFFF;

// The top left corner of a picture as rows of letters; the rest is transparent. "." is transparent as well.
IconImage Drawn(const std::vector<std::string>& rows, int left = 0, int top = 0) {
  IconImage image;
  for (int y = 0; y < static_cast<int>(rows.size()); ++y) {
    const std::string& row = rows[static_cast<std::size_t>(y)];
    for (int x = 0; x < static_cast<int>(row.size()); ++x) {
      const char c = row[static_cast<std::size_t>(x)];
      const Colour colour = c == 'R' ? kR : c == 'B' ? kB : c == 'W' ? kW : kTransparentColour;
      image.Set(left + x, top + y, colour);
    }
  }
  return image;
}

struct Point {
  int x, y;
  Colour colour;
};

IconImage With(IconImage image, const std::vector<Point>& points) {
  for (const Point& point : points) image.Set(point.x, point.y, point.colour);
  return image;
}

const std::vector<std::string> kShape = {"RB.",  //
                                         "R..",  //
                                         "WWB"};

struct Transformation {
  const char* name;
  void (*act)(IconImage&);
  IconImage expected;
  int timesToReturn;
};

TEST(IconImage, TransformationsMoveEveryPixelAndComeBack) {
  const Transformation transformations[] = {
      {"flip horizontal", [](IconImage& i) { i.FlipHorizontal(); }, Drawn({".BR", "..R", "BWW"}, 29, 0), 2},
      {"flip vertical", [](IconImage& i) { i.FlipVertical(); }, Drawn({"WWB", "R..", "RB."}, 0, 29), 2},
      {"rotate", [](IconImage& i) { i.Rotate(); }, Drawn({"WRR", "W.B", "B.."}, 29, 0), 4},
      {"right", [](IconImage& i) { i.Shift(1, 0); }, Drawn(kShape, 1, 0), 32},
      {"down", [](IconImage& i) { i.Shift(0, 1); }, Drawn(kShape, 0, 1), 32},
      {"left", [](IconImage& i) { i.Shift(-1, 0); },
       With(Drawn({"B.", "..", "WB"}), {{31, 0, kR}, {31, 1, kR}, {31, 2, kW}}), 32},
      {"up", [](IconImage& i) { i.Shift(0, -1); }, With(Drawn({"R..", "WWB"}), {{0, 31, kR}, {1, 31, kB}}), 32},
  };
  for (const Transformation& t : transformations) {
    const IconImage start = Drawn(kShape);
    IconImage image = start;
    t.act(image);
    EXPECT_EQ(image, t.expected) << t.name;
    for (int i = 1; i < t.timesToReturn; ++i) t.act(image);
    EXPECT_EQ(image, start) << t.name;
  }
}

TEST(IconImage, ReplacingReachesEveryAreaOfTheColour) {
  IconImage image = Drawn({"RR.R", "..B.", "R..."});
  image.Replace(kR, kW);
  EXPECT_EQ(image, Drawn({"WW.W", "..B.", "W..."}));
  image.Replace(kTransparentColour, kW);
  EXPECT_EQ(image.At(31, 31), kW);
  EXPECT_EQ(image.At(2, 1), kB);
}

TEST(IconImage, LinesHaveNoGaps) {
  const auto text = [](IconCell from, IconCell to) {
    std::string cells;
    for (const IconCell& cell : CellsOfLine(from, to)) {
      cells += std::to_string(cell.x) + "," + std::to_string(cell.y) + " ";
    }
    return cells;
  };
  EXPECT_EQ(text({3, 4}, {3, 4}), "3,4 ");
  EXPECT_EQ(text({1, 5}, {4, 5}), "1,5 2,5 3,5 4,5 ");
  EXPECT_EQ(text({2, 2}, {0, 0}), "2,2 1,1 0,0 ");
  EXPECT_EQ(text({0, 0}, {2, 5}), "0,0 0,1 1,2 1,3 2,4 2,5 ");
  EXPECT_EQ(text({30, 1}, {34, 1}), "30,1 31,1 ");  // leaves the picture
  EXPECT_EQ(text({-2, 29}, {1, 32}), "0,31 ");      // crosses a corner of it
}

}  // namespace
}  // namespace tarvolinex
