// Icon files: one picture of 32 by 32 pixels in 16 colours with its mask, 766 bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ui/iconedit/IconImage.h"

namespace tarvolinex {

inline constexpr std::int64_t kIconFileLength = 766;       // bytes; the only length that is written
inline constexpr std::int64_t kTwoIconsFileLength = 1078;  // bytes; with a second picture of 16 by 16

// The bytes of the icon's file. A colour outside the palette is written as the palette colour nearest to it.
std::string IconBytes(const IconImage& image);

// The 32 by 32 picture of a file, whatever else the file holds. A pixel that is more transparent than opaque takes the
// transparent colour. Throws RuntimeError 53 when the file is missing and 481 when it holds no such picture.
IconImage LoadIcon(std::string_view path);

// The name without any ".ICO" (without regard to case) and without blanks around it: "blue.ico" is "blue".
std::string IconBaseName(std::string_view name);

// Whether a file can be called so: not empty, no control character, none of \ / : * ? " < > |, not only dots.
bool IsIconName(std::string_view baseName);

// Path of the icon of that name in the data folder: its base name in capitals, with ".ICO".
std::string IconPath(const std::string& dataFolder, std::string_view name);

}  // namespace tarvolinex
