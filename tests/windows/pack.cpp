// pack TITLE COMMAND MODULE ICON ARCHIVE TARGET: makes an install file as the program does, for the tests under Wine.
#include <cstdio>

#include "platform/RuntimeError.h"
#include "platform/files/SelfExtractor.h"

int main(int count, char** words) {
  if (count != 7) return 2;
  try {
    tarvolinex::SelfExtractorSettings settings;
    settings.title = words[1];
    settings.command = words[2];
    tarvolinex::WriteSelfExtractor(settings, words[3], words[4], words[5], words[6]);
  } catch (const tarvolinex::RuntimeError& failure) {
    std::fprintf(stderr, "%s\n", failure.Description().c_str());
    return 1;
  }
  return 0;
}
