#include "Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Icons");

QByteArray Drawing(const char* name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(name)));
    if (!file.open(QIODevice::ReadOnly)) {
        kLog.Error(FMT_STRING("Icon {}: {}"), name, file.errorString().toStdString());
        return QByteArray();
    }
    return file.readAll();
}

// `size` in the screen's pixels.
QPixmap Painted(QByteArray drawing, const QColor& color, const QSize& size) {
    drawing.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

/// Paints a drawing at the sizes and in the states that are asked for: of all that an icon can be, little is
/// ever seen.
class CDrawnIcon : public QIconEngine {
public:
    CDrawnIcon(QByteArray drawing, const icons::Colors& colors)
        : m_drawing(std::move(drawing)),
          m_normal(colors.normal),
          m_checked(colors.checked),
          m_disabled(colors.disabled) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QColor& color = mode == QIcon::Disabled ? m_disabled : state == QIcon::On ? m_checked : m_normal;
        const QString key = QStringLiteral("%1 %2x%3 ").arg(color.name()).arg(size.width()).arg(size.height()) +
                            QString::fromLatin1(m_drawing);
        QPixmap pixmap;
        if (!QPixmapCache::find(key, &pixmap)) {
            pixmap = Painted(m_drawing, color, size);
            QPixmapCache::insert(key, pixmap);
        }
        return pixmap;
    }

    QIconEngine* clone() const override { return new CDrawnIcon(*this); }

private:
    const QByteArray m_drawing;
    const QColor m_normal;
    const QColor m_checked;
    const QColor m_disabled;
};

}  // namespace

namespace icons {

QPixmap Pixmap(const char* name, theme::ColorName color, int size) {
    const QByteArray drawing = Drawing(name);
    if (drawing.isEmpty()) {
        return QPixmap();
    }
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap pixmap = Painted(drawing, QColor(color), QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QIcon Make(const char* name, const Colors& colors) {
    const QByteArray drawing = Drawing(name);
    return drawing.isEmpty() ? QIcon() : QIcon(new CDrawnIcon(drawing, colors));
}

}  // namespace icons
