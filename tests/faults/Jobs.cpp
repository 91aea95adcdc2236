#include "faults/Jobs.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "app/Program.h"
#include "app/StartUp.h"
#include "cli/CommandLine.h"
#include "platform/RuntimeError.h"
#include "platform/files/Files.h"
#include "platform/text/Text.h"
#include "publish/PageText.h"
#include "publish/Template.h"
#include "support/ScriptedDesktop.h"

namespace tarvolinex {

namespace {

constexpr const char* kPreferences = R"({"AliasCalcName": "Other Tool", "OrgContactName": "B", "MinTerm": 24})";

void MakeRows(const std::string& path) {
  std::string rows = "CapitalCost,NumberOfPayments,Mode,Yield\n";
  for (int i = 0; i < 3000; ++i) rows += std::to_string(5000 + i) + ",36,0,9.5\n";
  WriteFile(path, rows);
}

}  // namespace

int RunProgram(const Workplace& place, const std::string& words, const std::string& input) {
  const std::string file = place.Work() + "/../input";
  WriteFile(file, input);
  dup2(::open(file.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
  const std::string line = "--app-folder " + place.App() + " --yes " + words;
  const auto split = Split(line, ' ');
  try {
    return RunWithoutWindow(ParseProgramOptions({split.begin(), split.end()}));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return kFailed;
  }
}

int PublishAndCompare(const Workplace& place) {
  const int status = RunProgram(place, "publish --supplier 1");
  if (status != 0) return status;
  ScriptedDesktop desktop;
  UseDesktop(&desktop);
  ProgramOptions options;
  options.appFolder = place.App();
  Run run;
  PrepareRun(options, run);
  const Branding branding = {run.Places(), run.CalculatorPreferences, run.CustomerReference};
  for (const bool test : {false, true}) {
    const std::string expected =
        PageBytes(FillPlaceholders(ReadPage(run.AppFolder + "\\CalcTemplate.html"), branding, test));
    for (const std::string& folder : {run.AppFolder + "\\", run.CalculatorFolder()}) {
      if (ReadFile(folder + (test ? "calc_test.html" : "calc.html")) == expected) continue;
      std::cerr << folder << (test ? "calc_test.html" : "calc.html") << " is not of the preferences that are stored\n";
      return 1;
    }
  }
  return 0;
}

std::vector<Job> AllJobs(const Workplace& place) {
  const auto program = [&place](const std::string& words, const std::string& input = "") {
    return [&place, words, input](const Tell& tell) {
      tell(0);
      const int status = RunProgram(place, words, input);
      if (status == 0) tell(1);
      return status;
    };
  };
  const std::string app = place.App(), out = place.Work() + "/out", data = place.Work() + "/data";
  std::vector<Job> jobs = {
      {.name = "a day in the window", .run = [&place](const Tell& tell) { return SpendDay(place, tell); }, .day = true},
      {.name = "preferences write", .run = program("preferences write", kPreferences)},
      {.name = "publish", .run = program("publish --supplier 2")},
      {.name = "live", .run = program("live --supplier 2 " + out + "/form.html")},
      {.name = "record write", .run = program("record write " + out + "/Supplier.dat", R"({"CompanyName": "Other"})")},
      {.name = "send",
       .run = program("send --supplier 1 --contact 1 --as zip --subject Calculator --message Hello"),
       .varying = {"app/CalcInstall.zip"},
       .package = "app/CalcInstall.zip"},
      {.name = "quotes keep",
       .run = program("quotes keep --supplier 1", "CapitalCost,NumberOfPayments\n12500,36\n8000,24\n")},
      {.name = "quote --output",
       .run = program("quote --supplier 1 " + out + "/rows.csv --output " + out + "/quotes.csv"),
       .prepare = [out] { MakeRows(out + "/rows.csv"); }},
      {.name = "new data folder",
       .run = program("--data-folder " + data + " suppliers"),
       .prepare =
           [data] {
             MakeFolder(data);
             CopyFile(DELIVERED_FOLDER "/Database.zip", data + "/Database.zip");
           },
       .dataFolder = data,
       .fresh = true},
      // Whoever starts for the first time is given a reference of his own.
      {.name = "first start",
       .run = program("publish --supplier 2"),
       .prepare =
           [&place] {
             std::filesystem::remove_all(place.Work());
             MakeFolder(place.App());
           },
       .varying = {"app/Database.zip", "app/Calc.Html", "app/Calc_test.Html", "app/calculator/calc.html",
                   "app/calculator/calc_test.html"},
       .fresh = true},
  };
  for (const std::string file : {"out/made.exe", "out/made.zip"}) {
    jobs.insert(jobs.begin() + 3, {.name = "package " + file.substr(9),
                                   .run = program("package --supplier 2 --output " + place.Work() + "/" + file),
                                   .varying = {file},
                                   .package = file});
  }
  return jobs;
}

}  // namespace tarvolinex
