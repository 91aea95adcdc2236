// Comma-separated values, read and written in pieces of bounded size.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

class CsvReader {
 public:
  // name: what errors call the input. The stream is not owned.
  CsvReader(std::istream& input, std::string name);

  // The next row that is not empty; false at the end. The cells stay valid until the next call. Quotes around a cell
  // are taken off, doubled quotes inside it are one. Throws RuntimeError for a quote that is not closed on its line,
  // for a line of over 1 MB, and when the input cannot be read.
  bool Next(std::vector<std::string_view>& cells);

  long Line() const { return line_; }  // of the row, from 1
  // "NAME: line 3"
  std::string Place() const;

 private:
  bool ReadLine(std::string_view& line);
  void SplitQuoted(std::string_view line, std::vector<std::string_view>& cells);

  std::istream& input_;
  std::string name_, buffer_, unquoted_;
  std::size_t at_ = 0, filled_ = 0;
  bool ended_ = false;
  long line_ = 0;
};

// The cell, in quotes where it holds a comma, a quote or a line break.
std::string CsvCell(std::string_view text);

}  // namespace tarvolinex
