// Keeps two installations or removals of one user from working at the same time.
#pragma once

namespace tarvolinex::windows {

// While it lives no other program holds one. Waits half a minute for its turn; then it is a failure.
class OnlyOne {
 public:
  OnlyOne();
  ~OnlyOne();
  OnlyOne(const OnlyOne&) = delete;
  OnlyOne& operator=(const OnlyOne&) = delete;

 private:
  void* mutex_;
};

}  // namespace tarvolinex::windows
