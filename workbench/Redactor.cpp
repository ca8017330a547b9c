// The redaction of exports.
#include <google/protobuf/io/coded_stream.h>
#include <json/writer.h>

#include <QTextCodec>
#include <QUrl>
#include <QtEndian>
#include <algorithm>

#include "workbench/Export.h"

namespace {

// Shorter binary forms are a few common bytes and would match everywhere.
constexpr quint64 kSmallestInBytes = 0x80;

// Patterns have the escaped form in place of %1.
constexpr const char* kAnyCase = "(?i:%1)";
constexpr const char* kNumber = "(?<![0-9])%1(?![0-9])";
// A digit that ends an escape, such as "%20" or "\x0a", is not part of a number.
constexpr const char* kNumberInText =
    R"((?:(?<![0-9])|(?i:(?<=%[0-9a-f]{2})|(?<=\\x[0-9a-f]{2})|(?<=\\u[0-9a-f]{4})))%1(?![0-9]))";

QString JsonEscaped(const QString& text) {
    const std::string quoted = Json::valueToQuotedString(text.toUtf8().constData());
    return QString::fromStdString(quoted.substr(1, quoted.size() - 2));
}

QByteArray Varint(quint64 value) {
    uint8_t bytes[10];
    const uint8_t* end = google::protobuf::io::CodedOutputStream::WriteVarint64ToArray(value, bytes);
    return QByteArray(reinterpret_cast<const char*>(bytes), int(end - bytes));
}

}  // namespace

void CRedactor::Forms::Add(const QString& form, const char* pattern, const QString& alias) {
    QString escaped;
    const QVector<uint> characters = form.toUcs4();
    for (const uint character : characters) {
        escaped += "\\x{%1}"_q.arg(character, 0, 16);
    }
    aliases.try_emplace({form.size(), QString::fromLatin1(pattern).replace("%1"_q, escaped)}, alias);
    expression = QRegularExpression();
}

QStringList CRedactor::Forms::Split(const QString& text, int end, QString (*show)(const QString& part)) const {
    if (expression.pattern().isEmpty()) {
        QString any = "(?!)"_q;
        for (const auto& [form, alias] : aliases) {
            any += "|("_q + form.second + QLatin1Char(')');
        }
        expression.setPattern(any);
    }
    QStringList parts;
    int done = 0;
    const auto addRest = [&](int next) {
        if (done < next) {
            parts << show(text.mid(done, next - done));
            done = next;
        }
    };
    for (auto matches = expression.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() < end) {
            addRest(match.capturedStart());
            parts << std::next(aliases.begin(), match.lastCapturedIndex() - 1)->second;
            done = match.capturedEnd();
        }
    }
    addRest(end);
    return done < text.size() ? parts << "…"_q : parts;
}

void CRedactor::AddSecretNumber(const QString& kind, quint64 value) {
    const QString alias = NewAlias(kind, value == 0 ? QString() : QString::number(value));
    if (alias.isEmpty()) {
        return;
    }
    AddText(QString::number(value), kNumberInText, kNumber, alias);
    const quint64 little = qToLittleEndian(value);
    const QByteArray bytes(reinterpret_cast<const char*>(&little), sizeof(little));
    QByteArray reversed = bytes;
    std::reverse(reversed.begin(), reversed.end());
    AddBytes(bytes, alias);
    AddBytes(reversed, alias);
    if (value >= kSmallestInBytes) {
        AddBytes(Varint(value), alias);
    }
    if (value >= kSmallestInBytes && value <= 0xFFFFFFFF) {
        AddBytes(bytes.left(4), alias);
        AddBytes(reversed.right(4), alias);
    }
}

void CRedactor::AddSecretText(const QString& kind, const QString& value) {
    const QString alias = NewAlias(kind, value);
    if (alias.isEmpty()) {
        return;
    }
    const QString percents = QString::fromLatin1(QUrl::toPercentEncoding(value));
    for (const QString& form : {value, JsonEscaped(value), QString::fromLatin1(value.toUtf8()), percents,
                                QString(percents).replace("%20"_q, "+"_q)}) {
        AddText(form, kAnyCase, kAnyCase, alias);
    }
    static const QRegularExpression hexBytes("^([0-9a-fA-F]{2}){4,}$"_q);
    if (hexBytes.match(value).hasMatch()) {
        AddBytes(QByteArray::fromHex(value.toLatin1()), alias);
    }
}

QString CRedactor::NewAlias(const QString& kind, const QString& value) {
    QStringList& known = m_known[kind];
    if (value.isEmpty() || known.contains(value)) {
        return QString();
    }
    known << value;
    return "%1-%2"_q.arg(kind).arg(known.size());
}

void CRedactor::AddText(const QString& text, const char* pattern, const char* bytesPattern, const QString& alias) {
    m_inTexts.Add(text, pattern, alias);
    // Bytes above ASCII have no case. They are searched in both.
    for (const QString& form : {text, text.toLower(), text.toUpper()}) {
        AddBytes(form.toUtf8(), alias, bytesPattern);
        for (const char* codec : {"UTF-16LE", "UTF-16BE"}) {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            const QByteArray bytes =
                QTextCodec::codecForName(codec)->fromUnicode(form.constData(), form.size(), &state);
            AddBytes(bytes, alias, kAnyCase);
        }
    }
}

void CRedactor::AddBytes(const QByteArray& bytes, const QString& alias, const char* pattern) {
    m_inBytes.Add(QString::fromLatin1(bytes.data(), bytes.size()), pattern, alias);
}

QString CRedactor::Redacted(const QString& text) const {
    const QString valid = QString::fromUtf8(text.toUtf8());  // an expression matches nothing in invalid UTF-16
    return m_inTexts.Split(valid, valid.size(), [](const QString& part) { return part; }).join(QString());
}

QString CRedactor::RedactedHex(const std::string& bytes) const {
    constexpr int kShown = 4096;
    const QString text = QString::fromLatin1(bytes.data(), int(bytes.size()));
    const auto hex = [](const QString& part) { return QString::fromLatin1(part.toLatin1().toHex(' ')); };
    return m_inBytes.Split(text, std::min(text.size(), kShown), hex).join(QLatin1Char(' '));
}
