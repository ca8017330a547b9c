#include "Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>

#include "framework/HostLog.h"
#include "ui/Drawings.h"

// The macro declares a function of the global namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(icons);
}

namespace {

constexpr host::CHostLog kLog("Icons");

/// Returns an empty path, and logs the name, if there is no such drawing.
QString PathOf(const char* name) {
    LoadResources();
    const QString path = QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(name));
    if (QFile::exists(path)) {
        return path;
    }
    kLog.Error(FMT_STRING("Icon {}: there is no such drawing"), name);
    return QString();
}

/// Paints a drawing at the requested size and state. Only a few of all combinations are ever shown.
class CDrawnIcon : public QIconEngine {
public:
    CDrawnIcon(QString path, const icons::Colors& colors)
        : m_strPath(std::move(path)), m_normal(colors.normal), m_checked(colors.checked), m_disabled(colors.disabled) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QColor& color = mode == QIcon::Disabled ? m_disabled : state == QIcon::On ? m_checked : m_normal;
        return host::drawings::RenderFile(m_strPath, size, 1, color);
    }

    QIconEngine* clone() const override { return new CDrawnIcon(*this); }

private:
    const QString m_strPath;
    const QColor m_normal;
    const QColor m_checked;
    const QColor m_disabled;
};

}  // namespace

namespace icons {

QPixmap Pixmap(const char* name, theme::ColorName color, int size) {
    const QString path = PathOf(name);
    return path.isEmpty()
               ? QPixmap()
               : host::drawings::RenderFile(path, QSize(size, size), qApp->devicePixelRatio(), QColor(color));
}

QIcon Make(const char* name, const Colors& colors) {
    const QString path = PathOf(name);
    return path.isEmpty() ? QIcon() : QIcon(new CDrawnIcon(path, colors));
}

}  // namespace icons
