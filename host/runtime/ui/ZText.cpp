#include "ui/ZText.h"

#include <QEvent>
#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"

namespace {

struct Look {
    int pixels;
    QFont::Weight weight;
    std::string_view color;
};

Look LookOf(ZText::ZrStyle style) {
    switch (style) {
        case ZText::kTitle:
            return {16, QFont::DemiBold, "heading"};
        case ZText::kSmall:
            return {11, QFont::Normal, "muted"};
        case ZText::kAccent:
            return {13, QFont::Normal, "accent"};
        case ZText::kWindowTitle:
            return {14, QFont::DemiBold, "heading"};
        case ZText::kBody:
            break;
    }
    return {13, QFont::Normal, "text"};
}

constexpr int kNoLimit = QWIDGETSIZE_MAX;

}  // namespace

struct ZText::Private {
    QString text;
    ZrStyle style = kBody;
    bool dottable = false;
    bool wrap = false;
    QString tip;

    int Flags() const {
        return wrap ? int(Qt::TextWordWrap) | int(Qt::AlignTop) : int(Qt::TextSingleLine) | int(Qt::AlignVCenter);
    }

    QFont FontFor(const QWidget& widget) const {
        const Look look = LookOf(style);
        return host::kit::FontOf(widget, look.pixels, look.weight);
    }

    // A word that is wider than the text is broken.
    int FlagsAt(const QFontMetrics& metrics, int width) const {
        const bool hasWideWord = wrap && metrics.boundingRect(QRect(0, 0, 0, kNoLimit), Flags(), text).width() > width;
        return hasWideWord ? Flags() | int(Qt::TextWrapAnywhere) : Flags();
    }

    QSize SizeAt(const QFont& font, int width) const {
        const QFontMetrics metrics(font);
        return metrics.boundingRect(QRect(0, 0, width, kNoLimit), FlagsAt(metrics, width), text).size();
    }

    // Includes the bearing of the last letter, which may exceed its advance.
    QSize WholeSize(const QFont& font) const {
        const QFontMetrics metrics(font);
        return metrics.size(wrap ? 0 : Qt::TextSingleLine, text).expandedTo(QSize(0, metrics.height()));
    }

    void OfferWhole(QWidget& widget) {
        const QFont font = FontFor(widget);
        const bool cut =
            wrap ? SizeAt(font, widget.width()).height() > widget.height() : WholeSize(font).width() > widget.width();
        host::kit::OfferWhole(widget, tip, cut, text);
    }

    void Refresh(QWidget& widget) {
        OfferWhole(widget);
        widget.updateGeometry();
        widget.update();
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
    d->Refresh(*this);
}

QString ZText::text() const {
    return d->text;
}

void ZText::setZrStyle(ZrStyle style) {
    d->style = style;
    d->Refresh(*this);
}

void ZText::setDottable(bool dottable) {
    d->dottable = dottable;
    d->Refresh(*this);
}

// A line that asks for less than its text needs always ends in dots.
bool ZText::isDotted() const {
    ensurePolished();
    const int whole = d->wrap ? 0 : d->WholeSize(d->FontFor(*this)).width();
    return (d->dottable || whole > host::kit::kMaxHintWidth) && whole > width();
}

void ZText::setWordWrap(bool wrap) {
    d->wrap = wrap;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wrap);
    setSizePolicy(policy);
    d->Refresh(*this);
}

QSize ZText::sizeHint() const {
    ensurePolished();
    const QFont font = d->FontFor(*this);
    const QSize whole = d->WholeSize(font);
    if (whole.width() <= host::kit::kMaxHintWidth) {
        return whole;
    }
    return {host::kit::kMaxHintWidth, d->wrap ? d->SizeAt(font, host::kit::kMaxHintWidth).height() : whole.height()};
}

// Wrapped text needs only the width of its longest word.
QSize ZText::minimumSizeHint() const {
    if (d->wrap) {
        const QFont font = d->FontFor(*this);
        const int word = QFontMetrics(font).boundingRect(QRect(0, 0, 0, kNoLimit), d->Flags(), d->text).width();
        return {qMin(word, host::kit::kMaxHintWidth), QFontMetrics(font).height()};
    }
    return d->dottable ? host::kit::DotsSize(d->FontFor(*this)) : sizeHint();
}

bool ZText::hasHeightForWidth() const {
    return d->wrap;
}

int ZText::heightForWidth(int width) const {
    return d->wrap ? d->SizeAt(d->FontFor(*this), width).height() : -1;
}

void ZText::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setFont(d->FontFor(*this));
    painter.setPen(host::kit::TextColorOf(*this, host::kit::Color(LookOf(d->style).color)));
    const QString shown =
        isDotted() ? painter.fontMetrics().elidedText(d->text, Qt::ElideRight, width(), Qt::TextSingleLine) : d->text;
    painter.drawText(rect(), d->FlagsAt(painter.fontMetrics(), width()) | Qt::AlignLeft, shown);
}

void ZText::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->OfferWhole(*this);
}

void ZText::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        d->Refresh(*this);
    }
    update();
}
