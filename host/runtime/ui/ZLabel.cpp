#include "ui/ZLabel.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/zr_ui_theme.h"

namespace {

constexpr int kPixels = 12;
constexpr QMargins kFirstMargins(8, 3, 8, 3);
constexpr double kRadius = 4.0;
constexpr int kTintAlpha = 40;

// By ZrStyle. The number 4 is not used.
constexpr std::string_view kColors[] = {"warning", "down", "up", "accent", "muted", "muted"};

}  // namespace

struct ZLabel::Private {
    QString text;
    ZrStyle style = kNeutral;
    ZrBgStyle bgStyle = kBgNone;
    QMargins margins = kFirstMargins;

    void FillPlate(QWidget* label) const {
        if (bgStyle == kBgPlate) {
            QPalette palette = label->palette();
            palette.setColor(QPalette::Window, host::kit::Color("surface"));
            label->setPalette(palette);
        }
    }
};

ZLabel::ZLabel(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    host::kit::FollowTheme(this);
    connect(zr_ui_theme::Manager::instance(), &zr_ui_theme::Manager::themeChanged, this,
            [this] { d->FillPlate(this); });
}

ZLabel::ZLabel(const QString& text, QWidget* parent) : ZLabel(parent) {
    setText(text);
}

ZLabel::~ZLabel() = default;

void ZLabel::setText(const QString& text) {
    d->text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QString ZLabel::text() const {
    return d->text;
}

void ZLabel::setZrStyle(ZrStyle style) {
    d->style = style;
    update();
}

void ZLabel::setZrBgStyle(ZrBgStyle style) {
    d->bgStyle = style;
    // Filled ahead of the paint event, so that it does not cover what an event filter paints.
    setAutoFillBackground(style == kBgPlate);
    d->FillPlate(this);
    update();
}

void ZLabel::setCustomMargin(const QMargins& margins) {
    d->margins = margins;
    updateGeometry();
    update();
}

void ZLabel::setCustomMargin(int margin) {
    setCustomMargin(QMargins(margin, 0, margin, 0));
}

QSize ZLabel::sizeHint() const {
    const QFontMetrics metrics(host::kit::Sized(font(), kPixels, QFont::Normal));
    return QRect(QPoint(), metrics.size(Qt::TextSingleLine, d->text)).marginsAdded(d->margins).size();
}

QSize ZLabel::minimumSizeHint() const {
    return sizeHint();
}

void ZLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QColor color = isEnabled() ? host::kit::ColorIn(kColors, d->style) : host::kit::Color("disabled");
    painter.setFont(host::kit::Sized(font(), kPixels, QFont::Normal));
    if (d->bgStyle == kBgTinted) {
        QColor tint = color;
        tint.setAlpha(kTintAlpha);
        host::kit::PaintPlate(painter, rect(), kRadius, tint);
    }
    painter.setPen(color);
    painter.drawText(rect().marginsRemoved(d->margins), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, d->text);
}

void ZLabel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
    update();
}
