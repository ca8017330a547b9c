#include "BridgeScripts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

namespace bridge_scripts {
namespace {

QByteArray Source(const char* name) {
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QWebEngineScript Script(const char* name, const QByteArray& source, QWebEngineScript::ScriptWorldId world) {
    QWebEngineScript script;
    script.setName(QString::fromLatin1(name));
    script.setSourceCode(QString::fromUtf8(source));
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(world);
    script.setRunsOnSubFrames(false);
    return script;
}

}  // namespace

void Install(QWebEngineScriptCollection& scripts, const QStringList& origins) {
    scripts.clear();
    if (origins.isEmpty()) {
        return;
    }
    const QByteArray list = QJsonDocument(QJsonArray::fromStringList(origins)).toJson(QJsonDocument::Compact);
    const QByteArray page = Source(":/webengine/page.js").replace("@origins@", list);
    const QByteArray transport = Source(":/webengine/transport.js").replace("@origins@", list);
    scripts.insert(Script("transport", Source(":/qtwebchannel/qwebchannel.js") + '\n' + transport,
                          QWebEngineScript::ApplicationWorld));
    scripts.insert(Script("page", page, QWebEngineScript::MainWorld));
}

}  // namespace bridge_scripts
