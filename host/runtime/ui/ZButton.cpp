#include "ui/ZButton.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"

namespace {

constexpr int kHeight = 30;
constexpr int kStripHeight = 24;
constexpr int kRoomAboveText = 6;
constexpr double kRadius = 6.0;
constexpr int kTextFlags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextShowMnemonic;

/// Names of colours in the palette. An empty name paints nothing.
struct Look {
    std::string_view fill;
    std::string_view edge;
    std::string_view text;
};

// By ZrStyle and ZWidgetState.
constexpr Look kLooks[][4] = {
    {{"button", "border", "text"},
     {"buttonHover", "borderHover", "text"},
     {"buttonPressed", "border", "text"},
     {"buttonOff", "line", "disabled"}},
    {{"accentFill", "accentBorder", "onAccent"},
     {"accentHover", "accentBorder", "onAccent"},
     {"accentPressed", "accentBorder", "onAccent"},
     {"buttonOff", "line", "disabled"}},
    {{"", "", "accent"}, {"buttonHover", "", "accent"}, {"buttonPressed", "", "accent"}, {"", "", "disabled"}},
};
constexpr Look kStripLooks[4] = {
    {"vipFill", "", "vipOnFill"},
    {"vipFillHover", "", "vipOnFill"},
    {"vipFillPressed", "", "vipOnFill"},
    {"buttonOff", "", "disabled"},
};

const Look* LooksOf(ZButton::ZrStyle style) {
    if (style == ZButton::kStrip) {
        return kStripLooks;
    }
    return kLooks[style >= 0 && style < int(std::size(kLooks)) ? style : ZButton::kPlain];
}

}  // namespace

struct ZButton::Private {
    QString iconName;
    QSize iconSize;
    ZrStyle style = kPlain;
    int spacing = 6;
    int padding = 14;
    QString tip;

    QSize IconArea() const { return iconName.isEmpty() ? QSize(0, 0) : iconSize; }
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
    updateGeometry();
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
    ensurePolished();
    const QSize icon = d->IconArea();
    const QSize text = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, this->text());
    const int between = icon.isEmpty() || this->text().isEmpty() ? 0 : d->spacing;
    const int width = qMin(host::kit::kMaxHintWidth, 2 * d->padding + icon.width() + between + text.width());
    if (d->style == kStrip) {
        return {width, kStripHeight};
    }
    return {width, qMax(kHeight, qMax(icon.height(), text.height()) + 2 * kRoomAboveText)};
}

QSize ZButton::minimumSizeHint() const {
    return sizeHint();
}

void ZButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    using host::kit::Color;
    const Look& look = LooksOf(d->style)[host::kit::StateOf(*this)];
    const host::kit::SheetRule rule = host::kit::RuleOf(*this);
    const QColor textColor = host::kit::TextColorOf(*this, Color(look.text));
    if (!rule.background) {
        host::kit::PaintPlate(painter, rect(), kRadius, Color(look.fill), rule.border ? QColor() : Color(look.edge));
    }
    if (rule.background || rule.border) {
        host::kit::PaintRule(painter, *this);
    }

    const QSize icon = d->IconArea();
    const int before = icon.isEmpty() ? 0 : icon.width() + (text().isEmpty() ? 0 : d->spacing);
    const int room = qMax(0, width() - 2 * d->padding - before);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room, Qt::TextShowMnemonic);
    host::kit::OfferWhole(*this, d->tip, shown != text(), text());
    const int textWidth = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, shown).width();
    const int left = (width() - before - textWidth) / 2;
    if (!icon.isEmpty()) {
        host::kit::PaintDrawing(painter, d->iconName, QRect(QPoint(left, (height() - icon.height()) / 2), icon),
                                textColor);
    }
    painter.setPen(textColor);
    painter.drawText(QRect(left + before, 0, textWidth, height()), kTextFlags, shown);
    if (hasFocus() && (d->style == kFilled || d->style == kStrip || rule.background)) {
        // In some themes the button has the same colour as the ring.
        host::kit::PaintFocus(painter, rect().adjusted(2, 2, -2, -2), kRadius - 2, textColor);
    } else if (hasFocus()) {
        host::kit::PaintFocus(painter, rect(), kRadius, Color("focus"));
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
