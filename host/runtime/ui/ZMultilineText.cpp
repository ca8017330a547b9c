#include "ui/ZMultilineText.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextLines.h"

namespace {

constexpr int kPixels = 13;

}  // namespace

struct ZMultilineText::Private {
    QString text;
    host::kit::CTextLines lines;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    int lineHeight = 0;
    int maxLines = 0;
    bool redo = false;
    QString tip;

    host::kit::CTextLines::Shape ShapeFor(const QWidget& widget) const {
        host::kit::CTextLines::Shape shape;
        shape.font = host::kit::FontOf(widget, kPixels, QFont::Normal);
        shape.alignment = QStyle::visualAlignment(widget.layoutDirection(), alignment);
        shape.lineHeight = lineHeight;
        shape.elide = true;
        shape.maxLines = maxLines;
        return shape;
    }

    void Lay(QWidget& widget) {
        lines.Lay(ShapeFor(widget), widget.size());
        host::kit::OfferWhole(widget, tip, lines.IsCut(), lines.Plain());
    }

    void LayAnew(QWidget& widget) {
        Lay(widget);
        widget.updateGeometry();
        widget.update();
    }
};

ZMultilineText::ZMultilineText(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    host::kit::FollowTheme(this);
}

ZMultilineText::~ZMultilineText() = default;

void ZMultilineText::setText(const QString& text) {
    d->text = text;
    d->lines.SetText(text, Qt::PlainText);
    setAccessibleName(text);
    d->LayAnew(*this);
}

QString ZMultilineText::text() const {
    return d->text;
}

void ZMultilineText::setAlignment(Qt::Alignment alignment) {
    d->alignment = alignment;
    d->LayAnew(*this);
}

void ZMultilineText::setLineHeight(int pixels) {
    d->lineHeight = pixels;
    d->LayAnew(*this);
}

void ZMultilineText::setMaximumTextLine(int lines) {
    d->maxLines = lines;
    d->LayAnew(*this);
}

void ZMultilineText::setRedoLayoutInPaintEvent(bool redo) {
    d->redo = redo;
    update();
}

QSize ZMultilineText::sizeHint() const {
    ensurePolished();
    return d->lines.SizeAt(d->ShapeFor(*this), host::kit::kMaxWrappedWidth);
}

QSize ZMultilineText::minimumSizeHint() const {
    ensurePolished();
    return host::kit::DotsSize(d->ShapeFor(*this).font).expandedTo(QSize(0, d->ShapeFor(*this).LineHeight()));
}

bool ZMultilineText::hasHeightForWidth() const {
    return true;
}

int ZMultilineText::heightForWidth(int width) const {
    return d->lines.SizeAt(d->ShapeFor(*this), width).height();
}

void ZMultilineText::paintEvent(QPaintEvent* /*event*/) {
    if (d->redo) {
        d->Lay(*this);
    }
    QPainter painter(this);
    d->lines.Paint(painter, rect(), host::kit::TextColorOf(*this, host::kit::Color("text")));
}

void ZMultilineText::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->Lay(*this);
}

void ZMultilineText::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    d->LayAnew(*this);
}
