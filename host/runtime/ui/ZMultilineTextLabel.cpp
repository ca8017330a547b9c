#include "ui/ZMultilineTextLabel.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "ui/KitPaint.h"
#include "ui/SheetRule.h"
#include "ui/TextLines.h"

namespace {

constexpr int kPixels = 13;

}  // namespace

struct ZMultilineTextLabel::Private {
    QString text;
    Qt::TextFormat format = Qt::AutoText;
    host::kit::CTextLines lines;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    int lineHeight = 0;
    QMargins margins;
    bool elidable = false;
    QTextOption::WrapMode wrap = QTextOption::WordWrap;
    QString tip;

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

    void Lay(QWidget& widget) {
        lines.Lay(ShapeFor(widget), widget.rect().marginsRemoved(margins).size());
        host::kit::OfferWhole(widget, tip, lines.IsCut(), lines.Plain());
    }

    void LayAnew(QWidget& widget) {
        Lay(widget);
        widget.updateGeometry();
        widget.update();
    }
};

ZMultilineTextLabel::ZMultilineTextLabel(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    host::kit::FollowTheme(this);
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
    d->LayAnew(*this);
}

QString ZMultilineTextLabel::text() const {
    return d->text;
}

Qt::TextFormat ZMultilineTextLabel::textFormat() const {
    return d->format;
}

void ZMultilineTextLabel::setAlignment(Qt::Alignment alignment) {
    d->alignment = alignment;
    d->LayAnew(*this);
}

void ZMultilineTextLabel::setLineHeight(int pixels) {
    d->lineHeight = pixels;
    d->LayAnew(*this);
}

void ZMultilineTextLabel::setMargins(const QMargins& margins) {
    d->margins = margins;
    d->LayAnew(*this);
}

void ZMultilineTextLabel::setElidable(bool elidable) {
    d->elidable = elidable;
    d->LayAnew(*this);
}

void ZMultilineTextLabel::setWrapMode(QTextOption::WrapMode mode) {
    d->wrap = mode;
    d->LayAnew(*this);
}

QSize ZMultilineTextLabel::sizeHint() const {
    ensurePolished();
    const int room = host::kit::kMaxWrappedWidth - d->margins.left() - d->margins.right();
    return d->WithMargins(d->lines.SizeAt(d->ShapeFor(*this), room));
}

QSize ZMultilineTextLabel::minimumSizeHint() const {
    ensurePolished();
    const auto shape = d->ShapeFor(*this);
    return d->WithMargins(host::kit::DotsSize(shape.font).expandedTo(QSize(0, shape.LineHeight())));
}

bool ZMultilineTextLabel::hasHeightForWidth() const {
    return true;
}

int ZMultilineTextLabel::heightForWidth(int width) const {
    const int room = qMax(0, width - d->margins.left() - d->margins.right());
    return d->WithMargins(d->lines.SizeAt(d->ShapeFor(*this), room)).height();
}

void ZMultilineTextLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    d->lines.Paint(painter, rect().marginsRemoved(d->margins), host::kit::TextColorOf(*this, host::kit::Color("text")));
}

void ZMultilineTextLabel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    d->Lay(*this);
}

void ZMultilineTextLabel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    d->LayAnew(*this);
}
