#pragma once

#include <QPointer>
#include <QWidget>

#include "modules/ZRGrowthTypes.h"

class CPremiumRights;
class IGrowthPremiumWidget;

/// The place for the growth module's strip of a right. It is hidden unless the right is of limited time. After each
/// change of the rights it shows the current texts. Main thread.
class CPremiumStripSlot : public QWidget {
public:
    CPremiumStripSlot(EnPremiumAccess access, const CPremiumRights& rights, QWidget* parent);

private:
    void Refresh();
    IGrowthPremiumWidget* NewStrip();

    const EnPremiumAccess m_enAccess;
    const CPremiumRights& m_rights;
    QPointer<IGrowthPremiumWidget> m_pStrip;
};
