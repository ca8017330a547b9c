#pragma once

#include <QObject>
#include <QString>
#include <QTranslator>
#include <functional>

/// Installs the translation of the client's texts; English is the language of the sources. Main thread.
class CTranslation {
public:
    explicit CTranslation(int languageId);

    /// Replaces the installed translation. Texts that are already shown do not change.
    void SetLanguage(int languageId);

private:
    QTranslator m_translator;
};

namespace translation {

/// Returns the text in the display language. The source is marked with QT_TRANSLATE_NOOP, context "Pages".
QString PageText(const char* source);

/// Runs `show` now and at each change of the display language while `context` exists.
void OnLanguageChange(QObject* context, std::function<void()> show);

}  // namespace translation
