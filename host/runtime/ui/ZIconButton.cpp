#include "ui/ZIconButton.h"

#include <QPainter>

#include "core/langx.h"
#include "ui/KitPaint.h"
#include "ui/ZResource.h"

namespace {

constexpr QSize kFirstSize(24, 24);
constexpr double kRadius = 4.0;

// The theme does not apply over a picture. White on dark is visible on all pictures.
constexpr int kDiscAlpha[] = {115, 150, 190, 70};  // by ZWidgetState

QColor ColorOf(ZIconColorStyle::type style, ZWidgetState::type state) {
    if (state == ZWidgetState::disabled) {
        return style == ZIconColorStyle::onPicture ? QColor(255, 255, 255, 110) : host::kit::Color("disabled");
    }
    const bool livens = style == ZIconColorStyle::normal && state != ZWidgetState::normal;
    return livens ? host::kit::Color("heading") : host::kit::IconColor(style);
}

}  // namespace

struct ZIconButton::Private {
    QString name;
    QString checkedName;
    ZIconColorStyle::type style = ZIconColorStyle::normal;
    bool hoverBackground = true;
    int margin = 0;
};

ZIconButton::ZIconButton(QWidget* parent) : QAbstractButton(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(kFirstSize);
    host::kit::FollowTheme(this);
}

ZIconButton::~ZIconButton() = default;

void ZIconButton::setSvgIconName(const QString& name) {
    d->name = host::kit::CheckDrawing("ZIconButton", name) ? name : QString();
    if (name == QString(ZResource::icon_close_16) && accessibleName().isEmpty()) {
        setAccessibleName(core::langx::tr(900015, "Close"));
    }
    update();
}

void ZIconButton::setCheckedSvgIconName(const QString& name) {
    d->checkedName = host::kit::CheckDrawing("ZIconButton", name) ? name : QString();
    update();
}

void ZIconButton::setIconButtonSize(const QSize& size) {
    setFixedSize(size);
}

void ZIconButton::setIconButtonSize(ZrSize size) {
    switch (size) {
        case kSmall:
            setIconButtonSize(QSize(16, 16));
            return;
    }
}

void ZIconButton::setIconColorStyle(ZIconColorStyle::type style) {
    d->style = style;
    update();
}

void ZIconButton::setHoverBackground(bool shown) {
    d->hoverBackground = shown;
    update();
}

void ZIconButton::setIconMargins(int margin) {
    d->margin = margin;
    update();
}

QSize ZIconButton::sizeHint() const {
    return maximumSize();
}

void ZIconButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const ZWidgetState::type state = host::kit::StateOf(*this);
    const bool onPicture = d->style == ZIconColorStyle::onPicture;
    if (onPicture) {
        const bool livens = d->hoverBackground || state == ZWidgetState::disabled;
        const int alpha = kDiscAlpha[livens ? state : ZWidgetState::normal];
        host::kit::PaintPlate(painter, rect(), width() / 2.0, QColor(0, 0, 0, alpha));
    } else if (d->hoverBackground && (state == ZWidgetState::hover || state == ZWidgetState::pressed)) {
        host::kit::PaintPlate(painter, rect(), kRadius,
                              host::kit::Color(state == ZWidgetState::hover ? "buttonHover" : "buttonPressed"));
    }
    const bool shownChecked = isChecked() && !d->checkedName.isEmpty();
    const int margin = d->margin;
    host::kit::PaintDrawing(painter, shownChecked ? d->checkedName : d->name,
                            rect().adjusted(margin, margin, -margin, -margin), ColorOf(d->style, state));
    if (hasFocus()) {
        host::kit::PaintFocus(painter, rect(), onPicture ? width() / 2.0 : kRadius, host::kit::Color("focus"));
    }
}

void ZIconButton::enterEvent(QEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void ZIconButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}
