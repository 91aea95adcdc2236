// The passwords that the desktop keeps for its user: its key store, which is open while the user is signed on.
#pragma once

#include <optional>
#include <string>

#include "platform/network/Transfer.h"

namespace tarvolinex {

// Whose password, and where. A port of the server makes no difference.
struct Login {
  std::string server, user;
};

// Every function throws RuntimeError 32003 saying in plain words what is wrong: there is no key store, it stays locked,
// it took too long, the progress returned false. Asking it may show the desktop's own dialog, in which the user unlocks
// the store; meanwhile `progress` is called many times a second.

// Asks nobody to unlock anything.
bool HasStoredPassword(const Login& login, const TransferProgress& progress = {});
// nullopt when the store holds none.
std::optional<std::string> StoredPassword(const Login& login, const TransferProgress& progress = {});
// In place of the one that it holds.
void StorePassword(const Login& login, const std::string& password, const TransferProgress& progress = {});
// One that it does not hold is no error.
void ForgetPassword(const Login& login, const TransferProgress& progress = {});

}  // namespace tarvolinex
