#pragma once

#include <functional>
#include <optional>

#include "plugin/IZRPluginInterfaceFactory.h"

class ITradeModuleUtil;

/// Offers the trade module's service for as long as there is an answer to give: a client whose server says
/// nothing for it is a client without trading.
class CTradeModuleFactory : public IZRPluginInterfaceFactory {
public:
    /// What the trade module answers at this moment; nothing where there is none. Called on the main thread.
    using Answer = std::function<std::optional<bool>()>;

    /// `answer` is callable for as long as the plug-in centre holds the factory, or somebody the service.
    explicit CTradeModuleFactory(Answer answer);
    ~CTradeModuleFactory() override;

    std::string GetInterfaceName() override;

    /// Empty without an answer, and on any other thread than the main one, to which the service is bound.
    std::shared_ptr<IZRPluginInterface> CreateInterface() override;

private:
    const Answer m_fnAnswer;
    const std::shared_ptr<ITradeModuleUtil> m_pModule;
};
