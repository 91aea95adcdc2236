#include "platform/files/ZipComponent.h"

#include <zip.h>

#include "platform/RuntimeError.h"
#include "platform/files/Deflated.h"
#include "support/Fixture.h"

namespace tarvolinex {

class ZipComponentTest : public ProgramTest {
 protected:
  // An archive with one entry of the given name.
  void Give(const char* name) {
    zip.ZipFileName = folder.Path() + "/made.zip";
    zip_t* archive = zip_open(zip.ZipFileName.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    zip_file_add(archive, name, zip_source_buffer(archive, "evil", 4, 0), 0);
    zip_close(archive);
  }
  ZipComponent zip;
};

TEST_F(ZipComponentTest, PacksWithoutFoldersOrExcludedFilesAndUnpacksAgain) {
  folder.File("in/calc.html", std::string(5000, 'a'));
  for (const char* left : {"in/calc_Test.html", "in/Logo.gif", "in/sub/inner.txt"}) folder.File(left, "no");
  zip.ZipFileName = folder.Path() + "\\out.zip";
  zip.FilesToProcess = folder.Path() + "\\in\\*.*";
  zip.FilesToExclude = "*test*.*\r\nlogo.*\r\n";
  ASSERT_EQ(zip.Zip(), 0) << zip.ErrorDescription();
  zip.UnzipToFolder = folder.Path() + "\\out";
  zip.Unzip();
  EXPECT_EQ(ListFiles(folder.Path() + "\\out\\*.*"), std::vector<std::string>{"calc.html"});
  EXPECT_EQ(ReadFile(folder.Path() + "\\out\\calc.html"), std::string(5000, 'a'));
}

TEST_F(ZipComponentTest, WhatIsDeflatedOnceIsWhatEachFileHolds) {
  const DeflateOnce once;
  zip.ZipFileName = folder.Path() + "\\out.zip";
  zip.FilesToProcess = folder.Path() + "\\in\\*.*";
  zip.UnzipToFolder = folder.Path() + "\\out";
  for (const std::string content : {"8.50", "8.50", "9.00", "8.50", "", "8.50"}) {
    folder.File("in/rates.txt", content);
    ASSERT_EQ(zip.Zip(), 0) << zip.ErrorDescription();
    zip.Unzip();
    EXPECT_EQ(ReadFile(folder.Path() + "\\out\\rates.txt"), content);
  }
}

TEST_F(ZipComponentTest, RefusesEntriesThatLeaveTheFolder) {
  zip.UnzipToFolder = folder.Path() + "/in";
  for (const char* name : {"../evil.txt", "/evil.txt", "a/../../evil.txt", "C:evil.txt", "..\\evil.txt"}) {
    Give(name);
    EXPECT_THROW(zip.Unzip(), RuntimeError) << name;
    EXPECT_FALSE(FileExists(folder.Path() + "/evil.txt")) << name;
    EXPECT_FALSE(FolderExists(zip.UnzipToFolder)) << name;
  }
}

TEST_F(ZipComponentTest, ADamagedArchiveLeavesTheOldFile) {
  Give("a.txt");
  zip.UnzipToFolder = folder.Path();
  folder.File("a.txt", "old");
  std::string bytes = ReadFile(zip.ZipFileName);
  bytes[bytes.find("evil")] = 'E';
  for (const std::string& damaged : {bytes, bytes.substr(0, bytes.size() / 2)}) {
    WriteFile(zip.ZipFileName, damaged);
    EXPECT_THROW(zip.Unzip(), RuntimeError);
    EXPECT_EQ(ReadFile(folder.Path() + "/a.txt"), "old");
  }
}

}  // namespace tarvolinex
