#pragma once

#include <functional>
#include <optional>

#include "plugin/IZRPluginInterfaceFactory.h"

class ITradeModuleUtil;

/// Registers the trade service while there is an answer. A client whose server gives no answer has no trading.
class CTradeModuleFactory : public IZRPluginInterfaceFactory {
public:
    /// The current answer of the trade module, or empty. Called on the main thread.
    using Answer = std::function<std::optional<bool>()>;

    /// `answer` must be callable while the plug-in centre holds the factory or other code the service.
    explicit CTradeModuleFactory(Answer answer);
    ~CTradeModuleFactory() override;

    std::string GetInterfaceName() override;

    /// Null without an answer and on other threads, since the service is bound to the main thread.
    std::shared_ptr<IZRPluginInterface> CreateInterface() override;

private:
    const Answer m_fnAnswer;
    const std::shared_ptr<ITradeModuleUtil> m_pModule;
};
