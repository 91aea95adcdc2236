// What an action ends with.
#pragma once

#include "platform/RuntimeError.h"

namespace tarvolinex {

// What it throws; number 0 when it comes to its end.
template <typename Action>
RuntimeError FailureOf(Action action) {
  try {
    action();
    return {0, ""};
  } catch (const RuntimeError& failure) {
    return failure;
  }
}

}  // namespace tarvolinex
