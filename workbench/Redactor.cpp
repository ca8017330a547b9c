#include "workbench/Redactor.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QUrl>
#include <QtEndian>
#include <algorithm>

#include "workbench/ReadableBytes.h"

namespace {

// Shorter binary forms are a few common bytes and would match everywhere.
constexpr quint64 kSmallestInBytes = 0x80;

bool IsDigit(const QString& text, int at) {
    return at >= 0 && at < text.size() && text[at] >= QLatin1Char('0') && text[at] <= QLatin1Char('9');
}

/// Returns true if the character before `at` ends an escape such as "%20" or "\x0a". Such a digit is not part of a
/// number.
bool IsAfterEscape(const QString& text, int at) {
    static const QRegularExpression escape(QStringLiteral("((%|\\\\x)[0-9a-f]{2}|\\\\u[0-9a-f]{4})$"),
                                           QRegularExpression::CaseInsensitiveOption);
    constexpr int kLongestEscape = 6;
    return escape.match(text.left(at).right(kLongestEscape)).hasMatch();
}

bool IsDigit(const std::string& bytes, size_t at) {
    return at < bytes.size() && bytes[at] >= '0' && bytes[at] <= '9';
}

char Lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? char(byte - 'A' + 'a') : byte;
}

std::string Encoded(const QString& text, const char* codec) {
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state).toStdString();
}

QString JsonEscaped(const QString& text) {
    QString escaped;
    for (const QChar character : text) {
        if (character.unicode() < 0x80) {
            escaped += character;
        } else {
            escaped += QStringLiteral("\\u%1").arg(int(character.unicode()), 4, 16, QLatin1Char('0'));
        }
    }
    return escaped;
}

std::string Varint(quint64 value) {
    std::string bytes;
    for (; value >= 0x80; value >>= 7) {
        bytes += char(value | 0x80);
    }
    return bytes += char(value);
}

template <class Number>
std::string Stored(Number value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof(value));
}

template <class Found>
void SortByLength(std::vector<Found>& all, size_t (*length)(const Found&)) {
    std::stable_sort(all.begin(), all.end(),
                     [length](const Found& left, const Found& right) { return length(left) > length(right); });
}

}  // namespace

void CRedactor::AddSecretNumber(const QString& kind, quint64 value) {
    const QString alias = value == 0 ? QString() : NewAlias(kind, QString::number(value));
    if (alias.isEmpty()) {
        return;
    }
    AddText(QString::number(value), alias, true);
    AddPattern(Stored(qToLittleEndian(value)), alias, EnMatch::Exact);
    AddPattern(Stored(qToBigEndian(value)), alias, EnMatch::Exact);
    if (value >= kSmallestInBytes) {
        AddPattern(Varint(value), alias, EnMatch::Exact);
        if (value <= 0xFFFFFFFF) {
            AddPattern(Stored(qToLittleEndian(quint32(value))), alias, EnMatch::Exact);
            AddPattern(Stored(qToBigEndian(quint32(value))), alias, EnMatch::Exact);
        }
    }
}

void CRedactor::AddSecretText(const QString& kind, const QString& value) {
    const QString alias = value.isEmpty() ? QString() : NewAlias(kind, value);
    if (alias.isEmpty()) {
        return;
    }
    const QString percents = QString::fromLatin1(QUrl::toPercentEncoding(value));
    for (const QString& form : {value, JsonEscaped(value), QString::fromLatin1(value.toUtf8()), percents,
                                QString(percents).replace(QLatin1String("%20"), QLatin1String("+"))}) {
        AddText(form, alias, false);
    }
    static const QRegularExpression hexBytes(QStringLiteral("^([0-9a-fA-F]{2}){4,}$"));
    if (hexBytes.match(value).hasMatch()) {
        AddPattern(QByteArray::fromHex(value.toLatin1()).toStdString(), alias, EnMatch::Exact);
    }
}

QString CRedactor::NewAlias(const QString& kind, const QString& value) {
    const bool known =
        std::any_of(m_aliases.begin(), m_aliases.end(), [&value](const Alias& alias) { return alias.value == value; });
    return known ? QString() : QStringLiteral("%1-%2").arg(kind).arg(++m_counts[kind]);
}

