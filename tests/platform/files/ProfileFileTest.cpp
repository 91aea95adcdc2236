#include "platform/files/ProfileFile.h"

#include "support/Fixture.h"

namespace tarvolinex {

using ProfileFileTest = ProgramTest;

TEST_F(ProfileFileTest, ReadsWhatMakesSenseAndIgnoresCase) {
  const std::string path = folder.File("a.ini",
                                       "no section=1\r\n; [OPTIONS]\r\n[broken\r\n[ options ]\r\n  Name = \" two words "
                                       "\" \r\nnonsense\r\n;Name=comment\r\n"
                                       "Empty=\r\nname=second\r\nLong=" +
                                           std::string(300, 'x') + "\r\n[OTHER]\r\nOnly=here\r\n");
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"OPTIONS", "NAME", " two words "},
      {"OPTIONS", "Empty", ""},
      {"OPTIONS", "Only", "otherwise"},
      {"other", "ONLY", "here"},
      {"Options", "long", std::string(254, 'x')}};  // cut to the buffer
  for (const auto& [section, key, value] : cases) EXPECT_EQ(GetProfileString(path, section, key, "otherwise  "), value);
  EXPECT_EQ(GetProfileString(folder.Path() + "/missing.ini", "a", "b", "default"), "default");
}

TEST_F(ProfileFileTest, WritingKeepsEveryOtherByte) {
  const std::string before = "; \xE9 kept\n[A]\nkey = old\nrubbish\n\n[B]\nx=1";
  const std::string path = folder.File("a.ini", before);
  WriteProfileString(path, "a", "KEY", "new");
  EXPECT_EQ(ReadFile(path), "; \xE9 kept\n[A]\nkey =new\nrubbish\n\n[B]\nx=1");
  WriteProfileString(path, "A", "added", "2");
  WriteProfileString(path, "B", "y", "3");
  WriteProfileString(path, "C", "z", "4");
  EXPECT_EQ(ReadFile(path), "; \xE9 kept\n[A]\nkey =new\nrubbish\nadded=2\n\n[B]\nx=1\ny=3\n[C]\nz=4\n");
}

TEST_F(ProfileFileTest, ValuesComeBackAsTheyWereGiven) {
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
