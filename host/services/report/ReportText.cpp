#include "report/ReportText.h"

#include <fmt/format.h>
#include <json/writer.h>

#include <QTextCodec>
#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

// Below what readers of ours follow, the event around it counted.
constexpr int kMaxDepth = 60;

constexpr int kUtf8Mib = 106;

bool IsUtf8(const std::string& text) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return true;
    }
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QTextCodec::codecForMib(kUtf8Mib)->toUnicode(text.data(), int(text.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
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
        if ((value.isObject() && !IsUtf8(element.name())) || !IsRepresentable(*element, depth + 1)) {
            return false;
        }
    }
    return true;
}

std::unique_ptr<Json::StreamWriter> OneLineWriter() {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["commentStyle"] = "None";
    return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
}

}  // namespace

CReportText::CReportText() : m_pWriter(OneLineWriter()) {}

CReportText::~CReportText() = default;

std::string CReportText::OneLine(const Json::Value& value) {
    std::ostringstream text;
    m_pWriter->write(value, &text);
    return text.str();
}

std::optional<std::string> CReportText::Of(const ReportedEventData& event) {
    if (!IsRepresentable(event.params)) {
        return std::nullopt;
    }
    std::string text;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        text = fmt::format(FMT_STRING(R"({{"id":"{}","name":{},"code":{},"params":{},"broker":{},"user":{},)"
                                      R"("device":{},"atMs":{})"),
                           event.id, OneLine(event.name), event.code, OneLine(event.params), event.broker, event.user,
                           OneLine(event.device), event.atMs);
    }
    if (event.durationMs) {
        text += fmt::format(FMT_STRING(R"(,"durationMs":{})"), *event.durationMs);
    }
    return text + '}';
}
