#pragma once

#include <QWidget>

#include "framework/export.h"
#include "modules/ZRGrowthTypes.h"

/// A widget of the VIP membership: icon, tag, banner or mask.
/// Thread: main thread.
/// Ownership: the parent owns the widget; the growth module keeps no pointer to it.
class ZRHOST_API IGrowthVipBaseWidget : public QWidget {
    Q_OBJECT

public:
    explicit IGrowthVipBaseWidget(QWidget* parent = nullptr);
    ~IGrowthVipBaseWidget() override;

    /// Displays the current texts and state. A banner or mask shows that right and text set from now on. An icon or
    /// tag ignores the arguments and keeps its right.
    /// Widgets do not follow the user's rights: call this after bus messages 80050, 80051 and 80052, and after a change
    /// of the display language.
    virtual void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) = 0;
};
