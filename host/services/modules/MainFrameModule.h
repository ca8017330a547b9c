#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "modules/ZRTabFrameKey.h"
#include "plugin/IZRPluginInterfaceFactory.h"

class QWidget;

/// Queries to the main window. Called on the main thread. None is empty.
struct MainFrameAnswers {
    std::function<QWidget*()> widget;
    std::function<EnZRTabFrameKey()> tabKey;
    std::function<bool()> hasFocus;
    std::function<bool()> isCollapsed;
};

/// Registers the main frame service while there is a window. Main thread.
class CMainFrameModuleFactory : public IZRPluginInterfaceFactory {
public:
    CMainFrameModuleFactory();
    ~CMainFrameModuleFactory() override;

    /// The window answers until TakeAway.
    void Offer(MainFrameAnswers answers);

    /// Removes the service. Existing service objects then return null, 0 and false.
    void TakeAway();

    std::string GetInterfaceName() override;

    /// Null without a window and on other threads, since the service is bound to the main thread.
    std::shared_ptr<IZRPluginInterface> CreateInterface() override;

private:
    // Shared with the service objects.
    const std::shared_ptr<std::optional<MainFrameAnswers>> m_pAnswers;
};
