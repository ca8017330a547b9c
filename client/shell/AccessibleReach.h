#pragma once

class QWidget;

/// Sets whether a widget and all that is in it are out of reach for screen readers. The widget stays on the screen.
/// Main thread.
void SetOutOfReach(QWidget* widget, bool outOfReach);
