#include "exchange/Csv.h"

#include <gtest/gtest.h>

#include <sstream>

#include "platform/RuntimeError.h"

namespace tarvolinex {

// "LINE:[CELL][CELL]" for each row.
std::string CellsOf(const std::string& text) {
  std::istringstream input(text);
  CsvSource source(input, "in");
  std::string all;
  for (CsvPiece piece; source.Next(piece);) {
    CsvReader reader(piece.text, source.Name(), piece.linesBefore);
    for (std::vector<std::string_view> cells; reader.Next(cells);) {
      all += std::to_string(reader.Line()) + ":";
      for (const auto& cell : cells) all += "[" + std::string(cell) + "]";
    }
  }
  return all;
}

TEST(Csv, RowsQuotesAndLineEnds) {
  EXPECT_EQ(CellsOf("\xEF\xBB\xBF"
                    "a,b\r\n\r\n1,,\n\"x, \"\"y\"\"\",z"),
            "1:[a][b]3:[1][][]4:[x, \"y\"][z]");
  EXPECT_EQ(CellsOf(""), "");
  EXPECT_THROW(CellsOf("a\n\"open"), RuntimeError);
}

TEST(Csv, LinesThatCrossTheBufferStayWhole) {
  std::string text, expected;
  for (int i = 1; i <= 3; ++i) {
    const std::string cell(500000, static_cast<char>('a' + i));
    text += cell + "\n";
    expected += std::to_string(i) + ":[" + cell + "]";
  }
  EXPECT_EQ(CellsOf(text), expected);
  EXPECT_THROW(CellsOf(std::string((1 << 20) + 1, 'x')), RuntimeError);
}

}  // namespace tarvolinex
