#include "ui/ZRWebImageWidget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>

#include "framework/Ports.h"
#include "ui/IPictures.h"
#include "ui/KitPaint.h"

namespace {

// A path with all corners rounded, or only the upper ones.
QPainterPath Outline(const QRectF& rect, ZRCornerRadiusType corners, double xRadius, double yRadius) {
    QPainterPath path;
    switch (corners) {
        case kCornersNone:
            path.addRect(rect);
            break;
        case kCornersAll:
            path.addRoundedRect(rect, xRadius, yRadius);
            break;
        case kCornersTop:
            path.addRoundedRect(rect, xRadius, yRadius);
            path.addRect(rect.adjusted(0, rect.height() / 2, 0, 0));
            path.setFillRule(Qt::WindingFill);
            break;
    }
    return path;
}

// Both sizes are in pixels of the image. The centre of the picture stays the centre.
QTransform ToCover(const QSizeF& picture, const QSizeF& widget) {
    const double scale = qMax(widget.width() / picture.width(), widget.height() / picture.height());
    const QSizeF scaled = picture * scale;
    return QTransform(scale, 0, 0, scale, (widget.width() - scaled.width()) / 2,
                      (widget.height() - scaled.height()) / 2);
}

}  // namespace

struct ZRWebImageWidget::Private {
    std::unique_ptr<QObject> load;  // guard of the running load
    std::shared_ptr<const Picture> picture;
    size_t frame = 0;
    QTimer nextFrame;
    QString standIn;
    bool moving = true;
    ZRCornerRadiusType corners = kCornersNone;
    double xRadius = 0;
    double yRadius = 0;
};

ZRWebImageWidget::ZRWebImageWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Private>()) {
    setFocusPolicy(Qt::NoFocus);
    d->nextFrame.setSingleShot(true);
    connect(&d->nextFrame, &QTimer::timeout, this, [this] {
        d->frame = d->picture ? (d->frame + 1) % d->picture->frames.size() : 0;
        update();
    });
    host::kit::FollowTheme(this);
}

ZRWebImageWidget::~ZRWebImageWidget() = default;

void ZRWebImageWidget::SetMoving(bool moving) {
    d->moving = moving;
}

void ZRWebImageWidget::SetUrl(const QString& url, const QString& standIn) {
    d->standIn = host::kit::CheckDrawing("ZRWebImageWidget", standIn) ? standIn : QString();
    if (!d->picture) {
        update();
    }
    // The old guard may belong to the load that is being reported. The reporter does not use it afterwards.
    d->load = std::make_unique<QObject>();
    const auto done = [this, url](const std::shared_ptr<const Picture>& picture) {
        if (picture) {
            d->picture = picture;
            d->frame = 0;
            d->nextFrame.stop();
            update();
        }
        Q_EMIT ImageLoadStatusSignal(url, picture ? kImageLoadSucceeded : kImageLoadFailed);
    };
    const host::PortsLock ports;
    if (url.isEmpty() || !ports->pictures) {
        QTimer::singleShot(0, d->load.get(), [done] { done(nullptr); });
        return;
    }
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    ports->pictures->Load(url, pixels, d->moving, d->load.get(), done);
}

void ZRWebImageWidget::SetRoundedCorner(ZRCornerRadiusType type, double xRadius, double yRadius) {
    d->corners = type;
    d->xRadius = xRadius;
    d->yRadius = yRadius;
    update();
}

// A hidden animation is neither painted nor advanced.
void ZRWebImageWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (!d->picture) {
        host::kit::PaintDrawing(painter, d->standIn, rect(), host::kit::Color("muted"));
        return;
    }
    const Picture::Frame& frame = d->picture->frames[d->frame];
    QBrush brush(frame.image);
    brush.setTransform(ToCover(frame.image.size(), size()));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillPath(Outline(rect(), d->corners, d->xRadius, d->yRadius), brush);
    if (d->picture->frames.size() > 1 && !d->nextFrame.isActive()) {
        d->nextFrame.start(frame.millis);
    }
}

void ZRWebImageWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

void ZRWebImageWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->ignore();
}
