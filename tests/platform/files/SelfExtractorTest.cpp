#include "platform/files/SelfExtractor.h"

#include <cstdio>

#include "platform/files/ZipComponent.h"
#include "support/Failure.h"
#include "support/Fixture.h"

namespace tarvolinex {

// An install file of two files.
class SelfExtractorTest : public ProgramTest {
 protected:
  SelfExtractorTest() {
    folder.File("files/calc.html", std::string(50000, 'a') + "page");
    folder.File("files/Größe!0.html", "form");
    ZipComponent zip;
    zip.ZipFileName = archive;
    zip.FilesToProcess = folder.Path() + "/files/*.*";
    EXPECT_EQ(zip.Zip(), 0) << zip.ErrorDescription();
  }
  std::string Write(const std::string& icon = "") {
    WriteSelfExtractor(settings, module, icon, archive, target);
    return ReadFile(target);
  }
  // What a command prints, and its exit status.
  static std::pair<int, std::string> Output(const std::string& command) {
    std::string output;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    char buffer[4096];
    while (const std::size_t count = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, count);
    return {pclose(pipe), output};
  }
  const std::string module = DELIVERED_FOLDER "/Xcdsfx32.bin", chart = ICONS_FOLDER "/CHART.ICO";
  const std::string archive = folder.Path() + "/in.zip", target = folder.Path() + "/CalcInstall.exe";
  SelfExtractorSettings settings{"Price book", "%t", "%t\\setup.exe"};
};

TEST_F(SelfExtractorTest, ALineBreakInTheTitleBeginsNoOtherSetting) {
  settings.title = "Price book\r\nCommand=evil";
  const std::string lines = "Title=Price book  Command=evil\nFolder=%t\nCommand=%t\\setup.exe\n";
  EXPECT_EQ(Write().find(lines), ReadFile(module).size() + 24);
}

TEST_F(SelfExtractorTest, OtherProgramsReadTheArchiveWithoutAWarning) {
  Write(chart);
  const std::string well = "No errors detected in compressed data of " + target + ".\n";
  EXPECT_EQ(Output("unzip -tq " + target), std::pair(0, well));
  // An entry begins where the directory says, counted from the start of the file.
  const auto python = Output(
      "python3 -W error -c \"import zipfile\nz = zipfile.ZipFile('" + target +
      "')\nz.fp.seek(z.getinfo('calc.html').header_offset)\n"
      "print(z.fp.read(4), z.testzip(), [i.filename for i in z.infolist()], z.read('calc.html')[-4:])\nz.close()\"");
  EXPECT_EQ(python.second, "b'PK\\x03\\x04' None ['calc.html', 'Größe!0.html'] b'page'\n");
  const auto seven = Output("7z t " + target);
  EXPECT_EQ(seven.first, 0) << seven.second;
  EXPECT_EQ(seven.second.find("WARNING"), std::string::npos) << seven.second;
}

TEST_F(SelfExtractorTest, TheIconsPictureTakesThePlaceOfTheModules) {
  const std::string own = Write(), other = Write(chart);
  const std::string picture = ReadFile(chart).substr(22);
  const std::size_t at = other.find(picture);
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(own.find(picture), std::string::npos);
  EXPECT_EQ(own.substr(0, at) + picture + own.substr(at + 744), other);
  EXPECT_EQ(own.substr(at, 744), ReadFile(ICONS_FOLDER "/CALCULATOR.ICO").substr(22));
}

TEST_F(SelfExtractorTest, WhatCannotBeUsedIsNamedAndNothingIsWritten) {
  const std::string program = ReadFile(module), icon = ReadFile(chart), zip = ReadFile(archive);
  std::string deep = icon, numbers = zip;
  deep.replace(36, 1, "\x08");
  numbers.replace(zip.size() - 12, 2, "\xff\xff");  // they stand for others elsewhere: an archive larger than its kind
  const struct {
    const char *file, *why;
    std::string bytes;
  } cases[] = {{"long.bin", ": something follows", program + "x"},
               {"text.bin", "", std::string(9000, 'x')},
               {"short.bin", "", program.substr(0, 300)},
               {"short.ico", "", icon.substr(0, 765)},
               {"text.ico", "", std::string(766, 'x')},
               {"many.ico", "", std::string("\0\0\1\0\xFF\xFF", 6)},
               {"deep.ico", ": it holds no picture", deep},
               {"late.zip", "", zip.substr(1)},
               {"long.zip", "", zip + "x"},
               {"short.zip", "", zip.substr(0, 10)},
               {"empty.zip", "", ""},
               {"numbers.zip", "", numbers},
               {"none.bin", "", "(missing)"},
               {"none.ico", "", "(missing)"}};
  for (const auto& c : cases) {
    const std::string name = c.file;
    const std::string path = c.bytes == "(missing)" ? folder.Path() + "/" + name : folder.File(name, c.bytes);
    const RuntimeError failure = FailureOf([&] {
      WriteSelfExtractor(settings, name.ends_with("bin") ? path : module, name.ends_with("ico") ? path : chart,
                         name.ends_with("zip") ? path : archive, target);
    });
    EXPECT_NE(failure.Description().find(name + c.why), std::string::npos) << name << ": " << failure.Description();
    EXPECT_FALSE(FileExists(target)) << name;
  }
}

}  // namespace tarvolinex
