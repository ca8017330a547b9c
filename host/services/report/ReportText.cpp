#include "report/ReportText.h"

#include <QTextCodec>
#include <algorithm>
#include <cmath>

#include "framework/JsonText.h"

namespace {

// The limit of host::ParseJson, less the levels of the event and the batch.
constexpr int kMaxDepth = 60;

constexpr int kUtf8Mib = 106;

/// Returns the text with U+FFFD in place of invalid UTF-8; nothing if the text is valid.
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
        // Two invalid keys could become equal, and readers refuse duplicate keys.
        if ((value.isObject() && Repaired(element.name())) || !IsRepresentable(*element, depth + 1)) {
            return false;
        }
    }
    return true;
}

/// Returns the beginning of a text above the limit, and the number of other bytes. Empty for other texts.
std::optional<std::string> Shortened(const std::string& text) {
    constexpr size_t kMaxBytes = 16 << 10;
    if (text.size() <= kMaxBytes) {
        return std::nullopt;
    }
    size_t kept = kMaxBytes;
    while (kept > kMaxBytes - 4 && (text[kept] & 0xC0) == 0x80) {
        --kept;
    }
    return text.substr(0, kept) + "... (" + std::to_string(text.size() - kept) + " bytes left out)";
}

// The writer copies the bytes of strings without a check.
void RepairStrings(Json::Value& value) {
    if (value.isString()) {
        if (const auto shortened = Shortened(value.asString())) {
            value = *shortened;
        }
        if (const auto repaired = Repaired(value.asString())) {
            value = *repaired;
        }
    } else if (value.isArray() || value.isObject()) {
        std::for_each(value.begin(), value.end(), RepairStrings);
    }
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
    return host::OneLine(json);
}
