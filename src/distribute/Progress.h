// A transfer's progress on the status line.
#pragma once

#include <string>

#include "core/Reports.h"
#include "platform/network/Transfer.h"

namespace tarvolinex {

// Shows it with this text, lets the windows live, and stops when the user asks. The reporter must outlive the transfer.
TransferProgress ShowProgress(Reporter& reporter, std::string text);

}  // namespace tarvolinex
