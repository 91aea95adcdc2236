// The program's entry point: the window, or one command.
#include <exception>
#include <iostream>

#include "app/Program.h"
#include "cli/CommandLine.h"

int main(int argc, char** argv) {
  using namespace tarvolinex;
  const ProgramOptions options = ParseProgramOptions({argv + 1, argv + argc});
  if (!options.error.empty()) {
    std::cerr << "tarvolinex: " << options.error << "\n\n" << UsageText();
    return kUsageError;
  }
  if (options.help) {
    std::cout << (options.command.empty() ? UsageText() : UsageText(options.command));
    return kDone;
  }
  if (options.version) {
    std::cout << "Tarvolinex " TARVOLINEX_VERSION "\n";
    return kDone;
  }
  try {
    return options.command.empty() ? RunWindow(argc, argv, options) : RunWithoutWindow(options);
  } catch (const std::exception& failure) {
    std::cerr << "tarvolinex: " << failure.what() << '\n';
    return kFailed;
  }
}