void CRedactor::AddText(const QString& value, const QString& alias, bool isNumber) {
    if (std::any_of(m_aliases.begin(), m_aliases.end(), [&value](const Alias& one) { return one.value == value; })) {
        return;
    }
    m_aliases.push_back({value, alias, isNumber});
    SortByLength<Alias>(m_aliases, [](const Alias& one) { return size_t(one.value.size()); });
    // ASCII bytes are compared without case. Other letters are searched in both cases.
    for (const QString& form : {value, value.toLower(), value.toUpper()}) {
        AddPattern(form.toStdString(), alias, isNumber ? EnMatch::Number : EnMatch::Text);
        AddPattern(Encoded(form, "UTF-16LE"), alias, EnMatch::Text);
        AddPattern(Encoded(form, "UTF-16BE"), alias, EnMatch::Text);
    }
}

void CRedactor::AddPattern(const std::string& bytes, const QString& alias, EnMatch match) {
    std::vector<Pattern>& patterns = m_patterns[match == EnMatch::Text ? Lower(bytes[0]) : bytes[0]];
    const bool known = std::any_of(patterns.begin(), patterns.end(),
                                   [&](const Pattern& one) { return one.bytes == bytes && one.match == match; });
    if (!known) {
        patterns.push_back({bytes, alias, match});
        SortByLength<Pattern>(patterns, [](const Pattern& one) { return one.bytes.size(); });
    }
}

QString CRedactor::Redacted(const QString& text) const {
    QString redacted;
    for (int at = 0; at < text.size();) {
        const auto found = std::find_if(m_aliases.begin(), m_aliases.end(), [&text, at](const Alias& alias) {
            const bool here = text.midRef(at, alias.value.size()).compare(alias.value, Qt::CaseInsensitive) == 0;
            return here && !(alias.isNumber && ((IsDigit(text, at - 1) && !IsAfterEscape(text, at)) ||
                                                IsDigit(text, at + alias.value.size())));
        });
        if (found == m_aliases.end()) {
            redacted += text[at++];
        } else {
            redacted += found->alias;
            at += found->value.size();
        }
    }
    return redacted;
}

bool CRedactor::Pattern::StandsAt(const std::string& whole, size_t at) const {
    if (bytes.size() > whole.size() - at) {
        return false;
    }
    const bool isText = match == EnMatch::Text;
    const bool same = std::equal(
        bytes.begin(), bytes.end(), whole.begin() + std::ptrdiff_t(at),
        [isText](char wanted, char found) { return wanted == found || (isText && Lower(wanted) == Lower(found)); });
    return same &&
           !(match == EnMatch::Number && ((at > 0 && IsDigit(whole, at - 1)) || IsDigit(whole, at + bytes.size())));
}

const CRedactor::Pattern* CRedactor::PatternAt(const std::string& bytes, size_t at) const {
    const Pattern* longest = nullptr;
    for (const char first : {bytes[at], Lower(bytes[at])}) {
        const auto patterns = m_patterns.find(first);
        if (patterns == m_patterns.end()) {
            continue;
        }
        const auto found = std::find_if(patterns->second.begin(), patterns->second.end(),
                                        [&](const Pattern& pattern) { return pattern.StandsAt(bytes, at); });
        if (found != patterns->second.end() && (!longest || found->bytes.size() > longest->bytes.size())) {
            longest = &*found;
        }
    }
    return longest;
}

QString CRedactor::RedactedHex(const std::string& bytes, size_t limit) const {
    QStringList parts;
    size_t at = 0;
    // A secret that begins before the limit is replaced completely.
    while (at < std::min(bytes.size(), limit)) {
        if (const Pattern* pattern = PatternAt(bytes, at)) {
            parts << pattern->alias;
            at += pattern->bytes.size();
        } else {
            parts << readable::Hex(bytes.substr(at++, 1));
        }
    }
    if (at < bytes.size()) {
        parts << QStringLiteral("…");
    }
    return parts.join(QLatin1Char(' '));
}
