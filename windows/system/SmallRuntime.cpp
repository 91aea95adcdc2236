// The parts of the language's run-time library that would bring its stream and demangling code along: the program that
// unpacks travels in every install file and has to stay small. Running out of memory ends the program with a message.
#include <cstdlib>
#include <new>

#include "system/Failure.h"

using tarvolinex::windows::EndProgram;

void* operator new(std::size_t size) {
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) EndProgram("There is not enough memory.");
  return memory;
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace std {
void __throw_length_error(const char*) {
  EndProgram("A text is too long.");
}
void __throw_logic_error(const char*) {
  EndProgram("This program has a fault (text).");
}
void __throw_out_of_range_fmt(const char*, ...) {
  EndProgram("This program has a fault (range).");
}
void __throw_bad_alloc() {
  EndProgram("There is not enough memory.");
}
void __throw_bad_array_new_length() {
  EndProgram("There is not enough memory.");
}
}  // namespace std

namespace __gnu_cxx {
void __verbose_terminate_handler() {
  EndProgram("This program has a fault (failure without a report).");
}
}  // namespace __gnu_cxx
