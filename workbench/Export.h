#pragma once

#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <functional>
#include <map>

#include "workbench/EventModel.h"

/// Replaces values that an export must not contain with stable aliases. A copy can be used by another thread.
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
    /// 4096 bytes end in an ellipsis.
    QString RedactedHex(const std::string& bytes) const;

private:
    /// Aliases by the length and the expression of each form of a value, longest first, because one can contain
    /// another.
    struct Forms {
        std::map<std::pair<int, QString>, QString, std::greater<>> aliases;
        mutable QRegularExpression expression = {};  // one group for each form; empty until it is needed

        void Add(const QString& form, const char* pattern, const QString& alias);
        /// Splits the text into aliases for the forms and the rest, as returned by `show`. A form is complete if it
        /// begins before `end`. An ellipsis replaces what follows.
        QStringList Split(const QString& text, int end, QString (*show)(const QString& part)) const;
    };

    /// Returns a new alias; empty if the value is empty or known.
    QString NewAlias(const QString& kind, const QString& value);
    void AddBytes(const QByteArray& bytes, const QString& alias, const char* pattern = "%1");
    void AddText(const QString& text, const char* pattern, const char* bytesPattern, const QString& alias);

    Forms m_inTexts;
    Forms m_inBytes;                     // read as Latin-1
    QMap<QString, QStringList> m_known;  // values by kind
};

/// Files with the recorded events of the workbench, which can be shared and opened again.
namespace workbench_export {

/// Everything that a file contains.
struct Recording {
    struct List {
        EventFormatPtr format;
        std::vector<CEventModel::RowPtr> rows;
    };
    qint64 timeMs = 0;
    QJsonObject state;
    std::vector<List> lists;
};

/// Writes the whole file or nothing, and creates its folder. Texts and undecoded bytes are redacted. Returns the reason
/// of a failure, or an empty text. Callable from any thread.
QString Write(const QString& path, const Recording& recording, const CRedactor& aliases);

/// Reads a file for the lists of `recording`, which have no rows yet. Returns the reason of a failure, or an empty
/// text. Callable from any thread.
QString Read(const QString& path, Recording& recording);

}  // namespace workbench_export
