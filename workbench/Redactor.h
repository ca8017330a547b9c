#pragma once

#include <QString>
#include <map>
#include <string>
#include <vector>

/// Replaces values that an export must not contain with stable aliases. Main thread.
class CRedactor {
public:
    /// `kind` is the alias's first word, such as "user" in "user-1". 0 and empty values are ignored.
    void AddSecretNumber(const QString& kind, quint64 value);
    void AddSecretText(const QString& kind, const QString& value);

    /// Returns the text with aliases for the learnt values. A number is replaced where no digit is adjacent. A text is
    /// replaced everywhere, ignoring case, also if it is escaped for JSON or a URL.
    QString Redacted(const QString& text) const;

    /// Returns pairs of hex digits with aliases for the learnt values. Texts are found in UTF-8 and UTF-16, hex texts
    /// as bytes too. Numbers are found as decimal digits, varints, and four or eight bytes of either order. More than
    /// `limit` bytes end in an ellipsis.
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

    /// Returns a new alias; empty if the value is known.
    QString NewAlias(const QString& kind, const QString& value);
    void AddText(const QString& value, const QString& alias, bool isNumber);
    void AddPattern(const std::string& bytes, const QString& alias, EnMatch match);
    const Pattern* PatternAt(const std::string& bytes, size_t at) const;

    std::vector<Alias> m_aliases;                     // longest first, because one can contain another
    std::map<char, std::vector<Pattern>> m_patterns;  // by first byte; longest first
    std::map<QString, int> m_counts;
};
