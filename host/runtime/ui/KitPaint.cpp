#include "ui/KitPaint.h"

#include <QAbstractButton>

#include "framework/HostLog.h"
#include "ui/Drawings.h"
#include "ui/ThemePalette.h"

namespace host::kit {
namespace {

constexpr CHostLog kLog("Kit");
constexpr double kFocusWidth = 1.5;

}  // namespace

QColor Color(std::string_view name) {
    return CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color(name);
}

void FollowTheme(QWidget* widget) {
    QObject::connect(zr_ui_theme::Manager::instance(), &zr_ui_theme::Manager::themeChanged, widget,
                     [widget] { widget->update(); });
}

ZWidgetState::type StateOf(const QAbstractButton& button) {
    if (!button.isEnabled()) {
        return ZWidgetState::disabled;
    }
    if (button.isDown()) {
        return ZWidgetState::pressed;
    }
    return button.underMouse() ? ZWidgetState::hover : ZWidgetState::normal;
}

QFont Sized(QFont font, int pixels, QFont::Weight weight) {
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

void PaintPlate(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& edge) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.setPen(edge.isValid() ? QPen(edge, 1) : QPen(Qt::NoPen));
    // A line of one pixel is sharp at the centre of the pixel.
    const double inset = edge.isValid() ? 0.5 : 0.0;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void PaintFocus(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, kFocusWidth));
    const double inset = kFocusWidth / 2;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void PaintDrawing(QPainter& painter, const QString& name, const QRect& rect, const QColor& color) {
    // The ratio of the paint device, which may be another one than the screen.
    const double ratio = qAbs(painter.combinedTransform().m11());
    const QPixmap pixmap = drawings::Render(name, rect.size(), ratio, color);
    if (!pixmap.isNull()) {
        painter.drawPixmap(rect, pixmap);
    }
}

bool CheckDrawing(const char* who, const QString& name) {
    if (name.isEmpty() || drawings::IsKnown(name)) {
        return true;
    }
    kLog.Error(FMT_STRING("{}: there is no drawing \"{}\""), who, name.toStdString());
    return false;
}

}  // namespace host::kit
