#include "ui/ZLabel.h"

#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextBase.h"
#include "ui/zr_ui_theme.h"

namespace {

constexpr int kPixels = 12;
constexpr QMargins kFirstMargins(8, 3, 8, 3);
constexpr double kRadius = 4.0;
constexpr int kTintAlpha = 40;

// By ZrStyle. The number 4 is not used.
constexpr std::string_view kColors[] = {"warning", "down", "up", "accent", "muted", "muted"};

}  // namespace

struct ZLabel::Private : ZTextBase::Private {
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

    QString ShownIn(const QWidget& widget) const {
        const QFontMetrics metrics(host::kit::FontOf(widget, kPixels, QFont::Normal));
        const int room = qMax(0, widget.width() - margins.left() - margins.right());
        return metrics.size(Qt::TextSingleLine, text).width() > room
                   ? metrics.elidedText(text, Qt::ElideRight, room, Qt::TextSingleLine)
                   : text;
    }

    QSize Hint(const QWidget& widget) const override {
        const QFontMetrics metrics(host::kit::FontOf(widget, kPixels, QFont::Normal));
        const QSize whole = QRect(QPoint(), metrics.size(Qt::TextSingleLine, text)).marginsAdded(margins).size();
        return whole.boundedTo(QSize(host::kit::kMaxHintWidth, whole.height()));
    }

    QSize MinimumHint(const QWidget& widget) const override { return Hint(widget); }

    bool IsWrapped() const override { return false; }

    void Lay(QWidget& widget) override { host::kit::OfferWhole(widget, tip, ShownIn(widget) != text, text); }

    void Paint(QPainter& painter, QWidget& widget) override {
        const QColor color = host::kit::TextColorOf(widget, host::kit::ColorIn(kColors, style));
        painter.setFont(host::kit::FontOf(widget, kPixels, QFont::Normal));
        if (bgStyle == kBgTinted) {
            QColor tint = color;
            tint.setAlpha(kTintAlpha);
            host::kit::PaintPlate(painter, widget.rect(), kRadius, tint);
        }
        painter.setPen(color);
        painter.drawText(widget.rect().marginsRemoved(margins), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         ShownIn(widget));
    }
};

ZLabel::ZLabel(QWidget* parent) : ZTextBase(new Private, parent), d(static_cast<Private*>(state())) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
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
