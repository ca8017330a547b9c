#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <string>

/// The display language and its texts, which are compiled in. Main thread.
class CLanguage {
public:
    /// A language without a text file shows English texts.
    explicit CLanguage(int languageId);

    int LanguageId() const { return m_nLanguageId; }
    /// Empty if the language has no text with this id.
    std::optional<QString> Text(unsigned int textId) const;

    void SetLanguage(int languageId);

    /// Reads a JSON object of text ids and texts. Returns false, with the reason, for other input.
    static bool ReadPack(const std::string& json, QHash<unsigned int, QString>& texts, std::string& error);

private:
    int m_nLanguageId = 0;
    QHash<unsigned int, QString> m_texts;
};
