#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "framework/export.h"

namespace core {
namespace post {

/// Runs `task` on the main thread, later and in posting order, never inside this call.
/// Nothing runs if `context` is gone by then, or was null from the start. Callable from any thread.
/// `name` serves diagnostics and may be null.
ZRHOST_API void ToMain(QPointer<QObject> context, std::function<void()> task, const char* name);

/// The same after `delayMs` milliseconds; 0 and negative values still run later, in one order with
/// what `ToMain` posts. Tasks that fall due at the same moment run in posting order.
ZRHOST_API void ToMainDelay(QPointer<QObject> context, int delayMs, std::function<void()> task, const char* name);

}  // namespace post
}  // namespace core
