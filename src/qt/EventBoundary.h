// Where the desktop's events enter the program, and where the end of the program stops.
#pragma once

#include <functional>
#include <optional>

namespace tarvolinex {

// Runs one call from a widget into a window. ProgramEnded ends here: its status is kept and every running event loop
// is told to stop. Once the program has ended nothing is run any more. A failure that no procedure has reported is
// shown here. Any other exception is a fault of the program and terminates it, because Qt carries no exception across
// the delivery of an event.
void Deliver(const std::function<void()>& call) noexcept;

// Exit status of the ended program; nullopt while it runs.
std::optional<int> EndedStatus();

// Throws ProgramEnded when the program has ended. Whoever has run a nested event loop calls it afterwards, so that the
// handler that waited for the loop unwinds as well.
void ThrowIfEnded();

// A new run in the same process.
void ForgetEnd();

}  // namespace tarvolinex
