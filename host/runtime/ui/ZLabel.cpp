#include "ui/ZLabel.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
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

    QString tip;

    QString ShownIn(const QWidget& widget) const {
        const QFontMetrics metrics(host::kit::FontOf(widget, kPixels, QFont::Normal));
        const int room = qMax(0, widget.width() - margins.left() - margins.right());
        return metrics.size(Qt::TextSingleLine, text).width() > room
                   ? metrics.elidedText(text, Qt::ElideRight, room, Qt::TextSingleLine)
                   : text;
    }

    void Refresh(QWidget& widget) {
        host::kit::OfferWhole(widget, tip, ShownIn(widget) != text, text);
        widget.updateGeometry();
        widget.update();
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
    d->Refresh(*this);
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
    d->Refresh(*this);
}

void ZLabel::setCustomMargin(int margin) {
    setCustomMargin(QMargins(margin, 0, margin, 0));
}

QSize ZLabel::sizeHint() const {
    ensurePolished();
    const QFontMetrics metrics(host::kit::FontOf(*this, kPixels, QFont::Normal));
    const QSize whole = QRect(QPoint(), metrics.size(Qt::TextSingleLine, d->text)).marginsAdded(d->margins).size();
    return whole.boundedTo(QSize(host::kit::kMaxHintWidth, whole.height()));
}

QSize ZLabel::minimumSizeHint() const {
    return sizeHint();
}

void ZLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor color = host::kit::TextColorOf(*this, host::kit::ColorIn(kColors, d->style));
    painter.setFont(host::kit::FontOf(*this, kPixels, QFont::Normal));
    if (d->bgStyle == kBgTinted) {
        QColor tint = color;
        tint.setAlpha(kTintAlpha);
        host::kit::PaintPlate(painter, rect(), kRadius, tint);
    }
    painter.setPen(color);
    painter.drawText(rect().marginsRemoved(d->margins), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     d->ShownIn(*this));
}

void ZLabel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->Refresh(*this);
}

void ZLabel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        d->Refresh(*this);
    }
    update();
}
