#pragma once

#include <QString>

#include "modules/ZRGrowthTypes.h"

class QPushButton;
class QWidget;

/// Links in the client's pages. They are opened like links of a module. Main thread.
namespace links {

/// Returns false if the URL was refused.
bool Open(const QString& url);

/// A button that looks like a link; its object name is `name`. It shows the source text in the display language.
QPushButton* NewLink(const QString& name, const char* source, const QString& url, QWidget* parent);

/// The same for the link of the right's main button.
QPushButton* NewLink(const QString& name, const char* source, EnPremiumAccess right, QWidget* parent);

}  // namespace links
