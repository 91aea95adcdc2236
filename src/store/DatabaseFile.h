// The package of a fresh database.
#pragma once

#include "core/Folders.h"
#include "core/Reports.h"

namespace tarvolinex {

enum class Unpacked {
  No,      // there was no package, or another program has used it
  Yes,     // a fresh database has been put in place
  Failed,  // reported; what lay there stays
};

// Unpacks a "Database.zip" that lies in the data folder, or the delivered one when that is the app folder and holds no
// database; keeps its pristine copy as "Database.Bak" when it is the app folder, and deletes it. A database that it
// replaces is copied to the folder's "Backup" first.
Unpacked UnpackDatabase(const Folders& folders, Reporter& reporter);

// Where a folder's database lies.
std::string DatabasePath(const std::string& dataFolder);

// A path as it is kept: without a separator at its end, unless it is nothing else.
std::string WithoutTrailingSeparator(std::string folder);

}  // namespace tarvolinex
