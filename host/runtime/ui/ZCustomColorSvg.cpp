#include "ui/ZCustomColorSvg.h"

#include <QPainter>

#include "ui/KitPaint.h"

namespace {

constexpr double kDisabledAlpha = 0.4;

}  // namespace

ZSvgIconRendererImp::~ZSvgIconRendererImp() = default;

struct ZCustomColorSvg::Private : public ZSvgIconRendererImp {
    QString name;
    QColor color;

    void render(ZWidgetState::type state, QPainter* painter, const QRectF& rect) override {
        if (!painter || rect.isEmpty() || name.isEmpty()) {
            return;
        }
        QColor shown = color.isValid() ? color : host::kit::Color("text");
        if (state == ZWidgetState::disabled) {
            shown.setAlphaF(shown.alphaF() * kDisabledAlpha);
        }
        host::kit::PaintDrawing(*painter, name, rect, shown);
    }
};

ZCustomColorSvg::ZCustomColorSvg() : d(std::make_unique<Private>()) {}

ZCustomColorSvg::~ZCustomColorSvg() = default;

void ZCustomColorSvg::setFile(const QString& name) {
    d->name = host::kit::CheckDrawing("ZCustomColorSvg", name) ? name : QString();
}

void ZCustomColorSvg::setColor(const QColor& color) {
    d->color = color;
}

ZSvgIconRendererImp* ZCustomColorSvg::renderer() const {
    return d.get();
}
