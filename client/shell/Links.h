#pragma once

#include <QString>

class QPushButton;
class QWidget;

/// Links in the client's pages. They are opened like links of a module. Main thread.
namespace links {

/// Returns false if the URL was refused.
bool Open(const QString& url);

/// Creates a button that looks like a link. `name` is its object name.
QPushButton* NewLink(const QString& name, unsigned int textId, const QString& url, QWidget* parent);

}  // namespace links
