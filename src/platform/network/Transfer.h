// What a running transfer over the network tells, and how it is stopped.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace tarvolinex {

// Called many times a second while a transfer runs: bytes sent so far and in all (0 while that is unknown). Windows are
// painted by whoever is called. Returning false stops the transfer.
using TransferProgress = std::function<bool(std::int64_t sent, std::int64_t total)>;

// How long the other side may take.
struct TransferPatience {
  std::chrono::milliseconds connecting{30'000};
  std::chrono::milliseconds silent{60'000};      // nothing moves, before and while bytes are sent
  std::chrono::milliseconds answering{120'000};  // all that comes before the first byte, and after the last one
};

}  // namespace tarvolinex
