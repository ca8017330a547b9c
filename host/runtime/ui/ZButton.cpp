#include "ui/ZButton.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"

namespace {

constexpr int kHeight = 30;
constexpr int kRoomAboveText = 6;
constexpr double kRadius = 6.0;
constexpr int kTextFlags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextShowMnemonic;

struct Look {
    QColor fill;  // invalid: none
    QColor edge;
    QColor text;
};

Look FilledLook(ZWidgetState::type state) {
    using host::kit::Color;
    switch (state) {
        case ZWidgetState::normal:
            return {Color("accentFill"), Color("accentBorder"), Color("onAccent")};
        case ZWidgetState::hover:
            return {Color("accentHover"), Color("accentBorder"), Color("onAccent")};
        case ZWidgetState::pressed:
            return {Color("accentPressed"), Color("accentBorder"), Color("onAccent")};
        case ZWidgetState::disabled:
            return {Color("buttonOff"), Color("line"), Color("disabled")};
    }
    return {};
}

Look PlainLook(ZWidgetState::type state) {
    using host::kit::Color;
    switch (state) {
        case ZWidgetState::normal:
            return {Color("button"), Color("border"), Color("text")};
        case ZWidgetState::hover:
            return {Color("buttonHover"), Color("borderHover"), Color("text")};
        case ZWidgetState::pressed:
            return {Color("buttonPressed"), Color("border"), Color("text")};
        case ZWidgetState::disabled:
            return {Color("buttonOff"), Color("line"), Color("disabled")};
    }
    return {};
}

Look TextLook(ZWidgetState::type state) {
    using host::kit::Color;
    switch (state) {
        case ZWidgetState::normal:
            return {QColor(), QColor(), Color("accent")};
        case ZWidgetState::hover:
            return {Color("buttonHover"), QColor(), Color("accent")};
        case ZWidgetState::pressed:
            return {Color("buttonPressed"), QColor(), Color("accent")};
        case ZWidgetState::disabled:
            return {QColor(), QColor(), Color("disabled")};
    }
    return {};
}

}  // namespace

struct ZButton::Private {
    QString iconName;
    QSize iconSize;
    ZrStyle style = kPlain;
    int spacing = 6;
    int padding = 14;

    QSize IconArea() const { return iconName.isEmpty() ? QSize(0, 0) : iconSize; }

    Look LookIn(ZWidgetState::type state) const {
        switch (style) {
            case kPlain:
                return PlainLook(state);
            case kFilled:
                return FilledLook(state);
            case kText:
                return TextLook(state);
        }
        return PlainLook(state);
    }
};

ZButton::ZButton(QWidget* parent) : QAbstractButton(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    host::kit::FollowTheme(this);
}

ZButton::ZButton(const QString& text, QWidget* parent) : ZButton(parent) {
    setText(text);
}

ZButton::~ZButton() = default;

void ZButton::setIcon(const QString& name, const QSize& size) {
    d->iconName = host::kit::CheckDrawing("ZButton", name) ? name : QString();
    d->iconSize = size;
    updateGeometry();
    update();
}

void ZButton::setZrStyle(ZrStyle style) {
    d->style = style;
    update();
}

void ZButton::setWidthType(ZrWidthType type) {
    setSizePolicy(type == kWidthOfLayout ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ZButton::setIconTextSpacing(int spacing) {
    d->spacing = spacing;
    updateGeometry();
    update();
}

void ZButton::setLeftRightPadding(int padding) {
    d->padding = padding;
    updateGeometry();
    update();
}

QSize ZButton::sizeHint() const {
    const QSize icon = d->IconArea();
    const QSize text = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, this->text());
    const int between = icon.isEmpty() || this->text().isEmpty() ? 0 : d->spacing;
    return {2 * d->padding + icon.width() + between + text.width(),
            qMax(kHeight, qMax(icon.height(), text.height()) + 2 * kRoomAboveText)};
}

QSize ZButton::minimumSizeHint() const {
    return sizeHint();
}

void ZButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Look look = d->LookIn(host::kit::StateOf(*this));
    host::kit::PaintPlate(painter, rect(), kRadius, look.fill, look.edge);

    const QSize icon = d->IconArea();
    const int before = icon.isEmpty() ? 0 : icon.width() + (text().isEmpty() ? 0 : d->spacing);
    const int room = qMax(0, width() - 2 * d->padding - before);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room, Qt::TextShowMnemonic);
    const int textWidth = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, shown).width();
    const int left = (width() - before - textWidth) / 2;
    if (!icon.isEmpty()) {
        host::kit::PaintDrawing(painter, d->iconName, QRect(QPoint(left, (height() - icon.height()) / 2), icon),
                                look.text);
    }
    painter.setPen(look.text);
    painter.drawText(QRect(left + before, 0, textWidth, height()), kTextFlags, shown);
    if (hasFocus() && d->style == kFilled) {
        // In some themes the button has the same colour as the ring.
        host::kit::PaintFocus(painter, rect().adjusted(2, 2, -2, -2), kRadius - 2, host::kit::Color("onAccent"));
    } else if (hasFocus()) {
        host::kit::PaintFocus(painter, rect(), kRadius, host::kit::Color("focus"));
    }
}

void ZButton::enterEvent(QEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void ZButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void ZButton::changeEvent(QEvent* event) {
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
}
