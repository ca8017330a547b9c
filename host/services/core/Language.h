#pragma once

#include <QHash>

#include "core/ILanguage.h"

/// The display language and its pack of texts, which is compiled in.
class CLanguage : public ILanguage {
public:
    /// A language that has no pack shows its texts in English.
    explicit CLanguage(int languageId);

    int LanguageId() const override;
    std::optional<QString> Text(unsigned int textId) const override;

    void SetLanguage(int languageId);

    /// Reads a pack: a JSON object of text ids and texts. False, with the reason, on anything else.
    static bool ReadPack(const std::string& json, QHash<unsigned int, QString>& texts, std::string& error);

private:
    int m_nLanguageId = 0;
    QHash<unsigned int, QString> m_texts;
};
