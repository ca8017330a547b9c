#include "Icons.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include "framework/HostLog.h"

namespace {

constexpr host::HostLog kLog("Icons");
constexpr int kIconSizes[] = {16, 20, 24};

}  // namespace

namespace icons {

QPixmap Pixmap(const char* name, theme::ColorName color, int size) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(name)));
    if (!file.open(QIODevice::ReadOnly)) {
        kLog.Error(FMT_STRING("Icon {}: {}"), name, file.errorString().toStdString());
        return QPixmap();
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", QColor(color).name().toLatin1());
    QSvgRenderer renderer(drawing);
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QIcon Make(const char* name, const Colors& colors) {
    QIcon icon;
    for (const int size : kIconSizes) {
        icon.addPixmap(Pixmap(name, colors.normal, size), QIcon::Normal, QIcon::Off);
        icon.addPixmap(Pixmap(name, colors.checked, size), QIcon::Normal, QIcon::On);
        icon.addPixmap(Pixmap(name, colors.disabled, size), QIcon::Disabled);
    }
    return icon;
}

}  // namespace icons
