#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {

/// Who is logged in. Main thread. Both values change before the modules' OnLogin and OnLogout are called.
namespace login_status_data {

/// The logged-in user's id; 0 if nobody is.
ZRHOST_API uint64_t Login_GetUserID();

/// The id that the server gave to the present login; 0 if nobody is logged in. A reconnect may change it.
ZRHOST_API uint64_t GetSessionId();

}  // namespace login_status_data
}  // namespace core
