#include "platform/files/Files.h"

#include <sys/stat.h>

#include "support/Failure.h"
#include "support/Fixture.h"

namespace tarvolinex {

using FilesTest = ProgramTest;

TEST_F(FilesTest, PathsAreMappedAndFoundWithoutRegardToCase) {
  folder.File("Forms/12.HTML", "page");
  EXPECT_EQ(ReadFile(folder.Path() + "\\forms\\12.html"), "page");
  EXPECT_TRUE(FileExists(folder.Path() + "\\FORMS/12.Html"));
  EXPECT_FALSE(FileExists(folder.Path() + "\\forms"));
  EXPECT_TRUE(FolderExists(folder.Path() + "\\forms"));
  WriteFile(folder.Path() + "\\forms\\12.html", "new");
  EXPECT_EQ(ListFiles(folder.Path() + "\\forms\\*.*"), std::vector<std::string>{"12.HTML"});
  setenv("HOME", folder.Path().c_str(), 1);
  EXPECT_EQ(NativePath("C:\\CalcInstall.exe"), folder.Path() + "/CalcInstall.exe");
}

TEST_F(FilesTest, PatternsMatchNamesInOrder) {
  for (const char* name : {"b.html", "A.HTML", "logo.gif", "noextension", "c.htm"}) folder.File(name, "");
  EXPECT_EQ(ListFiles(folder.Path() + "\\*.html"), std::vector<std::string>({"A.HTML", "b.html"}));
  EXPECT_EQ(ListFiles(folder.Path() + "\\LOGO.*"), std::vector<std::string>{"logo.gif"});
  EXPECT_EQ(ListFiles(folder.Path() + "\\*.*").size(), 5U);
  EXPECT_EQ(ListFiles(folder.Path() + "\\?.htm*").size(), 3U);
  EXPECT_TRUE(ListFiles(folder.Path() + "\\none\\*.*").empty());
}

TEST_F(FilesTest, FailuresCarryTheirNumbers) {
  const std::string file = folder.File("a", "x"), inside = folder.Path() + "\\";
  const std::pair<int, std::function<void()>> cases[] = {
      {kFileNotFound, [&] { DeleteFile(inside + "missing"); }},
      {kFileNotFound, [&] { CopyFile(inside + "missing", file); }},
      {kPathNotFound, [&] { WriteFile(inside + "no\\folder", ""); }},
      {kPathNotFound, [] { ReadFile("/dev/null/x"); }},
      {kPathNotFound, [] { WriteFile("/dev/full/x", ""); }},
      {kPathAccess, [&] { WriteFile(folder.Path(), ""); }},
      {kBadFileName, [&] { WriteFile(inside + std::string(300, 'n'), ""); }},
  };
  for (const auto& [number, action] : cases) EXPECT_EQ(FailureOf(action).Number(), number);
}

TEST_F(FilesTest, AFileThatIsReplacedKeepsItsRights) {
  const std::string path = folder.File("a", "old");
  chmod(path.c_str(), 0640);
  WholeFile(path).Write("half");  // not committed
  EXPECT_EQ(ReadFile(path), "old");
  WriteFile(path, "new");
  EXPECT_EQ(ReadFile(path), "new");
  EXPECT_EQ(static_cast<int>(std::filesystem::status(path).permissions()), 0640);
}

TEST_F(FilesTest, PortableNamesAreThoseThatEverySystemTakes) {
  for (const char* name : {"a", "Größe, neu!0.html", "Constant.html", "com.html", "COM10.x", ".x", "a b"}) {
    EXPECT_TRUE(IsPortableFileName(name)) << name;
  }
  for (const char* name : {"", "a.", "a ", "Con.ditions!0.html", "nul", "aux .x", "LPT9.html", "com².x", "a/b", "a\\b",
                           "a:b", "a?", "a\tb", "Цена.html", "\U0001F642"}) {
    EXPECT_FALSE(IsPortableFileName(name)) << name;
  }
  EXPECT_FALSE(IsPortableFileName(std::string(256, 'n')));
}

}  // namespace tarvolinex
