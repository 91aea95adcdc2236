#include "platform/files/ZipComponent.h"

#include <gtest/gtest.h>
#include <zip.h>

#include "platform/RuntimeError.h"
#include "support/Fixture.h"

namespace tarvolinex {

namespace {

// An archive with one entry of the given name.
std::string ArchiveWith(const TemporaryFolder& folder, const char* name) {
  const std::string path = folder.Path() + "/made.zip";
  zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  zip_file_add(archive, name, zip_source_buffer(archive, "evil", 4, 0), 0);
  zip_close(archive);
  return path;
}

}  // namespace

TEST(ZipComponent, PacksWithoutFoldersOrExcludedFilesAndUnpacksAgain) {
  TemporaryFolder source, target;
  source.File("calc.html", std::string(5000, 'a'));
  source.File("calc_Test.html", "preview");
  source.File("Logo.gif", "logo");
  source.File("sub/inner.txt", "no");
  ZipComponent zip;
  zip.ZipFileName = target.Path() + "\\out.zip";
  zip.FilesToProcess = source.Path() + "\\*.*";
  zip.FilesToExclude = "*test*.*\r\nlogo.*\r\n";
  ASSERT_EQ(zip.Zip(), 0) << zip.ErrorDescription();
  zip.UnzipToFolder = target.Path() + "\\inside";
  zip.Unzip();
  EXPECT_EQ(ListFiles(target.Path() + "\\inside\\*.*"), std::vector<std::string>{"calc.html"});
  EXPECT_EQ(ReadFile(target.Path() + "\\inside\\calc.html"), std::string(5000, 'a'));
}

TEST(ZipComponent, RefusesEntriesThatLeaveTheFolder) {
  for (const char* name : {"../evil.txt", "/evil.txt", "a/../../evil.txt", "C:evil.txt", "..\\evil.txt"}) {
    TemporaryFolder folder;
    ZipComponent zip;
    zip.ZipFileName = ArchiveWith(folder, name);
    zip.UnzipToFolder = folder.Path() + "/in";
    EXPECT_THROW(zip.Unzip(), RuntimeError) << name;
    EXPECT_FALSE(FileExists(folder.Path() + "/evil.txt")) << name;
    EXPECT_FALSE(FolderExists(zip.UnzipToFolder)) << name;
  }
}

TEST(ZipComponent, ADamagedArchiveLeavesTheOldFile) {
  TemporaryFolder folder;
  ZipComponent zip;
  zip.ZipFileName = ArchiveWith(folder, "a.txt");
  zip.UnzipToFolder = folder.Path();
  folder.File("a.txt", "old");
  std::string bytes = ReadFile(zip.ZipFileName);
  bytes[bytes.find("evil")] = 'E';
  WriteFile(zip.ZipFileName, bytes);
  EXPECT_THROW(zip.Unzip(), RuntimeError);
  EXPECT_EQ(ReadFile(folder.Path() + "/a.txt"), "old");
  WriteFile(zip.ZipFileName, bytes.substr(0, bytes.size() / 2));
  EXPECT_THROW(zip.Unzip(), RuntimeError);
}

}  // namespace tarvolinex
