#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "modules/ZRTabFrameKey.h"
#include "plugin/IZRPluginInterfaceFactory.h"

class QWidget;

/// What the main window says of itself at the moment of the question. Called on the main thread; none is empty.
struct MainFrameAnswers {
    std::function<QWidget*()> widget;
    std::function<EnZRTabFrameKey()> tabKey;
    std::function<bool()> hasFocus;
    std::function<bool()> isCollapsed;
};

/// Offers the main frame's service for as long as there is a window to answer.
class CMainFrameModuleFactory : public IZRPluginInterfaceFactory {
public:
    CMainFrameModuleFactory();
    ~CMainFrameModuleFactory() override;

    /// From now on the window answers, until TakeAway. Main thread.
    void Offer(MainFrameAnswers answers);

    /// The window goes: there is no service any more, and one that somebody holds says null, 0 and false.
    void TakeAway();

    std::string GetInterfaceName() override;

    /// Empty without a window, and on any other thread than the main one, to which the service is bound.
    std::shared_ptr<IZRPluginInterface> CreateInterface() override;

private:
    // Shared with the services that were given out.
    const std::shared_ptr<std::optional<MainFrameAnswers>> m_pAnswers;
};
