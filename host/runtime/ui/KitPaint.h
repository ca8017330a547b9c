#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <string_view>

#include "ui/ZWidgetTypes.h"

class QAbstractButton;
class QWidget;

/// What the widgets of the kit paint alike. Main thread.
namespace host::kit {

/// Of the theme of the moment; invalid if the name is not known.
QColor Color(std::string_view name);

/// Has the widget painted anew when the theme changes.
void FollowTheme(QWidget* widget);

ZWidgetState::type StateOf(const QAbstractButton& button);

/// The font in another size.
QFont Sized(QFont font, int pixels, QFont::Weight weight);

/// A plate with round corners, and its edge where a colour is given for that.
void PaintPlate(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& edge = {});

/// The ring of what has the keyboard's focus, inside of `rect`.
void PaintFocus(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// A drawing in the middle of `rect`, sharp on the painter's screen. A name that is not known paints nothing.
void PaintDrawing(QPainter& painter, const QString& name, const QRect& rect, const QColor& color);

/// Whether there is a drawing of that name, or no name at all; otherwise a line in the log says so for `who`.
bool CheckDrawing(const char* who, const QString& name);

}  // namespace host::kit
