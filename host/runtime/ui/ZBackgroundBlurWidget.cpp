#include "ui/ZBackgroundBlurWidget.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "ui/KitPaint.h"

using zrstdui::image_blur::WidgetPainterBufferSource;

struct ZBackgroundBlurWidget::Private {
    zr_ui_res::TResource<QColor> blend;
    double radius = 20.0;
    WidgetPainterBufferSource source;
    QImage picture;
    quint64 blurs = 0;
    bool grabbing = false;
};

ZBackgroundBlurWidget::ZBackgroundBlurWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    host::kit::FollowTheme(this);
}

ZBackgroundBlurWidget::~ZBackgroundBlurWidget() = default;

void ZBackgroundBlurWidget::setBlendColor(zr_ui_res::TResource<QColor> color) {
    d->blend = std::move(color);
    update();
}

void ZBackgroundBlurWidget::setBlurRadius(double radius) {
    d->radius = radius;
    update();
}

void ZBackgroundBlurWidget::setBlurQuality(int /*quality*/) {}

void ZBackgroundBlurWidget::setPainterBufferSource(const WidgetPainterBufferSource& source) {
    d->source = source;
    update();
}

quint64 ZBackgroundBlurWidget::blurCount() const {
    return d->blurs;
}

bool ZBackgroundBlurWidget::eventFilter(QObject* watched, QEvent* event) {
    return QWidget::eventFilter(watched, event);
}

bool ZBackgroundBlurWidget::event(QEvent* event) {
    return QWidget::event(event);
}

void ZBackgroundBlurWidget::paintEvent(QPaintEvent* /*event*/) {
    if (d->grabbing) {
        return;
    }
    QWidget* mask = parentWidget();
    QWidget* source = d->source.isGiven() ? d->source.widget() : mask ? mask->parentWidget() : nullptr;
    QPainter painter(this);
    if (source && d->radius > 0) {
        d->grabbing = true;
        QImage picture(size(), QImage::Format_RGB32);
        picture.fill(palette().color(QPalette::Window));
        const QRect place = QRect(source->mapFromGlobal(mapToGlobal(QPoint())), size()) & source->rect();
        const QPoint target = mapFromGlobal(source->mapToGlobal(place.topLeft()));
        source->render(&picture, target, place, QWidget::DrawWindowBackground);
        for (QObject* child : source->children()) {
            auto* widget = qobject_cast<QWidget*>(child);
            if (widget && widget != mask && !widget->isAncestorOf(this) && !widget->isHidden() && !widget->isWindow()) {
                const QRect part = QRect(widget->mapFromGlobal(mapToGlobal(QPoint())), size()) & widget->rect();
                widget->render(&picture, mapFromGlobal(widget->mapToGlobal(part.topLeft())), part,
                               QWidget::DrawChildren);
            }
        }
        d->grabbing = false;
        ++d->blurs;
        const QSize small = QSize(width() / 8, height() / 8).expandedTo(QSize(1, 1));
        painter.drawImage(rect(), picture.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                      .scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    const QColor blend = d->blend.value();
    if (blend.isValid()) {
        painter.fillRect(rect(), blend);
    }
}

void ZBackgroundBlurWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
}

void ZBackgroundBlurWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
}

void ZBackgroundBlurWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
}

void ZBackgroundBlurWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

void ZBackgroundBlurWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->ignore();
}
