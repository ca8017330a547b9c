#pragma once

#include "framework/export.h"

namespace FrameWork {

/// The kind of a failed check. Modules use kAssetDefensive only.
enum AssetType : int {
    kAssetDefensive = 3,
};

/// Reports a failed defensive check and returns; the process continues.
/// `detail` is free text and may be empty. `expression` names the condition that is false.
/// Thread: any.
/// Failure: no argument may be null.
ZRHOST_API void _FW_OnAssertFailed(AssetType type, const char* detail, const char* module, const char* file, int line,
                                   const char* expression);

}  // namespace FrameWork
