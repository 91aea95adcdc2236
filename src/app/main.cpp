// The program's entry point: the window, or one command.
#include <exception>
#include <iostream>

#include "app/Program.h"
#include "cli/CommandLine.h"
#include "platform/files/Files.h"

namespace {

// The exit status once everything has been printed: what standard output does not take is a failure.
int Printed() {
  using namespace tarvolinex;
  return FlushOutput() ? kDone : kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tarvolinex;
  ReserveStandardStreams();
  const ProgramOptions options = ParseProgramOptions({argv + 1, argv + argc});
  if (!options.error.empty()) {
    std::cerr << "tarvolinex: " << options.error << "\n\n" << UsageText();
    return kUsageError;
  }
  if (options.help) {
    std::cout << (options.command.empty() ? UsageText() : UsageText(options.command));
    return Printed();
  }
  if (options.version) {
    std::cout << "Tarvolinex " TARVOLINEX_VERSION "\n";
    return Printed();
  }
  try {
    return options.command.empty() ? RunWindow(argc, argv, options) : RunWithoutWindow(options);
  } catch (const std::exception& failure) {
    std::cerr << "tarvolinex: " << failure.what() << '\n';
    return kFailed;
  }
}
