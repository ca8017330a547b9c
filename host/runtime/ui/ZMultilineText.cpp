#include "ui/ZMultilineText.h"

#include <QPainter>
#include <QStyle>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextBase.h"
#include "ui/TextLines.h"

namespace {

constexpr int kPixels = 13;

}  // namespace

struct ZMultilineText::Private : ZTextBase::Private {
    host::kit::CTextLines lines;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    int lineHeight = 0;
    int maxLines = 0;
    bool redo = false;

    host::kit::CTextLines::Shape ShapeFor(const QWidget& widget) const {
        host::kit::CTextLines::Shape shape;
        shape.font = host::kit::FontOf(widget, kPixels, QFont::Normal);
        shape.alignment = QStyle::visualAlignment(widget.layoutDirection(), alignment);
        shape.lineHeight = lineHeight;
        shape.elide = true;
        shape.maxLines = maxLines;
        return shape;
    }

    QSize Hint(const QWidget& widget) const override {
        return lines.SizeAt(ShapeFor(widget), host::kit::kMaxWrappedWidth);
    }

    QSize MinimumHint(const QWidget& widget) const override {
        const auto shape = ShapeFor(widget);
        return host::kit::DotsSize(shape.font).expandedTo(QSize(0, shape.LineHeight()));
    }

    int HeightAt(const QWidget& widget, int width) const override {
        return lines.SizeAt(ShapeFor(widget), width).height();
    }

    void Lay(QWidget& widget) override {
        lines.Lay(ShapeFor(widget), widget.size());
        host::kit::OfferWhole(widget, tip, lines.IsCut(), lines.Plain());
    }

    void Paint(QPainter& painter, QWidget& widget) override {
        if (redo) {
            Lay(widget);
        }
        lines.Paint(painter, widget.rect(), host::kit::TextColorOf(widget, host::kit::Color("text")));
    }
};

ZMultilineText::ZMultilineText(QWidget* parent) : ZTextBase(new Private, parent), d(static_cast<Private*>(state())) {
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

ZMultilineText::~ZMultilineText() = default;

void ZMultilineText::setText(const QString& text) {
    d->text = text;
    d->lines.SetText(text, Qt::PlainText);
    setAccessibleName(text);
    d->Refresh(*this);
}

void ZMultilineText::setAlignment(Qt::Alignment alignment) {
    d->alignment = alignment;
    d->Refresh(*this);
}

void ZMultilineText::setLineHeight(int pixels) {
    d->lineHeight = pixels;
    d->Refresh(*this);
}

void ZMultilineText::setMaximumTextLine(int lines) {
    d->maxLines = lines;
    d->Refresh(*this);
}

void ZMultilineText::setRedoLayoutInPaintEvent(bool redo) {
    d->redo = redo;
    update();
}
