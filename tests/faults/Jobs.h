// What is done on the failing machine: every command that writes, and a day in the window.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "faults/Workplace.h"

namespace tarvolinex {

// How many steps are done.
using Tell = std::function<void(std::size_t done)>;

struct Job {
  std::string name;
  // In a process of its own; the exit status. It tells before each of its steps, and after the last, how far it is.
  std::function<int(const Tell&)> run;
  // Makes what the job needs beside the prepared app folder.
  std::function<void()> prepare = {};
  // Files that are not the same each time the job is done: times, and names made of them, go in.
  std::set<std::string> varying = {};
  std::string package = {};     // an archive that the job makes
  std::string dataFolder = {};  // when it is not the app folder
  bool fresh = false;           // a package is unpacked, and then its contacts get the organisation's address
  bool day = false;             // many steps, which change files more than once
};

// One call of the program: the words after --app-folder, with a blank between each two, and its standard input.
int RunProgram(const Workplace& place, const std::string& words, const std::string& input = "");

// The window comes up, shows its suppliers and goes away. Not 0 when something was reported.
int StartAndCloseWindow(const Workplace& place);

// Publishes supplier 1 and looks whether both pages are those of the preferences that are stored.
int PublishAndCompare(const Workplace& place);

std::vector<Job> AllJobs(const Workplace& place);

// The steps of a day, one after the other in one process. A day ends at the first thing that is reported to the user.
int SpendDay(const Workplace& place, const Tell& tell);

}  // namespace tarvolinex
