#pragma once

#include <string>

#include "framework/export.h"

namespace core {

/// Properties of the running client. They are fixed for the process, except that an internal build can switch the
/// edition.
/// Thread: main thread.
namespace environment {

/// Returns false in internal builds only.
/// Failure: true without a host, so that internal features stay closed.
ZRHOST_API bool IsReleaseAppVersion();

/// Returns whether the client is of the Velora edition.
/// Failure: false without a host.
ZRHOST_API bool IsVelora();

/// Returns the id of this installation, a text without blanks. It is created once and kept in the store.
/// Failure: empty without a host.
ZRHOST_API std::string GetDeviceId();

}  // namespace environment
}  // namespace core
