#pragma once

#include <QSize>
#include <QString>

class QMainWindow;

/// Place, size and docks of the main window, its page and its navigation, saved in the store of the installation for
/// the next start. Main thread.
namespace window_state {

struct State {
    QString page;
    bool collapsed = false;
};

/// Gives the window the saved place, size and docks. Without saved ones it gets `firstSize` in the middle of the
/// screen. Either way the window is moved and shrunk into the available area of its screen. Damaged saved values are
/// logged and ignored.
/// Returns the saved page and navigation. The page is empty if none was saved.
State Restore(QMainWindow& window, const QSize& firstSize);

/// Saves the values for the next start.
void Save(const QMainWindow& window, const State& state);

}  // namespace window_state
