// Other programs of this machine: those that send mail, print passwords or read old databases.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/network/Transfer.h"

namespace tarvolinex {

struct OtherProgram {
  std::string name, path;  // name: for people
  std::vector<std::string> arguments;
  int error;                             // the number of its failure
  std::chrono::milliseconds ending;      // how long it may work when it has taken its input
  std::int64_t longestOutput = 1 << 16;  // bytes
};

// How far a program came.
struct ProgramEnd {
  bool started = false;
  int exitCode = -1;  // -1: it did not end by itself
};

// Runs a program to its end while the windows live. Returns what it printed; throws RuntimeError when it cannot be
// started, fails, takes nothing for too long or prints without end. `end` is set in either case.
std::string RunProgram(const OtherProgram& program, const std::string& input, const TransferProgress& progress,
                       const TransferPatience& patience, ProgramEnd* end = nullptr);

// The first line that the shell command prints.
std::string PasswordPrintedBy(const std::string& command, const TransferProgress& progress,
                              const TransferPatience& patience);

// What a server or a program says of itself, without its line ends.
std::string SaidBy(std::string_view bytes);

}  // namespace tarvolinex
