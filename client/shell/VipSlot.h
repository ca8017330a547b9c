#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "modules/ZRGrowthTypes.h"

class CPremiumRights;
class IGrowthVipBaseWidget;
class IZRGrowthModuleInterface;

enum class EnVipKind { Icon, TagGrade, TagName, Banner, MaskLocked, MaskCompact, MaskExclusive };

/// A VIP widget of a page: its kind, the right and text set that it shows, and the page's name in reports.
struct VipPlace {
    EnVipKind kind;
    EnPremiumAccess access;
    ZRVipUIDataType dataType;
    const char* pageId;
};

/// The place for a VIP widget of the growth module. It is hidden while the module's rule refuses the widget. After each
/// change of the rights it asks the rule again and shows the current texts. Main thread.
class CVipSlot : public QWidget {
    Q_OBJECT

public:
    /// A mask's slot lies over `covered`, a child of `parent` with the mask's minimum height. While the mask is shown,
    /// `covered` is disabled and out of reach for screen readers; its owner must take the figures out of it.
    CVipSlot(const VipPlace& place, const CPremiumRights& rights, QWidget* parent, QWidget* covered = nullptr);

    bool IsFilled() const { return !m_pWidget.isNull(); }
    const VipPlace& Place() const { return m_place; }

    /// A slot that is not wanted stays empty. The default is wanted.
    void SetWanted(bool wanted);

    /// Asks the rule and updates the widget.
    void Refresh();

    /// Calls `show` now and after each change of IsFilled.
    void OnFilledChange(std::function<void(bool filled)> show);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void FilledChanged(bool filled);

private:
    bool IsEnabledBy(IZRGrowthModuleInterface& service) const;
    IGrowthVipBaseWidget* NewWidget(IZRGrowthModuleInterface& service);
    void Take(IGrowthVipBaseWidget* widget);
    void Follow();

    const VipPlace m_place;
    const QPointer<QWidget> m_pCovered;
    QPointer<IGrowthVipBaseWidget> m_pWidget;
    bool m_bWanted = true;
};
