#include "platform/Pictures.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

TEST(Pictures, TheDeliveredPicturesLoad) {
  TemporaryFolder folder;
  ZipComponent zip;
  zip.ZipFileName = DELIVERED_FOLDER "/Database.zip";
  zip.UnzipToFolder = folder.Path();
  zip.Unzip();
  const Picture icon = LoadPicture(folder.Path() + "\\icons\\coins.ico");
  EXPECT_EQ(icon.width, 32);
  EXPECT_EQ(icon.pixels.size(), 1024U);
  EXPECT_EQ(LoadPicture(folder.Path() + "\\logo\\logo.gif").width, 300);
  EXPECT_GT(LoadPicture(folder.Path() + "\\logo\\background.jpg").height, 0);
}

TEST(Pictures, WhatIsNoPictureIsRefused) {
  TemporaryFolder folder;
  EXPECT_THROW(LoadPicture(folder.File("a.png", "not a picture")), RuntimeError);
  EXPECT_THROW(LoadPicture(folder.Path() + "/missing.png"), RuntimeError);
  // The header of a bitmap of 30,000 by 30,000 pixels.
  std::string huge("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x30\x75\0\0\x30\x75\0\0\x01\0\x18\0\0\0\0\0", 34);
  huge.resize(54, '\0');
  EXPECT_THROW(LoadPicture(folder.File("huge.bmp", huge)), RuntimeError);
}

}  // namespace tarvolinex
