#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <string_view>

#include "framework/export.h"
#include "ui/ZWidgetTypes.h"

class QAbstractButton;
class QWidget;

/// Painting that the widgets of the kit share. Main thread.
namespace host::kit {

/// A colour of the current theme. Invalid for an unknown name.
QColor Color(std::string_view name);

/// The colour that a table names for an enumerator. A value without a row has the colour of the last row.
template <size_t N>
QColor ColorIn(const std::string_view (&names)[N], int value) {
    return Color(names[size_t(value) < N ? size_t(value) : N - 1]);
}

QColor IconColor(ZIconColorStyle::type style);

/// Repaints the widget when the theme changes.
void FollowTheme(QWidget* widget);

ZWidgetState::type StateOf(const QAbstractButton& button);

/// The font with another size and weight.
QFont Sized(QFont font, int pixels, QFont::Weight weight);

/// A filled rounded rectangle, with a border if `edge` is valid.
void PaintPlate(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& edge = {});

/// The focus ring inside `rect`.
void PaintFocus(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// No text of the kit asks for more pixels.
constexpr int kMaxHintWidth = 240;

/// The width that a wrapped text prefers at most. It can be laid out in far less.
constexpr int kMaxWrappedWidth = 960;

/// The size of a text that consists of dots.
QSize DotsSize(const QFont& font);

/// The tool tip that shows `text` as it is, never as markup.
ZRHOST_API QString TipText(const QString& text);

/// Sets the whole text as the tool tip of a widget that shows only a part. `tip` is the tool tip set before; the
/// caller's own tool tip stays.
void OfferWhole(QWidget& widget, QString& tip, bool cut, const QString& text);

/// A drawing centred in `rect`, sharp on the paint device. An unknown name paints nothing.
void PaintDrawing(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color);

/// Returns whether the name is empty or known. Otherwise logs it for `who`.
bool CheckDrawing(const char* who, const QString& name);

}  // namespace host::kit
