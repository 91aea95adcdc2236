// The files of the data folder that belong to the whole office: form pages, pictures, icons. A database on a server
// keeps them, and each desk has copies in its data folder, with which everything works.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/Text.h"
#include "store/Database.h"

namespace tarvolinex {

struct FileNews {
  std::vector<std::string> fetched;  // here, from another desk; or gone, because another desk has removed them
  std::vector<std::string> stored;   // on the server, from here; or removed there
  std::vector<std::string>
      setAside;  // changed here and elsewhere: the server's stand, this desk's lie in SetAsideFolder
  bool Any() const { return !fetched.empty() || !stored.empty(); }
};

// Brings the desk's copies and the server's files to one state. What only one of them has changed since the last time
// goes to the other one; the first time, the server's stand unless it has none. A user who may only read stores
// nothing. Nothing of a database in a file. Throws RuntimeError; what has been brought by then stays.
FileNews BringFilesTogether(Database& database);

// The same; a failure is reported, and the user learns of files that were set aside. Whether something was fetched.
bool ShareFiles(Database& database, Reporter& reporter);

// The files themselves, by names like "Forms/12.html", which are case-blind as in every look-up of a file.
struct NameBefore {
  bool operator()(std::string_view one, std::string_view other) const { return CompareNoCase(one, other) < 0; }
};
using FilesByName = std::map<std::string, std::string, NameBefore>;
// Those of a database: of one in a file they lie in its folder. Throws RuntimeError.
FilesByName OfficeFilesOf(Connection& connection, const std::string& folder);
// Adds them to a database on a server, in the transaction that is open. Throws RuntimeError.
void StoreOfficeFiles(const FilesByName& files, Connection& connection);
// Puts them into a folder. Throws RuntimeError, before any is written, when the folder has another one of a name.
void LayOut(const FilesByName& files, const std::string& folder);

// Where this desk's files are kept that made way for the server's.
std::string SetAsideFolder(const std::string& dataFolder);

}  // namespace tarvolinex
