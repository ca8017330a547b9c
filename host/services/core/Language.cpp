#include "core/Language.h"

#include <QFile>

#include "core/lang.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Language");

QString PackName(int languageId) {
    switch (languageId) {
        case core::lang::kLanguageSimplifiedChinese:
            return QStringLiteral("zh-Hans");
        case core::lang::kLanguageTraditionalChinese:
            return QStringLiteral("zh-Hant");
        case core::lang::kLanguageJapanese:
            return QStringLiteral("ja");
        case core::lang::kLanguageFrench:
            return QStringLiteral("fr");
        default:
            return QStringLiteral("en");
    }
}

}  // namespace

CLanguage::CLanguage(int languageId) {
    Q_INIT_RESOURCE(languages);
    SetLanguage(languageId);
}

std::optional<QString> CLanguage::Text(unsigned int textId) const {
    const auto found = m_texts.constFind(textId);
    return found == m_texts.constEnd() ? std::nullopt : std::make_optional(*found);
}

void CLanguage::SetLanguage(int languageId) {
    m_nLanguageId = languageId;
    m_texts.clear();
    QFile file(QStringLiteral(":/lang/%1.json").arg(PackName(languageId)));
    std::string error;
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString().toStdString();
    } else if (ReadPack(file.readAll().toStdString(), m_texts, error)) {
        return;
    }
    kLog.Error(FMT_STRING("Language pack {}: {}"), file.fileName().toStdString(), error);
}

bool CLanguage::ReadPack(const std::string& json, QHash<unsigned int, QString>& texts, std::string& error) {
    const auto pack = host::ParseJson(json, error);
    if (!pack) {
        return false;
    }
    if (!pack->isObject()) {
        error = "must be an object of text ids and texts";
        return false;
    }
    QHash<unsigned int, QString> read;
    for (const std::string& key : pack->getMemberNames()) {
        bool isNumber = false;
        const unsigned int id = QString::fromStdString(key).toUInt(&isNumber);
        if (!isNumber || !(*pack)[key].isString()) {
            error = key + ": must be a number and its text";
            return false;
        }
        read.insert(id, QString::fromStdString((*pack)[key].asString()));
    }
    texts = std::move(read);
    return true;
}
