// Which folder the program keeps its files in, and what it puts there before anything reads it.
#pragma once

#include <string>
#include <string_view>

#include "core/Folders.h"

namespace tarvolinex {

// The app folder: the chosen folder when one is given, else the program's folder when that is writable and the
// delivered files lie in it, else this user's data folder. The folder is made when it is missing.
std::string ChooseAppFolder(std::string_view chosen);

// The folder of the files delivered with the program.
std::string DeliveredFolder();

// Makes the calculator folder and copies what the app folder lacks and the program cannot do without (template, set-up
// list, self-extractor, installer, instruction texts, quote sheet, help). A file of an older version that nobody has
// changed is replaced; nothing of the user's is. What killed programs have left unfinished goes. While the app folder
// holds no database the delivered preferences come too when there are none, and, when the database lies in another
// folder, the pristine package for new databases. Returns true when the page template is a new one. only: the one of
// these files that is needed now; a folder that has been filled before is then looked after no further. Empty = all.
bool FillAppFolder(const Folders& folders, std::string_view only = {});

}  // namespace tarvolinex
