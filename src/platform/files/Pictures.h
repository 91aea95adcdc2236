// Pictures as plain pixels.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolinex {

struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint32_t> pixels;  // row by row from the top, AARRGGBB
  bool Empty() const { return pixels.empty(); }
};

// Loads an ICO, BMP, GIF (first frame), JPG or PNG file. Throws RuntimeError 53 when the file is missing and 481 when
// it is no picture that can be read, or is larger than 64 million pixels.
Picture LoadPicture(std::string_view path);

// The first picture of exactly that size in pixels, of a file that may hold several (an ICO file). Throws like
// LoadPicture, and 481 when none has that size.
Picture LoadPicture(std::string_view path, int width, int height);

}  // namespace tarvolinex
