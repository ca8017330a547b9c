#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <string_view>

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

/// Repaints the widget when the theme changes.
void FollowTheme(QWidget* widget);

ZWidgetState::type StateOf(const QAbstractButton& button);

/// The font with another size and weight.
QFont Sized(QFont font, int pixels, QFont::Weight weight);

/// A filled rounded rectangle, with a border if `edge` is valid.
void PaintPlate(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& edge = {});

/// The focus ring inside `rect`.
void PaintFocus(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// A drawing centred in `rect`, sharp on the paint device. An unknown name paints nothing.
void PaintDrawing(QPainter& painter, const QString& name, const QRect& rect, const QColor& color);

/// Returns whether the name is empty or known. Otherwise logs it for `who`.
bool CheckDrawing(const char* who, const QString& name);

}  // namespace host::kit
