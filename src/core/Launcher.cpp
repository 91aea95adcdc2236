#include "core/Launcher.h"

#include <string>

#include "controls/Desktop.h"
#include "platform/files/Files.h"

namespace tarvolinex {

void ReportLaunch(Reporter& reporter, int result) {
  constexpr int kLowestSuccess = 32;
  if (result < kLowestSuccess) reporter.ShowError("External application launch failed");
}

namespace {

// The folder part of a file; a drive's root keeps its separator.
std::string WorkingFolder(const std::string& file) {
  const auto at = file.find_last_of("\\/");
  if (at == std::string::npos) return CurrentFolder();
  const bool root = at == 0 || file[at - 1] == ':';
  return file.substr(0, root ? at + 1 : at);
}

}  // namespace

int LaunchDocument(Reporter& reporter, std::string_view command, bool edit) {
  SetBusy(true);
  const std::string quoted = "\"" + std::string(command) + "\"";
  const auto close = quoted.find('"', 1);
  const std::string file = quoted.substr(1, close - 1);
  std::string parameters = quoted.substr(close + 1);
  parameters.erase(0, parameters.find_first_not_of(' '));
  if (parameters == "\"") parameters.clear();
  const std::string folder = WorkingFolder(file);

  Desktop& desktop = TheDesktop();
  constexpr int kNoProgram = 31;
  int result =
      desktop.ShellExecute(edit ? "edit" : "open", file, parameters, folder, edit ? kShowNormal : kShowMinimised);
  desktop.DoEvents();
  if (edit && result == kNoProgram) result = desktop.OpenWith(file);
  SetBusy(false);
  ReportLaunch(reporter, result);
  return result;
}

void ShowHelpPage(Run& run, int topic) {
  const char* page = topic == 1 ? "options" : topic == 2 ? "options_Forms" : topic == 4 ? "sendsub" : "main";
  LaunchDocument(run, run.AppFolder + "\\Help\\" + page + ".HTM");
}

}  // namespace tarvolinex
