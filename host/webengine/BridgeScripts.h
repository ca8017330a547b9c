#pragma once

#include <QStringList>

class QWebEngineScriptCollection;

namespace bridge_scripts {

/// Replaces the scripts of a page: later documents of these origins get the bridge object, others nothing.
void Install(QWebEngineScriptCollection& scripts, const QStringList& origins);

}  // namespace bridge_scripts
