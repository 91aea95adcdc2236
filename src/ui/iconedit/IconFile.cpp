#include "ui/iconedit/IconFile.h"

#include <algorithm>
#include <cstdint>

#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/files/Pictures.h"
#include "platform/text/Text.h"

namespace tarvolinex {

namespace {

constexpr int kBitsPerPixel = 4;
constexpr std::uint32_t kFileHeader = 22, kBitmapHeader = 40, kColourTable = 64;
constexpr std::uint32_t kColourBytes = 512, kMaskBytes = 128;
static_assert(kFileHeader + kBitmapHeader + kColourTable + kColourBytes + kMaskBytes == kIconFileLength);

int Part(Colour colour, int shift) {
  return static_cast<int>(colour >> shift & 0xFF);
}

int NearestIndex(Colour colour) {
  const auto distance = [colour](Colour other) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
      const int difference = Part(colour, shift) - Part(other, shift);
      sum += difference * difference;
    }
    return sum;
  };
  const auto nearest = std::min_element(kIconPalette.begin(), kIconPalette.end(),
                                        [&](Colour a, Colour b) { return distance(a) < distance(b); });
  return static_cast<int>(nearest - kIconPalette.begin());
}

// Little-endian, as the whole file is.
void Put(std::string& bytes, std::uint32_t value, int width) {
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

void PutHeaders(std::string& bytes) {
  Put(bytes, 0, 2);
  Put(bytes, 1, 2);  // an icon, not a pointer
  Put(bytes, 1, 2);  // one picture
  Put(bytes, kIconSide, 1);
  Put(bytes, kIconSide, 1);
  Put(bytes, kPaletteSize, 1);
  Put(bytes, 0, 1);
  Put(bytes, 1, 2);  // planes
  Put(bytes, kBitsPerPixel, 2);
  Put(bytes, kBitmapHeader + kColourTable + kColourBytes + kMaskBytes, 4);
  Put(bytes, kFileHeader, 4);  // where the picture starts

  Put(bytes, kBitmapHeader, 4);
  Put(bytes, kIconSide, 4);
  Put(bytes, 2 * kIconSide, 4);  // colours and mask together
  Put(bytes, 1, 2);              // planes
  Put(bytes, kBitsPerPixel, 2);
  Put(bytes, 0, 4);  // not compressed
  Put(bytes, kColourBytes + kMaskBytes, 4);
  for (int i = 0; i < 4; ++i) Put(bytes, 0, 4);  // resolution and colour counts: as the format has them
}

// Both bitmaps run from the bottom row to the top, the leftmost pixel in the highest bits. A transparent pixel is black
// under its mask, so that what lies behind it shows unchanged.
void PutColours(std::string& bytes, const IconImage& image) {
  const auto index = [&](int x, int y) {
    return image.At(x, y) == kTransparentColour ? 0 : NearestIndex(image.At(x, y));
  };
  for (int y = kIconSide - 1; y >= 0; --y) {
    for (int x = 0; x < kIconSide; x += 2) bytes += static_cast<char>(index(x, y) << 4 | index(x + 1, y));
  }
}

void PutMask(std::string& bytes, const IconImage& image) {
  for (int y = kIconSide - 1; y >= 0; --y) {
    for (int x = 0; x < kIconSide; x += 8) {
      int bits = 0;
      for (int bit = 0; bit < 8; ++bit) bits = bits << 1 | (image.At(x + bit, y) == kTransparentColour ? 1 : 0);
      bytes += static_cast<char>(bits);
    }
  }
}

}  // namespace

std::string IconBytes(const IconImage& image) {
  std::string bytes;
  PutHeaders(bytes);
  for (const Colour colour : kIconPalette) {
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(Part(colour, shift));  // blue, green, red
    bytes += '\0';
  }
  PutColours(bytes, image);
  PutMask(bytes, image);
  return bytes;
}

IconImage LoadIcon(std::string_view path) {
  const Picture picture = LoadPicture(path, kIconSide, kIconSide);
  IconImage image;
  for (int i = 0; i < kIconSide * kIconSide; ++i) {
    const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(i)];  // AARRGGBB
    constexpr std::uint32_t kHalf = 0x80000000;
    if (pixel < kHalf) continue;
    image.Set(i % kIconSide, i / kIconSide, (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF));
  }
  return image;
}

std::string IconBaseName(std::string_view name) {
  return std::string(Trim(ReplaceAllNoCase(name, ".ICO", "")));
}

bool IsIconName(std::string_view baseName) {
  if (baseName.find_first_not_of('.') == std::string_view::npos) return false;
  return IsPortableFileName(std::string(baseName) + ".ICO");
}

std::string IconPath(const std::string& dataFolder, std::string_view name) {
  return dataFolder + "\\icons\\" + UpperCase(IconBaseName(name)) + ".ICO";
}

}  // namespace tarvolinex
