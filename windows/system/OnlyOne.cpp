#include "system/OnlyOne.h"

#include <windows.h>

#include "system/Failure.h"

namespace tarvolinex::windows {

OnlyOne::OnlyOne() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\TarvolinexSetup")) {
  const DWORD got = WaitForSingleObject(mutex_, 30000);
  if (got != WAIT_OBJECT_0 && got != WAIT_ABANDONED) throw Failure{L"Another installation is still running."};
}

OnlyOne::~OnlyOne() {
  ReleaseMutex(mutex_);
  CloseHandle(mutex_);
}

}  // namespace tarvolinex::windows
