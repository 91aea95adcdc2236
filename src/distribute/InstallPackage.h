// The install file: the calculator folder packed with its set-up list.
#pragma once

#include <cstdint>
#include <string>

namespace tarvolinex {

// How a calculator travels.
enum SendTypes { kSendProgram = 0, kSendZip = 1, kSendLink = 2 };

// Where the install file of a send lies: "CalcInstall.zip" or "CalcInstall.exe" in the app folder, as `SendType` says.
std::string InstallFilePath();

// Bytes that a message of this type cannot exceed, before anything has been built: nothing is counted as compressed.
std::int64_t LargestMessage(int sendType);

// False after a report when limits of the preferences contradict each other or the calculator folder cannot be written
// to: asked before a calculator is built in order to be packed, because building ends the program when it fails.
bool CanPack();

// Writes the set-up list into `CalculatorFolder` and packs the folder. The target is the path box of the send tab
// (chosenName; an existing file is replaced only when the user agrees) or InstallFilePath. A name that ends in ".zip"
// gives a plain archive without programs, any other a self-extracting program. Returns true when the archive was
// written; every failure has been reported, and what stood under the target's name before is then still there.
// REQUIRES: BuildCalculatorFolder has just run.
bool BuildDistFiles(bool chosenName);

}  // namespace tarvolinex
