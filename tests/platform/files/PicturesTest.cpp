#include "platform/files/Pictures.h"

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

TEST(Pictures, WhatIsNoPictureIsRefused) {
  TemporaryFolder folder;
  EXPECT_THROW(LoadPicture(folder.File("a.png", "not a picture")), RuntimeError);
  EXPECT_THROW(LoadPicture(folder.Path() + "/missing.png"), RuntimeError);
  const char* drawing = R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><path d="M1 1"/></svg>)";
  EXPECT_THROW(LoadPicture(folder.File("a.gif", drawing)), RuntimeError);
  // The header of a bitmap of 30,000 by 30,000 pixels.
  std::string huge("BM\0\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x30\x75\0\0\x30\x75\0\0\x01\0\x18\0\0\0\0\0", 34);
  huge.resize(54, '\0');
  EXPECT_THROW(LoadPicture(folder.File("huge.bmp", huge)), RuntimeError);
}

}  // namespace tarvolinex
