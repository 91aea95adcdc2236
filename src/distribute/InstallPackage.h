// The install file: the calculator folder packed with its set-up list.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/Reports.h"
#include "publish/CalculatorFolder.h"

namespace tarvolinex {

// How a calculator travels.
enum SendTypes { kSendProgram = 0, kSendZip = 1, kSendLink = 2 };
// "exe", "zip", "link".
const char* WayName(int sendType);

// Where the install file of a send lies: "CalcInstall.zip" or "CalcInstall.exe" in the app folder.
std::string InstallFilePath(const std::string& appFolder, int sendType);

// Bytes that a message of this type cannot exceed, before anything has been built: nothing is counted as compressed.
// textBytes: of the user's message and the instructions.
std::int64_t LargestMessage(int sendType, const Publication& publication, std::size_t textBytes);

// False after a report when limits of the preferences contradict each other or the calculator folder cannot be written
// to: asked before a calculator is built in order to be packed, because building ends the program when it fails.
bool CanPack(const Branding& branding, Reporter& reporter);

// Writes the set-up list into the calculator folder and packs the folder. The target is chosenName (an existing file is
// replaced only when the user agrees), else the InstallFilePath of the send. A name that ends in ".zip" gives a plain
// archive without programs, any other a self-extracting program. Returns true when the archive was written; every
// failure has been reported, and what stood under the target's name before is then still there.
// REQUIRES: BuildCalculatorFolder has just run.
bool BuildDistFiles(const Branding& branding, int sendType, const std::optional<std::string>& chosenName,
                    Reporter& reporter);

}  // namespace tarvolinex
