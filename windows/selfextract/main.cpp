#include <windows.h>

#include "selfextract/Container.h"
#include "selfextract/Extraction.h"
#include "system/Failure.h"
#include "system/Process.h"

using namespace tarvolinex::windows;

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  GuardLibraries();
  try {
    const Options options = ReadOptions(Arguments());
    const InputFile file(ProgramPath());
    return static_cast<int>(UnpackAndStart(file, options));
  } catch (const Failure& failure) {
    ReportFailure(NameOf(ProgramPath()), failure);
    return 1;
  }
}
