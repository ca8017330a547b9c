#pragma once

#include <QString>

#include "framework/export.h"

class QWidget;

/// The tooltip of a widget.
struct ToolTipInfo {
    /// Always plain text.
    QString text;
};

/// Tooltips of widgets.
/// Thread: main thread.
class ZRHOST_API IZToolTipManager {
public:
    virtual ~IZToolTipManager();

    /// Returns the manager.
    /// Failure: never null, also after the end of the host.
    static IZToolTipManager* instance();

    /// Sets the tooltip of a widget, in place of an earlier one. An empty text shows none.
    /// Failure: a null widget is ignored.
    virtual void RegisterToolTips(QWidget* widget, const ToolTipInfo& info) = 0;
    /// Removes the tooltip. A widget without one stays as it is.
    virtual void UnRegisterToolTips(QWidget* widget) = 0;
};
