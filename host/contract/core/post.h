#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "framework/export.h"

namespace core {

/// Tasks for the main thread. `name` is for diagnostics and may be null.
namespace post {

/// Runs `task` on the main thread, later and in posting order, never inside this call.
/// Thread: callable from any thread.
/// Ownership: the task does not run if `context` is null or is destroyed before.
ZRHOST_API void ToMain(QPointer<QObject> context, std::function<void()> task, const char* name);

/// Runs `task` after `delayMs` milliseconds; 0 and negative values also run later, not inside this call.
/// Tasks that are due at the same time, those of `ToMain` included, run in posting order.
/// Thread: callable from any thread.
/// Ownership: as for `ToMain`.
ZRHOST_API void ToMainDelay(QPointer<QObject> context, int delayMs, std::function<void()> task, const char* name);

}  // namespace post
}  // namespace core
