// What is done on the failing machine: every command that writes, and a day in the window.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "faults/Workplace.h"

namespace tarvolinex {

struct Job {
  std::string name;
  std::function<int()> run;  // in a process of its own; the exit status
  // Makes what the job needs beside the prepared app folder.
  std::function<void()> prepare = {};
  // Files that are not the same each time the job is done: times, and names made of them, go in.
  std::set<std::string> varying = {};
  std::string package = {};     // an archive that the job makes
  std::string dataFolder = {};  // when it is not the app folder
  bool fresh = false;           // a package is unpacked, and then its contacts get the organisation's address
};

// One call of the program with a command, its words after --app-folder and the text of its standard input.
int RunProgram(const Workplace& place, std::vector<std::string> words, const std::string& input = "");

// The window comes up, shows its suppliers and goes away. Not 0 when something was reported.
int StartAndCloseWindow(const Workplace& place);

// Publishes supplier 1 and looks whether both pages are those of the preferences that are stored.
int PublishAndCompare(const Workplace& place);

std::vector<Job> AllJobs(const Workplace& place);

// The steps of a day. Each runs after the others in one process; before each and after the last the day tells how far
// it is. A day ends at the first thing that is reported to the user.
int SpendDay(const Workplace& place, const std::function<void(std::size_t done)>& tell);
std::size_t StepsOfDay();

}  // namespace tarvolinex
