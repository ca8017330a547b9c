#include "modules/TradeModule.h"

#include "framework/Ports.h"
#include "modules/ITradeModuleUtil.h"

namespace {

/// The only query that the server answers for the trade module.
constexpr int kQueryVipEngine = 1007;

class CTradeModule : public ITradeModuleUtil {
public:
    explicit CTradeModule(CTradeModuleFactory::Answer answer) : m_fnAnswer(std::move(answer)) {}

    // Evaluated at each call: other code may keep the service beyond a logout.
    bool QueryTradeStatus(int query) override { return query == kQueryVipEngine && m_fnAnswer().value_or(false); }

private:
    const CTradeModuleFactory::Answer m_fnAnswer;
};

}  // namespace

CTradeModuleFactory::CTradeModuleFactory(Answer answer)
    : m_fnAnswer(std::move(answer)), m_pModule(std::make_shared<CTradeModule>(m_fnAnswer)) {}

CTradeModuleFactory::~CTradeModuleFactory() = default;

std::string CTradeModuleFactory::GetInterfaceName() {
    return typeid(ITradeModuleUtil).name();
}

std::shared_ptr<IZRPluginInterface> CTradeModuleFactory::CreateInterface() {
    if (!host::OnMainThread() || !m_fnAnswer()) {
        return nullptr;
    }
    return m_pModule;
}
