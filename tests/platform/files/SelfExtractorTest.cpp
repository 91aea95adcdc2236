#include "platform/files/SelfExtractor.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <cstdio>
#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/files/ZipComponent.h"
#include "support/Fixture.h"

namespace tarvolinex {

namespace {

const std::string kModule = DELIVERED_FOLDER "/Xcdsfx32.bin";
const std::string kIcon = std::string(ICONS_FOLDER) + "/CHART.ICO";

std::uint32_t Number(const std::string& bytes, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + offset, 4);
  return number;
}

// What a command prints, and its exit status.
std::pair<int, std::string> Output(const std::string& command) {
  std::string output;
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  char buffer[4096];
  while (const std::size_t count = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, count);
  return {pclose(pipe), output};
}

// An install file of two files, in a folder of its own.
struct InstallFile {
  TemporaryFolder folder;
  SelfExtractorSettings settings{"Price book", "%t", "%t\\setup.exe"};
  std::string archive = folder.Path() + "/in.zip", target = folder.Path() + "/CalcInstall.exe";

  InstallFile() {
    folder.File("files/calc.html", std::string(50000, 'a') + "page");
    folder.File("files/Größe!0.html", "form");
    ZipComponent zip;
    zip.ZipFileName = archive;
    zip.FilesToProcess = folder.Path() + "/files/*.*";
    EXPECT_EQ(zip.Zip(), 0) << zip.ErrorDescription();
  }
  std::string Write(const std::string& module = kModule, const std::string& icon = "") {
    WriteSelfExtractor(settings, module, icon, archive, target);
    return ReadFile(target);
  }
  // The description of the failure; empty when there is none. Nothing of a failed target stays.
  std::string FailureOf(const std::string& module, const std::string& icon = "") {
    DeleteIfThere();
    try {
      Write(module, icon);
    } catch (const RuntimeError& failure) {
      EXPECT_FALSE(FileExists(target));
      return failure.Description();
    }
    return "";
  }
  void DeleteIfThere() const {
    if (FileExists(target)) DeleteFile(target);
  }
};

}  // namespace

TEST(SelfExtractor, ModuleSettingsAndArchiveFollowEachOther) {
  InstallFile file;
  file.settings.title = "Price book\r\nCommand=evil";
  const std::string bytes = file.Write(), module = ReadFile(kModule);
  const std::size_t at = module.size();
  EXPECT_EQ(bytes.substr(at, 16), std::string("TARVOLINEX-SFX1\0", 16));
  const std::string lines = "Title=Price book  Command=evil\nFolder=%t\nCommand=%t\\setup.exe\n";
  ASSERT_EQ(Number(bytes, at + 16), lines.size());
  EXPECT_EQ(bytes.substr(at + 24, lines.size()), lines);
  EXPECT_EQ(Number(bytes, at + 20), ReadFile(file.archive).size());
  EXPECT_EQ(bytes.size(), at + 24 + lines.size() + ReadFile(file.archive).size());
}

TEST(SelfExtractor, OtherProgramsReadTheArchiveWithoutAWarning) {
  InstallFile file;
  file.Write(kModule, kIcon);
  const auto [status, unzip] = Output("unzip -tq " + file.target);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(unzip, "No errors detected in compressed data of " + file.target + ".\n");
  // An entry begins where the directory says, counted from the start of the file.
  const auto python = Output(
      "python3 -W error -c \"import zipfile\nz = zipfile.ZipFile('" + file.target +
      "')\nz.fp.seek(z.getinfo('calc.html').header_offset)\n"
      "print(z.fp.read(4), z.testzip(), [i.filename for i in z.infolist()], z.read('calc.html')[-4:])\nz.close()\"");
  EXPECT_EQ(python.second, "b'PK\\x03\\x04' None ['calc.html', 'Größe!0.html'] b'page'\n");
  const auto seven = Output("7z t " + file.target);
  EXPECT_EQ(seven.first, 0) << seven.second;
  EXPECT_EQ(seven.second.find("WARNING"), std::string::npos) << seven.second;
}

TEST(SelfExtractor, TheIconsPictureTakesThePlaceOfTheModules) {
  InstallFile file;
  const std::string own = file.Write(), other = file.Write(kModule, kIcon);
  const std::string picture = ReadFile(kIcon).substr(22);
  const std::size_t at = other.find(picture);
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(own.find(picture), std::string::npos);
  EXPECT_EQ(own.substr(0, at) + picture + own.substr(at + 744), other);
  EXPECT_EQ(own.substr(at, 744), ReadFile(ICONS_FOLDER "/CALCULATOR.ICO").substr(22));
}

TEST(SelfExtractor, WhatCannotBeUsedIsNamedAndNothingIsWritten) {
  InstallFile file;
  const std::string module = ReadFile(kModule), icon = ReadFile(kIcon), zip = ReadFile(file.archive);
  const auto with = [&](const std::string& name, std::string bytes, std::size_t at, const std::string& change) {
    return file.folder.File(name, bytes.replace(at, change.size(), change));
  };
  EXPECT_NE(file.FailureOf("/no/such.bin").find("/no/such.bin"), std::string::npos);
  EXPECT_NE(file.FailureOf(kModule, "/no/such.ico").find("/no/such.ico"), std::string::npos);
  EXPECT_NE(file.FailureOf(file.folder.File("long.bin", module + "x")).find("long.bin: something follows"),
            std::string::npos);
  EXPECT_NE(file.FailureOf(file.folder.File("text.bin", std::string(9000, 'x'))).find("text.bin"), std::string::npos);
  EXPECT_NE(file.FailureOf(file.folder.File("short.bin", module.substr(0, 300))).find("short.bin"), std::string::npos);
  for (const std::string& odd : {icon.substr(0, 765), std::string(766, 'x'), std::string("\0\0\1\0\xFF\xFF", 6)}) {
    EXPECT_NE(file.FailureOf(kModule, file.folder.File("odd.ico", odd)).find("odd.ico"), std::string::npos);
  }
  EXPECT_NE(file.FailureOf(kModule, with("deep.ico", icon, 36, "\x08")).find("deep.ico: it holds no picture"),
            std::string::npos);
  for (const std::string& damaged : {zip.substr(1), zip + "x", zip.substr(0, 10), std::string()}) {
    file.folder.File("in.zip", damaged);
    EXPECT_NE(file.FailureOf(kModule).find("in.zip"), std::string::npos) << damaged.size();
  }
  // Numbers that stand for others elsewhere: an archive larger than its kind allows.
  with("in.zip", zip, zip.size() - 12, "\xff\xff");
  EXPECT_NE(file.FailureOf(kModule).find("in.zip"), std::string::npos);
}

}  // namespace tarvolinex
