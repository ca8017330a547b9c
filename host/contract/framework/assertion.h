#pragma once

#include "framework/export.h"

namespace FrameWork {

/// What kind of check failed. Modules use kAssetDefensive alone.
enum AssetType : int {
    kAssetDefensive = 3,
};

/// Reports a failed defensive check and returns: the process goes on. Callable from any thread.
/// `detail` is free text and may be empty; `expression` is what did not hold. No argument may be null.
ZRHOST_API void _FW_OnAssertFailed(AssetType type, const char* detail, const char* module, const char* file, int line,
                                   const char* expression);

}  // namespace FrameWork
