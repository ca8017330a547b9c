#include "core/url_data.h"

#include "core/IDomains.h"
#include "framework/Ports.h"

namespace core {
namespace url_data {

std::string GetDomainUrl(const std::string& key, DomainBizType biz) {
    const host::PortsLock ports;
    return ports->domains ? ports->domains->DomainUrl(key, biz) : std::string();
}

}  // namespace url_data
}  // namespace core
