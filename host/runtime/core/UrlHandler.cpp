#include "core/urlhandler.h"
#include "core/IUrlOpener.h"
#include "framework/Ports.h"

namespace core {
namespace urlhandler {

bool DispatchUrl(const QString& url, BusinessType businessType, QObject* context, QVariant extra,
                 FallbackMode fallbackMode) {
    const host::PortsLock ports;
    return ports->urls && ports->urls->Open({url, businessType, context, std::move(extra), fallbackMode});
}

}  // namespace urlhandler
}  // namespace core
