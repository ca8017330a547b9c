#pragma once

class QWidget;

/// Presses and releases the left button at the widget's centre, through its window, as a user does. Fails the test,
/// without a press, if a user could not hit the widget: it is hidden, disabled, covered, outside of its window, or
/// blocked by a modal one. The click may destroy the widget.
void Click(QWidget* widget);
