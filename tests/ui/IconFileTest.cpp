#include "ui/iconedit/IconFile.h"

#include <array>
#include <cstdio>

#include "platform/RuntimeError.h"
#include "platform/files/Pictures.h"
#include "platform/files/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

// Every colour, a transparent pixel between each two, and no symmetry.
IconImage Sample() {
  IconImage image;
  for (int i = 0; i < kIconSide * kIconSide; i += 2) {
    image.Set(i % kIconSide, i / kIconSide, kIconPalette[static_cast<std::size_t>(i / 2 + i / 70) % kPaletteSize]);
  }
  image.Set(1, 0, 0xFFFFFF);
  return image;
}

// The picture's pixels are opaque ones of the icon's colours, or transparent ones.
void ExpectShows(const Picture& picture, const IconImage& image) {
  ASSERT_EQ(picture.pixels.size(), image.Pixels().size());
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    const Colour colour = image.Pixels()[i];
    const std::uint32_t rgb = (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
    const bool transparent = colour == kTransparentColour && picture.pixels[i] >> 24 == 0;
    ASSERT_TRUE(transparent || (colour != kTransparentColour && picture.pixels[i] == (0xFF000000 | rgb))) << i;
  }
}

using IconFileTest = ProgramTest;

TEST_F(IconFileTest, TheHeadersAreThoseOfTheFormat) {
  const std::string bytes = IconBytes(Sample());
  ASSERT_EQ(bytes.size(), 766U);
  EXPECT_EQ(bytes.substr(0, 22), std::string("\0\0\1\0\1\0\x20\x20\x10\0\1\0\4\0\xE8\2\0\0\x16\0\0\0", 22));
  EXPECT_EQ(bytes.substr(22, 24), std::string("\x28\0\0\0\x20\0\0\0\x40\0\0\0\1\0\4\0\0\0\0\0\x80\2\0\0", 24));
}

// Another reader of icons agrees, on ours and on those that are delivered.
TEST_F(IconFileTest, IcotoolShowsTheSame) {
  ZipComponent zip;
  zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
  zip.UnzipToFolder = folder.Path();
  zip.Unzip();
  folder.File("icons/SAMPLE.ICO", IconBytes(Sample()));
  const auto names = ListFiles(folder.Path() + "/icons/*.ico");
  ASSERT_GT(names.size(), 1U);
  for (const std::string& name : names) {
    const std::string path = folder.Path() + "/icons/" + name, listed = folder.Path() + "/list";
    EXPECT_EQ(FileLength(path), kIconFileLength) << name;
    if (std::system(("icotool -l '" + path + "' >'" + listed + "'").c_str()) != 0) GTEST_SKIP() << "no icotool here";
    EXPECT_EQ(ReadFile(listed), "--icon --index=1 --width=32 --height=32 --bit-depth=4 --palette-size=16\n") << name;
    ASSERT_EQ(std::system(("icotool -x -o '" + path + ".png' '" + path + "'").c_str()), 0);
    ExpectShows(LoadPicture(path + ".png"), LoadIcon(path));
    // Colour table, colours and mask; the header may state its counts or leave them out.
    EXPECT_TRUE(IconBytes(LoadIcon(path)).substr(62) == ReadFile(path).substr(62)) << name;
  }
}

TEST_F(IconFileTest, OtherColoursStayUntilTheyAreWritten) {
  // One pixel of (16, 200, 30) in the first colour's place.
  std::string bytes = IconBytes(Sample());
  bytes.replace(62, 3, "\x1E\xC8\x10");
  IconImage image = LoadIcon(folder.File("a.ico", bytes));
  EXPECT_EQ(image.At(0, 0), 0x1EC810U);
  EXPECT_EQ(LoadIcon(folder.File("b.ico", IconBytes(image))).At(0, 0), 0x00FF00U);
}

TEST_F(IconFileTest, TheLargePictureOfTwoIsTaken) {
  // A file of a 16 by 16 picture and then ours.
  const std::string one = IconBytes(Sample());
  std::string small(128 + 64, '\0');
  small.insert(0, one.substr(62, 64));
  small.insert(0, std::string("\x28\0\0\0\x10\0\0\0\x20\0\0\0\1\0\4\0\0\0\0\0\xC0\0\0\0", 24) + std::string(16, '\0'));
  const std::string two = std::string("\0\0\1\0\2\0", 6) +
                          std::string("\x10\x10\x10\0\1\0\4\0\x28\1\0\0\x26\0\0\0", 16) +
                          std::string("\x20\x20\x10\0\1\0\4\0\xE8\2\0\0\x4E\1\0\0", 16) + small + one.substr(22);
  ASSERT_EQ(static_cast<std::int64_t>(two.size()), kTwoIconsFileLength);
  EXPECT_EQ(LoadIcon(folder.File("two.ico", two)), Sample());
}

TEST_F(IconFileTest, WhatIsNoIconOfOurSizeIsRefused) {
  const std::string good = IconBytes(Sample());
  std::string offset = good, width = good, bits = good;
  offset.replace(18, 4, "\xFF\xFF\xFF\x7F");
  width.replace(26, 4, std::string("\x10\0\0\0", 4)).replace(6, 2, "\x10\x10");
  bits.replace(36, 2, "\x07\x00", 2);
  for (const std::string& bytes : {std::string(766, '\0'), std::string(766, '\xFF'), std::string(766, 'x'), offset,
                                   width, bits, good.substr(0, 100), std::string()}) {
    EXPECT_THROW(LoadIcon(folder.File("bad.ico", bytes)), RuntimeError) << bytes;
  }
  EXPECT_THROW(LoadIcon(folder.Path() + "/missing.ico"), RuntimeError);
}

TEST_F(IconFileTest, NamesAreThoseOfFilesInTheFolder) {
  EXPECT_EQ(IconPath(DataFolder, " blue star.ico.ICO "), DataFolder + "\\icons\\BLUE STAR.ICO");
  EXPECT_EQ(IconPath(DataFolder, "été"), DataFolder + "\\icons\\ÉTÉ.ICO");
  for (const char* good : {"BLUE", "a.b", "v 1.0", "éé"}) EXPECT_TRUE(IsIconName(good)) << good;
  for (const char* bad :
       {"", ".", "..", "a/b", "a\\b", "..\\x", "c:x", "a*", "a?", "a\"b", "<a>", "a|b", "a\nb", "NUL", "Цена"}) {
    EXPECT_FALSE(IsIconName(bad)) << bad;
  }
}

}  // namespace tarvolinex
