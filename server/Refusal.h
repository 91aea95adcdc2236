// What is refused goes back to whoever asked, as a sentence.
#pragma once

#include <string>

namespace tarvolinex::server {

struct Refusal {
  std::string sentence;  // for the sender to read: what is wrong, without secrets and without paths of this machine
};

}  // namespace tarvolinex::server
