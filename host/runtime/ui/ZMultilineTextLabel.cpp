#include "ui/ZMultilineTextLabel.h"

#include <QPainter>
#include <QStyle>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextBase.h"
#include "ui/TextLines.h"

namespace {

constexpr int kPixels = 13;

}  // namespace

struct ZMultilineTextLabel::Private : ZTextBase::Private {
    Qt::TextFormat format = Qt::AutoText;
    host::kit::CTextLines lines;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    int lineHeight = 0;
    QMargins margins;
    bool elidable = false;
    QTextOption::WrapMode wrap = QTextOption::WordWrap;

    host::kit::CTextLines::Shape ShapeFor(const QWidget& widget) const {
        host::kit::CTextLines::Shape shape;
        shape.font = host::kit::FontOf(widget, kPixels, QFont::Normal);
        shape.alignment = QStyle::visualAlignment(widget.layoutDirection(), alignment);
        shape.wrap = wrap;
        shape.lineHeight = lineHeight;
        shape.elide = elidable;
        return shape;
    }

    QSize WithMargins(const QSize& size) const { return QRect(QPoint(), size).marginsAdded(margins).size(); }

    QSize Hint(const QWidget& widget) const override { return SizeAt(widget, host::kit::kMaxWrappedWidth); }

    QSize MinimumHint(const QWidget& widget) const override {
        const auto shape = ShapeFor(widget);
        return WithMargins(host::kit::DotsSize(shape.font).expandedTo(QSize(0, shape.LineHeight())));
    }

    int HeightAt(const QWidget& widget, int width) const override { return SizeAt(widget, width).height(); }

    QSize SizeAt(const QWidget& widget, int width) const {
        const int room = qMax(0, width - margins.left() - margins.right());
        return WithMargins(lines.SizeAt(ShapeFor(widget), room));
    }

    void Lay(QWidget& widget) override {
        lines.Lay(ShapeFor(widget), widget.rect().marginsRemoved(margins).size());
        host::kit::OfferWhole(widget, tip, lines.IsCut(), lines.Plain());
    }

    void Paint(QPainter& painter, QWidget& widget) override {
        lines.Paint(painter, widget.rect().marginsRemoved(margins),
                    host::kit::TextColorOf(widget, host::kit::Color("text")));
    }
};

ZMultilineTextLabel::ZMultilineTextLabel(QWidget* parent)
    : ZTextBase(new Private, parent), d(static_cast<Private*>(state())) {
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

ZMultilineTextLabel::~ZMultilineTextLabel() = default;

void ZMultilineTextLabel::setTextWithFormat(const QString& text, Qt::TextFormat format) {
    d->text = text;
    setTextFormat(format);
}

void ZMultilineTextLabel::setTextFormat(Qt::TextFormat format) {
    d->format = format;
    d->lines.SetText(d->text, format);
    setAccessibleName(d->lines.Plain());
    d->Refresh(*this);
}

Qt::TextFormat ZMultilineTextLabel::textFormat() const {
    return d->format;
}

void ZMultilineTextLabel::setAlignment(Qt::Alignment alignment) {
    d->alignment = alignment;
    d->Refresh(*this);
}

void ZMultilineTextLabel::setLineHeight(int pixels) {
    d->lineHeight = pixels;
    d->Refresh(*this);
}

void ZMultilineTextLabel::setMargins(const QMargins& margins) {
    d->margins = margins;
    d->Refresh(*this);
}

void ZMultilineTextLabel::setElidable(bool elidable) {
    d->elidable = elidable;
    d->Refresh(*this);
}

void ZMultilineTextLabel::setWrapMode(QTextOption::WrapMode mode) {
    d->wrap = mode;
    d->Refresh(*this);
}
