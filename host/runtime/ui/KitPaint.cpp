#include "ui/KitPaint.h"

#include <QAbstractButton>
#include <QTextDocument>

#include "framework/HostLog.h"
#include "ui/Drawings.h"
#include "ui/ThemePalette.h"

namespace host::kit {
namespace {

constexpr CHostLog kLog("Kit");
constexpr double kFocusWidth = 1.5;
constexpr int kLongTip = 80;

// By ZIconColorStyle. An icon over a picture is white.
constexpr std::string_view kIconColors[] = {"muted", "heading", "accent", "onAccent", "warning"};

}  // namespace

QColor Color(std::string_view name) {
    return CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color(name);
}

QColor IconColor(ZIconColorStyle::type style) {
    return style == ZIconColorStyle::onPicture ? QColor(Qt::white) : ColorIn(kIconColors, style);
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

void PaintDrawing(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color) {
    // The ratio of the paint device, which may be another one than the screen.
    const double ratio = qAbs(painter.combinedTransform().m11());
    const QPixmap pixmap = drawings::Render(name, rect.size().toSize(), ratio, color);
    if (!pixmap.isNull()) {
        painter.drawPixmap(rect, pixmap, QRectF(pixmap.rect()));
    }
}

void OfferWhole(QWidget& widget, QString& tip, bool cut, const QString& text) {
    // A tooltip of somebody else stays until it is removed.
    if (!widget.toolTip().isEmpty() && widget.toolTip() != tip) {
        return;
    }
    tip = cut ? TipText(text) : QString();
    if (widget.toolTip() != tip) {
        widget.setToolTip(tip);
    }
}

QString TipText(const QString& text) {
    // Only rich text is wrapped.
    if (text.size() < kLongTip && !Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QSize DotsSize(const QFont& font) {
    const QFontMetrics metrics(font);
    return {metrics.horizontalAdvance(QChar(0x2026)), metrics.height()};
}

bool CheckDrawing(const char* who, const QString& name) {
    if (name.isEmpty() || drawings::IsKnown(name)) {
        return true;
    }
    kLog.Error(FMT_STRING("{}: there is no drawing \"{}\""), who, name.toStdString());
    return false;
}

}  // namespace host::kit
