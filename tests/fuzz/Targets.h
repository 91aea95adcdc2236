// The readers of bytes from outside, each fed with the bytes of a file. What a reader refuses is as good as what it
// takes; a target fails by crashing, by Expect, or by never ending.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Run.h"
#include "platform/RuntimeError.h"

namespace tarvolinex::fuzz {

struct Target {
  std::string name;  // of its folder in the corpus
  void (*read)(std::string_view bytes);
};
std::vector<Target> DatabaseTargets();
std::vector<Target> PageTargets();
std::vector<Target> PackageTargets();
std::vector<Target> ServerTargets();
std::vector<Target> TextTargets();
std::vector<Target> WindowsTargets();
std::vector<Target> AllTargets();

// Ends the program when it does not hold.
void Expect(bool holds, const char* what);

// The run of this process, in its folder.
Run& TheRun();

// A folder of this process's own, which goes with it.
const std::string& Scratch();
// The bytes as a file in it; returns the path.
std::string Put(const std::string& name, std::string_view bytes);

// Whether the work comes to its end; a report is a refusal like a failure.
template <typename Work>
bool Works(Work work) {
  try {
    work();
    return true;
  } catch (const RuntimeError&) {
  } catch (const ProgramEnded&) {
  }
  return false;
}

}  // namespace tarvolinex::fuzz
