#include "platform/files/ProfileFile.h"

#include <gtest/gtest.h>

#include "support/Fixture.h"

namespace tarvolinex {

TEST(ProfileFile, ReadsWhatMakesSenseAndIgnoresCase) {
  TemporaryFolder folder;
  const std::string path =
      folder.File("a.ini",
                  "no section=1\r\n; [OPTIONS]\r\n[broken\r\n[ options ]\r\n  Name = \" two words \" \r\n"
                  "nonsense\r\n;Name=comment\r\nEmpty=\r\nname=second\r\n[OTHER]\r\nOnly=here\r\n");
  EXPECT_EQ(GetProfileString(path, "OPTIONS", "NAME", "x"), " two words ");
  EXPECT_EQ(GetProfileString(path, "OPTIONS", "Empty", "x"), "");
  EXPECT_EQ(GetProfileString(path, "OPTIONS", "Only", "fallback"), "fallback");
  EXPECT_EQ(GetProfileString(path, "other", "ONLY", ""), "here");
  EXPECT_EQ(GetProfileString(folder.Path() + "/missing.ini", "a", "b", "default  "), "default");
}

TEST(ProfileFile, ValueIsCutToTheBuffer) {
  TemporaryFolder folder;
  const std::string path = folder.File("a.ini", "[S]\nk=" + std::string(300, 'x') + "\n");
  EXPECT_EQ(GetProfileString(path, "S", "k", "").size(), 254U);
}

TEST(ProfileFile, WritingKeepsEveryOtherByte) {
  TemporaryFolder folder;
  const std::string before = "; \xE9 kept\n[A]\nkey = old\nrubbish\n\n[B]\nx=1";
  const std::string path = folder.File("a.ini", before);
  WriteProfileString(path, "a", "KEY", "new");
  EXPECT_EQ(ReadFile(path), "; \xE9 kept\n[A]\nkey =new\nrubbish\n\n[B]\nx=1");
  WriteProfileString(path, "A", "added", "2");
  WriteProfileString(path, "B", "y", "3");
  WriteProfileString(path, "C", "z", "4");
  EXPECT_EQ(ReadFile(path), "; \xE9 kept\n[A]\nkey =new\nrubbish\nadded=2\n\n[B]\nx=1\ny=3\n[C]\nz=4\n");
}

TEST(ProfileFile, ValuesComeBackAsTheyWereGiven) {
  TemporaryFolder folder;
  const std::string path = folder.Path() + "/new.ini";
  for (const char* value :
       {"plain", "\"quoted\"", " blanks ", "'", "Zoë £5 [x]=y;z", "\"\"", "/home/łucja 日本", " ł "}) {
    WriteProfileString(path, "S", "k", value);
    EXPECT_EQ(GetProfileString(path, "S", "k", ""), value);
  }
  WriteProfileString(path, "S", "k", "first\r\n[EVIL]\r\n");
  EXPECT_EQ(ReadFile(path), "[S]\r\nk=first\r\n");
}

}  // namespace tarvolinex
