#pragma once

#include "framework/export.h"
#include "modules/ZRTabFrameKey.h"
#include "plugin/IZRPluginInterface.h"

class QWidget;

/// Queries to the main window, under the interface name "20IMainFrameModuleUtil".
/// Thread: main thread.
/// Failure: the service does not exist before the window is created and after its end. An object that is held longer
/// returns null, 0 and false.
class ZRHOST_API IMainFrameModuleUtil : public IZRPluginInterface {
public:
    ~IMainFrameModuleUtil() override;

    /// Returns the main window. Widgets that cover its pages are its children.
    /// Ownership: the window belongs to the client; callers must not delete it.
    /// Failure: null while the window is being destroyed.
    virtual QWidget* GetMainFrameWidget() = 0;

    /// Returns the current tab. Message core::kMsgTabFrameChanged announces each change.
    virtual EnZRTabFrameKey GetCurrentTabFrameKey() = 0;

    /// Returns whether the main window is the active window. Another window of the client does not count.
    virtual bool IsMainFrameFocusIn() = 0;

    /// Returns whether the navigation at the left edge is collapsed.
    virtual bool IsNavigationCollapsed() = 0;
};
