// Comma-separated values, read and written in pieces of bounded size.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

// Whole lines of an input, with what stands before them.
struct CsvPiece {
  std::string text;
  long linesBefore = 0;
  long rowsBefore = 0;  // lines that are not empty
};

// Cuts an input into pieces of whole lines.
class CsvSource {
 public:
  // name: what errors call the input. The stream is not owned.
  CsvSource(std::istream& input, std::string name);
  // The next piece, of about 32 KB; false at the end. Throws RuntimeError for a line of over 1 MB, and when the input
  // cannot be read.
  bool Next(CsvPiece& piece);
  const std::string& Name() const { return name_; }

 private:
  std::istream& input_;
  std::string name_, rest_;  // the beginning of a line whose end is still to come
  long lines_ = 0, rows_ = 0;
};

// The rows of a text of whole lines.
class CsvReader {
 public:
  // linesBefore: in the input of that name, before the text. The text must outlive the reader.
  CsvReader(std::string_view text, std::string name, long linesBefore = 0);

  // The next row that is not empty; false at the end. The cells stay valid until the next call. Quotes around a cell
  // are taken off, doubled quotes inside it are one. Throws RuntimeError for a quote that is not closed on its line.
  bool Next(std::vector<std::string_view>& cells);

  long Line() const { return line_; }  // of the row, from 1
  // "NAME: line 3"
  std::string Place() const;
  std::string_view Rest() const { return text_; }

 private:
  bool ReadLine(std::string_view& line);
  void SplitQuoted(std::string_view line, std::vector<std::string_view>& cells);

  std::string_view text_;
  std::string name_, unquoted_;
  long line_;
};

// The cell, in quotes where it holds a comma, a quote or a line break.
std::string CsvCell(std::string_view text);

}  // namespace tarvolinex
