#pragma once

#include <string>

#include "framework/export.h"

namespace core {

/// What client this is. Main thread; fixed for the process, save that the edition can be switched in an
/// internal build.
namespace environment {

/// False in internal builds only.
ZRHOST_API bool IsReleaseAppVersion();

/// Whether the client is of the Velora edition.
ZRHOST_API bool IsVelora();

/// The id of this installation: made once, kept in the local store; no blanks.
ZRHOST_API std::string GetDeviceId();

}  // namespace environment
}  // namespace core
