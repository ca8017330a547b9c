#include "core/network/http.h"

#include "core/IHttp.h"
#include "framework/Ports.h"

namespace core {
namespace network {
namespace http {

unsigned long StartRequest(const HttpReqInfo& request, Callback callback, QObject* guard, HttpWorkPool pool,
                           Progress upload, Progress download) {
    const host::PortsLock ports;
    if (!ports->http || !guard) {
        return 0;
    }
    return ports->http->Start(request, std::move(callback), guard, pool, std::move(upload), std::move(download));
}

}  // namespace http
}  // namespace network
}  // namespace core
