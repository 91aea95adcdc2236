// Puts a new version in the place of the old one, whole or not at all.
#pragma once

#include <string>
#include <vector>

#include "system/InstalledList.h"

namespace tarvolinex::windows {

// The new files are made in a folder beside, the old ones are moved to another, and the new ones take their places.
// Until Commit everything can go back, and does: when this object goes, and at the next start after a crash (Recover).
// The user's own files in the folder are not touched.
class Replacement {
 public:
  // Recovers first. A folder for the new version that cannot be made is a failure.
  explicit Replacement(const std::wstring& folder);
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  const InstalledList& Old() const { return old_; }
  // Copies a file of the new version. Its name must not be that of a file of the user's own in the folder.
  void Add(const std::wstring& source);
  // Moves the old files out and the new ones, with their list, in. The list's files are those added.
  void Exchange(InstalledList list);
  // From here on the new version is the installed one. What cannot be cleared away now stays until the next start.
  void Commit();

 private:
  std::wstring folder_;
  InstalledList old_;
  std::vector<std::wstring> files_;
  bool made_folder_ = false, committed_ = false;
};

// Puts back what an installation that was cut off has left half done; afterwards the old version or none is there.
void Recover(const std::wstring& folder);

}  // namespace tarvolinex::windows
