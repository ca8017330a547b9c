#pragma once

#include <QColor>
#include <QFont>

class QAbstractButton;
class QWidget;

/// Style-sheet rules for the object name of a widget. A rule for a class alone does not change the kit. Main thread.
namespace host::kit {

/// The properties that such rules set.
struct SheetRule {
    bool size = false;
    bool weight = false;
    bool color = false;
    bool background = false;
    bool border = false;
};

/// The rules of the application, the widget and its parents.
SheetRule RuleOf(const QWidget& widget);

/// The widget's font, with size and weight of the rule or else with these.
QFont FontOf(const QWidget& widget, int pixels, QFont::Weight weight);

/// The rule's text colour, or else `color`; the colour of disabled text for a disabled widget.
QColor TextColorOf(const QWidget& widget, const QColor& color);

/// The rule's text colour in the current state, or else `color`.
QColor TextColorOf(const QAbstractButton& button, const QColor& color);

/// Paints background and border of the rule in the current state.
void PaintRule(QPainter& painter, const QAbstractButton& button);

}  // namespace host::kit
