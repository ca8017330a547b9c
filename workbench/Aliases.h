#pragma once

#include <QString>
#include <map>
#include <string>
#include <vector>

/// What must not leave the house in an export, and the stable names that stand for it. Main thread.
class CAliases {
public:
    /// `kind` is the alias's first word, as "user" of "user-1". 0 and empty values are nobody's.
    void LearnNumber(const QString& kind, quint64 value);
    void LearnText(const QString& kind, const QString& value);

    /// The text without what was learnt. A number is replaced where no other digit touches it, a text
    /// wherever it stands, whatever the case, escaped for JSON or a URL too.
    QString Redacted(const QString& text) const;

    /// Pairs of hex digits, with the alias for bytes that say what was learnt: a text in UTF-8 or UTF-16, hex
    /// digits as what they write, a number in decimal digits, as a varint, or in four or eight bytes of either
    /// order. What is longer than `limit` bytes ends in an ellipsis.
    QString RedactedHex(const std::string& bytes, size_t limit = 4096) const;

private:
    enum class EnMatch { Number, Text, Exact };

    struct Alias {
        QString value;
        QString alias;
        bool isNumber;
    };

    struct Pattern {
        std::string bytes;
        QString alias;
        EnMatch match;

        bool StandsAt(const std::string& whole, size_t at) const;
    };

    /// The alias, or nothing if the value is known.
    QString NewAlias(const QString& kind, const QString& value);
    void AddText(const QString& value, const QString& alias, bool isNumber);
    void AddPattern(const std::string& bytes, const QString& alias, EnMatch match);
    const Pattern* PatternAt(const std::string& bytes, size_t at) const;

    std::vector<Alias> m_aliases;                     // longest first: one may hold another
    std::map<char, std::vector<Pattern>> m_patterns;  // by their first byte; longest first
    std::map<QString, int> m_counts;
};
