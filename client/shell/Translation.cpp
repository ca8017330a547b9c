#include "Translation.h"

#include <QCoreApplication>

#include "core/lang.h"
#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "framework/HostLog.h"

// The macro declares a function of the global namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(translations);
}

namespace {

constexpr host::CHostLog kLog("Translation");

// Returns an empty name for English, which is shown for an unknown number too.
QString FileName(int languageId) {
    switch (languageId) {
        case core::lang::kLanguageSimplifiedChinese:
            return QStringLiteral(":/translations/zrclient_zh_Hans.qm");
        case core::lang::kLanguageTraditionalChinese:
            return QStringLiteral(":/translations/zrclient_zh_Hant.qm");
        case core::lang::kLanguageJapanese:
            return QStringLiteral(":/translations/zrclient_ja.qm");
        case core::lang::kLanguageFrench:
            return QStringLiteral(":/translations/zrclient_fr.qm");
        default:
            return {};
    }
}

}  // namespace

CTranslation::CTranslation(int languageId) {
    SetLanguage(languageId);
}

void CTranslation::SetLanguage(int languageId) {
    QCoreApplication::removeTranslator(&m_translator);
    LoadResources();
    const QString name = FileName(languageId);
    if (name.isEmpty()) {
        return;
    }
    if (!m_translator.load(name)) {
        kLog.Error(FMT_STRING("Translation {} can't be loaded"), name.toStdString());
        return;
    }
    QCoreApplication::installTranslator(&m_translator);
}

namespace translation {

QString PageText(const char* source) {
    return QCoreApplication::translate("Pages", source);
}

void OnLanguageChange(QObject* context, std::function<void()> show) {
    show();
    core::__CMessageDispatch("[Client]")
        .Bind(
            core::kMsgLanguageChanged,
            [show = std::move(show)](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                show();
            },
            context);
}

}  // namespace translation
