// The kinds of control that a small picture is drawn with: an enlarged grid of cells, boxes of colour, bars.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "controls/Window.h"

namespace tarvolinex {

enum class MouseButton { Left, Right, Other };
enum class Pointer { Arrow, Pencil, UpArrow };

// Cells of one colour each, enlarged. Points count in units: a cell is 10 by 10 of them, its first row and column being
// the grid line that it shares with its neighbours, so the colour of cell (x, y) fills 10x + 1 to 10x + 9. How many
// pixels of the screen a unit takes is up to the painter.
class PixelGrid : public Control {
 public:
  static constexpr int kUnits = 10;  // of a cell, each way
  static constexpr Colour kNoColour = 0xFFFFFFFF;

  // Cells of colour 0. Without lines it is a plain small picture of one point a cell.
  PixelGrid(Window& window, std::string name, int columns, int rows, bool lines)
      : Control(window, std::move(name)),
        columns_(columns),
        rows_(rows),
        lines_(lines),
        cells_(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}
  std::string_view TypeName() const override { return "PICTUREBOX"; }

  int Columns() const { return columns_; }
  int Rows() const { return rows_; }
  bool HasLines() const { return lines_; }

  // REQUIRES: a cell inside the grid.
  Colour Cell(int x, int y) const { return cells_[Index(x, y)]; }
  // Only what differs is painted anew.
  void SetCell(int x, int y, Colour colour);
  // Row by row from the top. REQUIRES: one colour a cell.
  void SetCells(std::span<const Colour> colours);
  Colour LineColour() const { return lineColour_; }
  void SetLineColour(Colour colour);
  // What is seen at the point; kNoColour outside the grid.
  Colour ColourAt(int unitX, int unitY) const;

  Pointer PointerShape() const { return pointer_; }
  void SetPointerShape(Pointer shape);

  // Points in units, while a button is held also outside the grid.
  std::function<void(MouseButton, int unitX, int unitY)> MouseDown;
  std::function<void(int unitX, int unitY)> MouseMove;
  std::function<void(MouseButton)> MouseUp;
  // What a cell shows, in words, for who cannot see it.
  std::function<std::string(int x, int y)> Describe;

 private:
  std::size_t Index(int x, int y) const {
    const int index = y * columns_ + x;
    return static_cast<std::size_t>(index);
  }

  int columns_, rows_;
  bool lines_;
  std::vector<Colour> cells_;
  Colour lineColour_ = 0;
  Pointer pointer_ = Pointer::Arrow;
};

// A box that shows its background colour and perhaps a word on it. Its tool tip is its name.
class ColourBox : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "PICTUREBOX"; }

  const std::string& Text() const { return text_; }
  void SetText(std::string text);
  bool Marked() const { return marked_; }  // by a frame
  void SetMarked(bool marked);
  // The user's click; nothing when disabled.
  void Press();
  Event Click;

 private:
  std::string text_;
  bool marked_ = false;
};

// Amounts over time as bars. Its tool tip stands for the picture where the picture is not seen.
class BarChart : public Control {
 public:
  using Control::Control;
  std::string_view TypeName() const override { return "BARCHART"; }

  struct Bar {
    int at = 0;          // when, counted in periods; bars of the same moment stand on each other
    double height = 0;   // below 0 it hangs
    bool apart = false;  // drawn another way than the rest
    std::string text;    // what it stands for, shown where the pointer is
  };
  const std::vector<Bar>& Bars() const { return bars_; }
  void SetBars(std::vector<Bar> bars);

 private:
  std::vector<Bar> bars_;
};

}  // namespace tarvolinex
