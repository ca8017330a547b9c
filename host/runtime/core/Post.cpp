#include "core/post.h"

#include <algorithm>

#include "core/IPoster.h"
#include "framework/Ports.h"

namespace core {
namespace post {

void ToMain(QPointer<QObject> context, std::function<void()> task, const char* name) {
    ToMainDelay(std::move(context), 0, std::move(task), name);
}

void ToMainDelay(QPointer<QObject> context, int delayMs, std::function<void()> task, const char* /*name*/) {
    const host::PortsLock ports;
    if (ports->poster && task) {
        ports->poster->Post(std::move(context), std::chrono::milliseconds(std::max(delayMs, 0)), std::move(task));
    }
}

}  // namespace post
}  // namespace core
