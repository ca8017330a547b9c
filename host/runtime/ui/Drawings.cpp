#include "ui/Drawings.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSet>
#include <QSvgRenderer>
#include <algorithm>

#include "core/lang.h"
#include "ui/zr_ui_theme.h"

namespace host::drawings {
namespace {

// Larger than any screen in device pixels. A wrong size then costs little.
constexpr double kMaxRatio = 8.0;
constexpr int kMaxSidePixels = 8192;

QSet<QString> NamesIn(const QString& folder) {
    QSet<QString> names;
    const auto files = QDir(folder).entryInfoList({QStringLiteral("*.svg")}, QDir::Files);
    for (const QFileInfo& file : files) {
        names.insert(file.completeBaseName());
    }
    return names;
}

// Listed once: each icon looks up its name when it paints, and the resource system is slow.
bool IsInKit(const QString& name) {
    static const QSet<QString> names = NamesIn(QStringLiteral(":/kit"));
    return names.contains(name);
}

// Another form under the same name, for light themes and for languages other than Chinese.
bool HasLightForm(const QString& name) {
    static const QSet<QString> names = NamesIn(QStringLiteral(":/kit/light"));
    return names.contains(name) && zr_ui_theme::Manager::instance()->getTheme() == zr_ui_theme::Manager::kThemeLight;
}

bool HasLatinForm(const QString& name) {
    static const QSet<QString> names = NamesIn(QStringLiteral(":/kit/latin"));
    return names.contains(name) && !core::lang::IsChinese();
}

QString PathOf(const QString& name) {
    const char* folder = HasLightForm(name) ? "light/" : HasLatinForm(name) ? "latin/" : "";
    return QStringLiteral(":/kit/%1%2.svg").arg(QLatin1String(folder), name);
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
    painter.setOpacity(color.alphaF());
    renderer.render(&painter, target);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

}  // namespace

bool IsKnown(const QString& name) {
    return IsInKit(name) || HasLightForm(name);
}

QSize SizeOf(const QString& name) {
    return IsKnown(name) ? QSvgRenderer(Load(PathOf(name))).defaultSize() : QSize();
}

QPixmap Render(const QString& name, const QSize& size, double ratio, const QColor& color) {
    return IsKnown(name) ? RenderFile(PathOf(name), size, ratio, color) : QPixmap();
}

QPixmap RenderFile(const QString& path, const QSize& size, double ratio, const QColor& color) {
    const double sharp = std::clamp(ratio, 1.0, kMaxRatio);
    if (size.isEmpty() || std::max(size.width(), size.height()) * sharp > kMaxSidePixels) {
        return QPixmap();
    }
    const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                            .arg(path)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(sharp)
                            .arg(color.name(QColor::HexArgb));
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        const QByteArray drawing = Load(path);
        if (drawing.isEmpty()) {
            return QPixmap();
        }
        pixmap = Paint(drawing, size, sharp, color);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

}  // namespace host::drawings
