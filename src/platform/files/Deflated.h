// The contents of an archive's entries, deflated.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tarvolinex {

struct Deflated {
  std::string bytes;
  std::uint64_t size = 0;   // before
  std::uint32_t check = 0;  // sum of what it was before (CRC-32)
};

// level: 0 to 9. Throws RuntimeError when there is no memory for it.
std::shared_ptr<const Deflated> DeflatedEntry(const std::string& name, const std::string& content, int level);

// While one lives, an entry that comes again under its name with the same content is deflated once: calculators of
// many suppliers differ in little. Of each name the last content is kept. For all threads.
class DeflateOnce {
 public:
  DeflateOnce();
  ~DeflateOnce();
  DeflateOnce(const DeflateOnce&) = delete;
  DeflateOnce& operator=(const DeflateOnce&) = delete;
};

}  // namespace tarvolinex
