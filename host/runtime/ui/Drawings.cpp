#include "ui/Drawings.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>

#include "ui/zr_ui_theme.h"

namespace host::drawings {
namespace {

// More than any screen has, so that a wrong number costs little.
constexpr double kLargestRatio = 8.0;
constexpr int kMostPixels = 4096;

// Where light themes need another form, it stands beside under the same name.
QString PathOf(const QString& name) {
    const QString light = QStringLiteral(":/kit/light/%1.svg").arg(name);
    const bool isLight = zr_ui_theme::Manager::instance()->getTheme() == zr_ui_theme::Manager::kThemeLight;
    return isLight && QFile::exists(light) ? light : QStringLiteral(":/kit/%1.svg").arg(name);
}

QByteArray Load(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap Paint(QByteArray drawing, const QSize& size, double ratio, const QColor& color) {
    drawing.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    const QSize pixels = (QSizeF(size) * ratio).toSize();
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QRectF target(QPointF(), QSizeF(renderer.defaultSize()).scaled(pixels, Qt::KeepAspectRatio));
    target.moveCenter(QRectF(QPointF(), QSizeF(pixels)).center());
    QPainter painter(&pixmap);
    renderer.render(&painter, target);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

}  // namespace

bool IsKnown(const QString& name) {
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && QFile::exists(PathOf(name));
}

QSize SizeOf(const QString& name) {
    return IsKnown(name) ? QSvgRenderer(Load(PathOf(name))).defaultSize() : QSize();
}

QPixmap Render(const QString& name, const QSize& size, double ratio, const QColor& color) {
    if (!IsKnown(name) || size.isEmpty() || size.width() > kMostPixels || size.height() > kMostPixels) {
        return QPixmap();
    }
    const double sharp = std::clamp(ratio, 1.0, kLargestRatio);
    const QString path = PathOf(name);
    const QString key =
        QStringLiteral("%1 %2x%3 %4 %5").arg(path).arg(size.width()).arg(size.height()).arg(sharp).arg(color.name());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = Paint(Load(path), size, sharp, color);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

}  // namespace host::drawings
