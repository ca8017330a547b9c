#pragma once

#include "framework/export.h"
#include "modules/ZRTabFrameKey.h"
#include "plugin/IZRPluginInterface.h"

class QWidget;

/// What other modules may ask the main window, under the interface name "20IMainFrameModuleUtil". Main thread.
/// There is none before the window stands and after it has gone; one that is held longer answers null, 0 and false.
class ZRHOST_API IMainFrameModuleUtil : public IZRPluginInterface {
public:
    ~IMainFrameModuleUtil() override;

    /// The window itself: what lies over the pages is its child. It stays the client's, and may not be deleted.
    /// Null when it is going.
    virtual QWidget* GetMainFrameWidget() = 0;

    /// The tab of the moment. Message core::kMsgTabFrameChanged tells of the next.
    virtual EnZRTabFrameKey GetCurrentTabFrameKey() = 0;

    /// Whether the window is the active one: the keyboard's focus is within it, and not in another window of the
    /// client's.
    virtual bool IsMainFrameFocusIn() = 0;

    /// Whether the navigation at the left edge is narrow.
    virtual bool IsNavigationCollapsed() = 0;
};
