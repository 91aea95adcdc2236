// A document of rich text: what stands on its pages, as values. PdfDocument.h makes a file of it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/files/Pictures.h"

namespace tarvolinex {

// A picture made of lines: it is drawn on the page, sharp at any size, and its texts can be searched. Lengths are in
// units of its own (the page scales width and height to what the text asks for), colours are RRGGBB.
struct Drawing {
  struct Box {
    double left, top, width, height;
    std::uint32_t colour;
  };
  struct Line {
    double fromX, fromY, toX, toY;
    double width;
    std::uint32_t colour;
  };
  enum class Anchor { Start, Middle, End };  // which point of the text stands at x
  struct Label {
    double x, baseline, size;  // size: of the letters
    Anchor anchor;
    std::uint32_t colour;
    std::string text;
    bool onWhite = false;  // nothing shows through between its letters
  };
  double width = 0, height = 0;
  std::vector<Box> boxes;  // in the order in which they are drawn; lines and labels come over them
  std::vector<Line> lines;
  std::vector<Label> labels;
};

struct RichDocument {
  // UTF-8. Lengths without a unit are 1/96 inch. Nothing is fetched: an <img> shows what has its name below,
  // as large as its width and height (both are needed) let it be.
  std::string html;
  std::map<std::string, Picture> pictures;
  std::map<std::string, Drawing> drawings;
  // The foot of each page, in the same way; empty = none.
  std::function<std::string(int page, int pages)> footer;
  std::string title, author;
  std::string language;  // "en-GB"; empty = not said
};

}  // namespace tarvolinex
