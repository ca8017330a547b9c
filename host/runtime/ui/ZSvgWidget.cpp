#include "ui/ZSvgWidget.h"

#include <QPainter>

#include "ui/Drawings.h"
#include "ui/KitPaint.h"

struct ZSvgWidget::Private {
    QString name;
};

ZSvgWidget::ZSvgWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    host::kit::FollowTheme(this);
}

ZSvgWidget::~ZSvgWidget() = default;

void ZSvgWidget::setSvgIconName(const QString& name) {
    d->name = host::kit::CheckDrawing("ZSvgWidget", name) ? name : QString();
    updateGeometry();
    update();
}

QString ZSvgWidget::svgIconName() const {
    return d->name;
}

QSize ZSvgWidget::sizeHint() const {
    return d->name.isEmpty() ? QSize(0, 0) : host::drawings::SizeOf(d->name);
}

void ZSvgWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    host::kit::PaintDrawing(painter, d->name, rect(), host::kit::Color(isEnabled() ? "text" : "disabled"));
}
