#include "workbench/FieldNode.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTextCodec>
#include <algorithm>

#include "core/time_date.h"
#include "framework/JsonText.h"
#include "workbench/ControlClient.h"
#include "workbench/diagnosis/LogTable.h"

namespace {

std::optional<QString> Utf8(const std::string& bytes) {
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(), int(bytes.size()), &state);
    const bool isText = state.invalidChars == 0 && state.remainingChars == 0 &&
                        std::none_of(text.begin(), text.end(), [](QChar character) {
                            return character.category() == QChar::Other_Control && !"\n\t\r"_q.contains(character);
                        });
    return isText ? std::make_optional(text) : std::nullopt;
}

QString Hex(const std::string& bytes) {
    constexpr size_t kShown = 4096;
    const QByteArray shown(bytes.data(), int(std::min(bytes.size(), kShown)));
    return QString::fromLatin1(shown.toHex(' ')) + (bytes.size() > kShown ? " …"_q : QString());
}

/// Members have their names, array items their index in brackets.
FieldNode JsonField(const QString& name, const Json::Value& json) {
    FieldNode field{name};
    for (auto item = json.begin(); item != json.end(); ++item) {
        field.children.push_back(
            JsonField(json.isArray() ? "[%1]"_q.arg(item.index()) : QString::fromStdString(item.name()), *item));
    }
    if (field.children.empty()) {
        field.value = json.isNull() ? "null"_q : json::Text(json);
    }
    return field;
}

}  // namespace

FieldNode RawField(const QString& name, const std::string& bytes) {
    return {name, Hex(bytes), bytes};
}

FieldNode BytesField(const QString& name, const std::string& bytes) {
    const auto text = Utf8(bytes);
    return text ? FieldNode{name, *text} : RawField(name, bytes);
}

FieldNode BodyField(const QString& name, const std::string& body, size_t wholeBytes) {
    constexpr size_t kTextShown = 4096;
    if (wholeBytes == 0) {
        return {name, "empty"_q};
    }
    const QString size = body.size() == wholeBytes ? "%1 bytes"_q.arg(wholeBytes)
                                                   : "the first %1 of %2 bytes"_q.arg(body.size()).arg(wholeBytes);
    std::string error;
    const auto json = host::ParseJson(body, error);
    if (json && (json->isObject() || json->isArray())) {
        return {name, size, {}, JsonField(name, *json).children};
    }
    if (const auto text = Utf8(body)) {
        return {name, size, {}, {{"Text"_q, *text}}};
    }
    // The hex contains the same bytes and is redacted in every encoding, so the text is withheld from exports.
    static const QRegularExpression unprintable("[^ -~]"_q);
    QString text = QString::fromLatin1(body.data(), int(std::min(body.size(), kTextShown)));
    text.replace(unprintable, "."_q);
    return {name, size, {}, {{"Text"_q, text, {}, {}, true}, RawField("Hex"_q, body)}};
}

namespace readable {

QString Preview(const std::string& bytes) {
    constexpr int kPreview = 80;
    const std::string start = bytes.substr(0, 4 * kPreview);
    return Utf8(start).value_or(Hex(start)).left(kPreview).simplified();
}

std::optional<QString> FromLatin1(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    const bool areBytes = QString::fromLatin1(bytes) == text && bytes != text.toUtf8();
    return areBytes ? Utf8(bytes.toStdString()) : std::nullopt;
}

QString Zone() {
    return QDateTime::currentDateTime().timeZoneAbbreviation();
}

QString LocalTime(qint64 timeMs) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(timeMs);
    return time.toString(time.date() == QDate::currentDate() ? "HH:mm:ss.zzz"_q : "yyyy-MM-dd HH:mm:ss.zzz"_q);
}

QString ServerOffset() {
    constexpr qint64 kMinOffsetMs = 2'000;
    const qint64 offset = core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
    return qAbs(offset) < kMinOffsetMs
               ? QString()
               : (offset < 0 ? "-"_q : "+"_q) + log_table::Duration((qAbs(offset) + 500) / 1000);
}

}  // namespace readable
