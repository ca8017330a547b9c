#include "VipSlot.h"

#include <QEvent>
#include <QVBoxLayout>

#include "AccessibleReach.h"
#include "GrowthService.h"
#include "PremiumRights.h"

namespace {

// Text is brightest on the black theme.
constexpr double kBlurRadiusBlack = 20;
constexpr double kBlurRadiusOther = 14;

ZRVipTagType TagType(EnVipKind kind) {
    return kind == EnVipKind::TagGrade ? ZRVipTagGrade : ZRVipTagName;
}

ZRVipMaskType MaskType(EnVipKind kind) {
    switch (kind) {
        case EnVipKind::MaskCompact:
            return ZRVipMaskLockedCompact;
        case EnVipKind::MaskExclusive:
            return ZRVipMaskExclusive;
        default:
            return ZRVipMaskLocked;
    }
}

}  // namespace

CVipSlot::CVipSlot(const VipPlace& place, const CPremiumRights& rights, QWidget* parent, QWidget* covered)
    : QWidget(parent), m_place(place), m_pCovered(covered) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    hide();
    if (covered) {
        covered->installEventFilter(this);
    }
    connect(&rights, &CPremiumRights::Changed, this, &CVipSlot::Refresh);
    Refresh();
}

bool CVipSlot::IsEnabledBy(IZRGrowthModuleInterface& service) const {
    switch (m_place.kind) {
        case EnVipKind::Icon:
            return service.IsVipIconEnabled(m_place.access);
        case EnVipKind::TagGrade:
        case EnVipKind::TagName:
            return service.IsVipTagEnabled(m_place.access);
        case EnVipKind::Banner:
            return service.IsVipBannerEnabled(m_place.access, m_place.dataType);
        case EnVipKind::MaskLocked:
        case EnVipKind::MaskCompact:
        case EnVipKind::MaskExclusive:
            break;
    }
    return service.IsVipMaskEnabled(MaskType(m_place.kind), m_place.access, m_place.dataType);
}

IGrowthVipBaseWidget* CVipSlot::NewWidget(IZRGrowthModuleInterface& service) {
    const QString page = QString::fromLatin1(m_place.pageId);
    switch (m_place.kind) {
        case EnVipKind::Icon:
            return service.GetVipIcon(m_place.access, this);
        case EnVipKind::TagGrade:
        case EnVipKind::TagName:
            return service.GetVipTag(m_place.access, TagType(m_place.kind), page, this);
        case EnVipKind::Banner:
            return service.GetVipBanner(m_place.access, m_place.dataType, page, this);
        case EnVipKind::MaskLocked:
        case EnVipKind::MaskCompact:
        case EnVipKind::MaskExclusive:
            break;
    }
    return service.GetVipMask(MaskType(m_place.kind), m_place.access, m_place.dataType, page, this,
                              zrstdui::image_blur::WidgetPainterBufferSource(m_pCovered), kBlurRadiusBlack,
                              kBlurRadiusOther, false);
}

void CVipSlot::SetWanted(bool wanted) {
    m_bWanted = wanted;
    Refresh();
}

void CVipSlot::Refresh() {
    const auto service = GrowthService();
    if (!m_bWanted || !service || !IsEnabledBy(*service)) {
        Take(nullptr);
    } else if (m_pWidget) {
        m_pWidget->UpdateUIData(m_place.access, m_place.dataType);
    } else {
        Take(NewWidget(*service));
    }
}

void CVipSlot::Take(IGrowthVipBaseWidget* widget) {
    const bool wasFilled = IsFilled();
    if (m_pWidget) {
        // Runs later, because one of the widget's own signals can be the cause. Hiding it ends its exposure.
        m_pWidget->hide();
        m_pWidget->deleteLater();
    }
    m_pWidget = widget;
    if (widget) {
        layout()->addWidget(widget);
    }
    if (m_pCovered) {
        m_pCovered->setEnabled(!widget);
        SetOutOfReach(m_pCovered, widget);
        Follow();
    }
    setVisible(widget != nullptr);
    if (wasFilled != IsFilled()) {
        Q_EMIT FilledChanged(IsFilled());
    }
}

void CVipSlot::OnFilledChange(std::function<void(bool)> show) {
    show(IsFilled());
    connect(this, &CVipSlot::FilledChanged, this, std::move(show));
}

void CVipSlot::Follow() {
    setGeometry(m_pCovered->geometry());
    raise();
}

bool CVipSlot::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_pCovered && (event->type() == QEvent::Move || event->type() == QEvent::Resize)) {
        Follow();
    }
    return QWidget::eventFilter(watched, event);
}
