#include "ui/ZText.h"

#include <QPainter>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextBase.h"

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

struct ZText::Private : ZTextBase::Private {
    ZrStyle style = kBody;
    bool dottable = false;
    bool wrap = false;

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

    // A line that asks for less than its text needs always ends in dots.
    bool IsDotted(const QWidget& widget) const {
        const int whole = wrap ? 0 : WholeSize(FontFor(widget)).width();
        return (dottable || whole > host::kit::kMaxHintWidth) && whole > widget.width();
    }

    QSize Hint(const QWidget& widget) const override {
        const QFont font = FontFor(widget);
        const QSize whole = WholeSize(font);
        if (whole.width() <= host::kit::kMaxHintWidth) {
            return whole;
        }
        return {host::kit::kMaxHintWidth, wrap ? HeightAt(widget, host::kit::kMaxHintWidth) : whole.height()};
    }

    // Wrapped text needs only the width of its longest word.
    QSize MinimumHint(const QWidget& widget) const override {
        const QFont font = FontFor(widget);
        if (wrap) {
            const int word = QFontMetrics(font).boundingRect(QRect(0, 0, 0, kNoLimit), Flags(), text).width();
            return {qMin(word, host::kit::kMaxHintWidth), QFontMetrics(font).height()};
        }
        return dottable ? host::kit::DotsSize(font) : Hint(widget);
    }

    bool IsWrapped() const override { return wrap; }

    int HeightAt(const QWidget& widget, int width) const override { return SizeAt(FontFor(widget), width).height(); }

    void Lay(QWidget& widget) override {
        const QFont font = FontFor(widget);
        const bool cut =
            wrap ? SizeAt(font, widget.width()).height() > widget.height() : WholeSize(font).width() > widget.width();
        host::kit::OfferWhole(widget, tip, cut, text);
    }

    void Paint(QPainter& painter, QWidget& widget) override {
        painter.setFont(FontFor(widget));
        painter.setPen(host::kit::TextColorOf(widget, host::kit::Color(LookOf(style).color)));
        const int width = widget.width();
        const QString shown =
            IsDotted(widget) ? painter.fontMetrics().elidedText(text, Qt::ElideRight, width, Qt::TextSingleLine) : text;
        painter.drawText(widget.rect(), FlagsAt(painter.fontMetrics(), width) | Qt::AlignLeft, shown);
    }
};

ZText::ZText(QWidget* parent) : ZTextBase(new Private, parent), d(static_cast<Private*>(state())) {}

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

void ZText::setZrStyle(ZrStyle style) {
    d->style = style;
    d->Refresh(*this);
}

void ZText::setDottable(bool dottable) {
    d->dottable = dottable;
    d->Refresh(*this);
}

bool ZText::isDotted() const {
    ensurePolished();
    return d->IsDotted(*this);
}

void ZText::setWordWrap(bool wrap) {
    d->wrap = wrap;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wrap);
    setSizePolicy(policy);
    d->Refresh(*this);
}
