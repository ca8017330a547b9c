#pragma once

#include <QString>

class QPushButton;
class QWidget;

/// Links in the client's own pages. They go the way that a module's go. Main thread.
namespace links {

/// False if the URL was refused.
bool Open(const QString& url);

/// A button that looks like a link; its object name is `name`. It shows the source text in the display language.
QPushButton* NewLink(const QString& name, const char* source, const QString& url, QWidget* parent);

}  // namespace links
