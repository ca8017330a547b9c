#include "ui/ZAction.h"

#include <QIconEngine>
#include <QPainter>

#include "ui/Drawings.h"
#include "ui/KitPaint.h"
#include "ui/zr_ui_theme.h"

namespace {

/// An icon that is rendered in the size and the theme of each use.
class CDrawingEngine : public QIconEngine {
public:
    CDrawingEngine(QString name, ZIconColorStyle::type style) : m_strName(std::move(name)), m_enStyle(style) {}

    QIconEngine* clone() const override { return new CDrawingEngine(*this); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        host::kit::PaintDrawing(*painter, m_strName, rect, ColorFor(mode));
    }

    // The size is in device pixels.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        return host::drawings::Render(m_strName, size, 1.0, ColorFor(mode));
    }

private:
    QColor ColorFor(QIcon::Mode mode) const {
        return mode == QIcon::Disabled ? host::kit::Color("disabled") : host::kit::IconColor(m_enStyle);
    }

    QString m_strName;
    ZIconColorStyle::type m_enStyle;
};

}  // namespace

struct ZAction::Private {
    QString name;
    ZIconColorStyle::type style = ZIconColorStyle::normal;

    QIcon Icon() const { return name.isEmpty() ? QIcon() : QIcon(new CDrawingEngine(name, style)); }
};

ZAction::ZAction(QObject* parent) : QAction(parent), d(std::make_unique<Private>()) {
    connect(zr_ui_theme::Manager::instance(), &zr_ui_theme::Manager::themeChanged, this, [this] {
        if (!d->name.isEmpty()) {
            setIcon(d->Icon());  // its users paint again
        }
    });
}

ZAction::~ZAction() = default;

void ZAction::setSvgIcon(const QString& name, ZIconColorStyle::type style) {
    d->name = host::kit::CheckDrawing("ZAction", name) ? name : QString();
    d->style = style;
    setIcon(d->Icon());
    setIconVisibleInMenu(true);
}

bool ZAction::paint(QPainter* /*painter*/, const QStyleOptionMenuItem& /*option*/, const ZMenu* /*menu*/) const {
    return false;
}
