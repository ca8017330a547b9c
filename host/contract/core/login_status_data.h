#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {

/// The logged-in user. Both values change before OnLogin and OnLogout of the modules are called.
/// Thread: main thread.
/// Failure: 0 without a host.
namespace login_status_data {

/// Returns the user's id, or 0 if nobody is logged in.
ZRHOST_API uint64_t Login_GetUserID();

/// Returns the server's id of this login, or 0 if nobody is logged in. A reconnect may change it.
ZRHOST_API uint64_t GetSessionId();

}  // namespace login_status_data
}  // namespace core
