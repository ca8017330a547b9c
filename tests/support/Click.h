#pragma once

class QWidget;

/// Presses and releases the left button on the widget's middle, through its window, as a hand does. Fails the
/// test, and presses nothing, where a hand would not hit it: hidden, disabled, covered, outside of its window,
/// or held back by a modal one. The widget may be gone afterwards.
void Click(QWidget* widget);
