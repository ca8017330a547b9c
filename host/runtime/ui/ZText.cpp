#include "ui/ZText.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"

namespace {

// By ZrStyle.
constexpr int kPixels[] = {13, 16, 11, 13};
constexpr std::string_view kColors[] = {"text", "heading", "muted", "accent"};
constexpr int kNoLimit = QWIDGETSIZE_MAX;

}  // namespace

struct ZText::Private {
    QString text;
    ZrStyle style = kBody;
    bool dottable = false;
    bool wrap = false;

    int Flags() const {
        return wrap ? int(Qt::TextWordWrap) | int(Qt::AlignTop) : int(Qt::TextSingleLine) | int(Qt::AlignVCenter);
    }

    QFont FontFrom(const QFont& font) const {
        return host::kit::Sized(font, kPixels[style], style == kTitle ? QFont::DemiBold : QFont::Normal);
    }

    QSize SizeAt(const QFont& font, int width) const {
        return QFontMetrics(FontFrom(font)).boundingRect(QRect(0, 0, width, kNoLimit), Flags(), text).size();
    }

    // Includes the bearing of the last letter, which may exceed its advance.
    QSize WholeSize(const QFont& font) const {
        const QFontMetrics metrics(FontFrom(font));
        return metrics.size(wrap ? 0 : Qt::TextSingleLine, text).expandedTo(QSize(0, metrics.height()));
    }
};

ZText::ZText(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    host::kit::FollowTheme(this);
}

ZText::ZText(const QString& text, QWidget* parent) : ZText(parent) {
    setText(text);
}

ZText::~ZText() = default;

void ZText::setText(const QString& text) {
    if (d->text == text) {
        return;
    }
    d->text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QString ZText::text() const {
    return d->text;
}

void ZText::setZrStyle(ZrStyle style) {
    d->style = style;
    updateGeometry();
    update();
}

void ZText::setDottable(bool dottable) {
    d->dottable = dottable;
    updateGeometry();
    update();
}

bool ZText::isDotted() const {
    return d->dottable && !d->wrap && d->WholeSize(font()).width() > width();
}

void ZText::setWordWrap(bool wrap) {
    d->wrap = wrap;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wrap);
    setSizePolicy(policy);
    updateGeometry();
    update();
}

QSize ZText::sizeHint() const {
    return d->WholeSize(font());
}

// Wrapped text needs only the width of its longest word.
QSize ZText::minimumSizeHint() const {
    const QFontMetrics metrics(d->FontFrom(font()));
    if (d->wrap) {
        return {d->SizeAt(font(), 0).width(), metrics.height()};
    }
    return d->dottable ? QSize(metrics.horizontalAdvance(QChar(0x2026)), metrics.height()) : sizeHint();
}

bool ZText::hasHeightForWidth() const {
    return d->wrap;
}

int ZText::heightForWidth(int width) const {
    return d->wrap ? d->SizeAt(font(), width).height() : -1;
}

void ZText::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setFont(d->FontFrom(font()));
    painter.setPen(isEnabled() ? host::kit::ColorIn(kColors, d->style) : host::kit::Color("disabled"));
    const QString shown =
        isDotted() ? painter.fontMetrics().elidedText(d->text, Qt::ElideRight, width(), Qt::TextSingleLine) : d->text;
    painter.drawText(rect(), d->Flags() | Qt::AlignLeft, shown);
}

void ZText::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
    update();
}
