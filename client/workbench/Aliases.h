#pragma once

#include <QString>
#include <map>
#include <vector>

/// What must not leave the house in an export, and the stable names that stand for it. Main thread.
class CAliases {
public:
    /// `kind` is the alias's first word, as "user" of "user-1". 0 and empty values are nobody's.
    void LearnNumber(const QString& kind, quint64 value);
    void LearnText(const QString& kind, const QString& value);

    /// The text without what was learnt. A number is replaced where no other digit touches it, a text
    /// wherever it stands, whatever the case.
    QString Redacted(const QString& text) const;

private:
    void Learn(const QString& kind, const QString& value, bool isNumber);

    struct Alias {
        QString value;
        QString alias;
        bool isNumber;
    };
    std::vector<Alias> m_aliases;  // longest first: one may hold another
    std::map<QString, int> m_counts;
};
