#include "report/ReportText.h"

#include <json/writer.h>

#include <QTextCodec>
#include <algorithm>
#include <cmath>

namespace {

// Below what readers of ours follow, the event around it counted.
constexpr int kMaxDepth = 60;

constexpr int kUtf8Mib = 106;

/// The text with U+FFFD in place of what is not UTF-8; nothing where all of it is.
std::optional<std::string> Repaired(const std::string& text) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return std::nullopt;
    }
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QString read = QTextCodec::codecForMib(kUtf8Mib)->toUnicode(text.data(), int(text.size()), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0) {
        return std::nullopt;
    }
    if (state.remainingChars != 0) {
        read += QChar(QChar::ReplacementCharacter);
    }
    return read.toStdString();
}

bool IsRepresentable(const Json::Value& value, int depth = 0) {
    if (depth > kMaxDepth) {
        return false;
    }
    if (value.type() == Json::realValue) {
        return std::isfinite(value.asDouble());
    }
    if (!value.isArray() && !value.isObject()) {
        return true;
    }
    for (auto element = value.begin(); element != value.end(); ++element) {
        // Two keys that are no text would become one key, and no reader takes that.
        if ((value.isObject() && Repaired(element.name())) || !IsRepresentable(*element, depth + 1)) {
            return false;
        }
    }
    return true;
}

// The writer copies the bytes of strings without a check.
void RepairStrings(Json::Value& value) {
    if (value.isString()) {
        if (const auto repaired = Repaired(value.asString())) {
            value = *repaired;
        }
    } else if (value.isArray() || value.isObject()) {
        std::for_each(value.begin(), value.end(), RepairStrings);
    }
}

Json::StreamWriterBuilder OneLineOfUtf8() {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["commentStyle"] = "None";
    builder["emitUTF8"] = true;
    return builder;
}

}  // namespace

std::optional<std::string> ReportText(const ReportedEventData& event) {
    if (!IsRepresentable(event.params)) {
        return std::nullopt;
    }
    Json::Value json;
    json["id"] = event.id;
    json["name"] = event.name;
    json["code"] = event.code;
    json["params"] = event.params;
    json["broker"] = event.broker;
    json["user"] = Json::UInt64(event.user);
    json["device"] = event.device;
    json["atMs"] = Json::Int64(event.atMs);
    if (event.durationMs) {
        json["durationMs"] = Json::Int64(*event.durationMs);
    }
    RepairStrings(json);
    static const Json::StreamWriterBuilder builder = OneLineOfUtf8();
    return Json::writeString(builder, json);
}
