#include "workbench/JsonFields.h"

#include "framework/JsonText.h"
#include "workbench/ReadableBytes.h"

namespace {

constexpr size_t kTextShown = 4096;

FieldNode FieldOf(const QString& name, const Json::Value& json) {
    if ((json.isObject() || json.isArray()) && !json.empty()) {
        return {name, QString(), {}, JsonFields(json)};
    }
    if (json.isObject() || json.isArray()) {
        return {name, json.isArray() ? QStringLiteral("[]") : QStringLiteral("{}"), {}, {}};
    }
    return {name, json.isNull() ? QStringLiteral("null") : QString::fromStdString(json.asString()), {}, {}};
}

/// The start of the bytes, with a dot for each non-printable one.
QString TextOf(const std::string& bytes) {
    const std::string start = bytes.substr(0, kTextShown);
    const auto utf8 = readable::Utf8(start);
    if (utf8) {
        return *utf8;
    }
    QString text;
    for (const char byte : start) {
        text += byte >= ' ' && byte <= '~' ? QLatin1Char(byte) : QLatin1Char('.');
    }
    return text;
}

}  // namespace

std::vector<FieldNode> JsonFields(const Json::Value& json) {
    std::vector<FieldNode> fields;
    if (json.isObject()) {
        for (const std::string& name : json.getMemberNames()) {
            fields.push_back(FieldOf(QString::fromStdString(name), json[name]));
        }
    } else if (json.isArray()) {
        for (Json::ArrayIndex place = 0; place < json.size(); ++place) {
            fields.push_back(FieldOf(QStringLiteral("[%1]").arg(place), json[place]));
        }
    } else {
        fields.push_back(FieldOf(QStringLiteral("Value"), json));
    }
    return fields;
}

FieldNode BodyField(const QString& name, const std::string& body, size_t wholeBytes) {
    if (wholeBytes == 0) {
        return {name, QStringLiteral("empty"), {}, {}};
    }
    const QString size = body.size() == wholeBytes
                             ? QStringLiteral("%1 bytes").arg(wholeBytes)
                             : QStringLiteral("the first %1 of %2 bytes").arg(body.size()).arg(wholeBytes);
    std::string error;
    if (const auto json = host::ParseJson(body, error)) {
        return {name, size, {}, JsonFields(*json)};
    }
    // The hex contains the same bytes and is redacted in every encoding, so the text is withheld from exports.
    const FieldNode text{QStringLiteral("Text"), TextOf(body), {}, {}, true};
    return {name, size, {}, {text, RawField(QStringLiteral("Hex"), body)}};
}
