#include "framework/JsonText.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>

namespace host {

std::optional<Json::Value> ParseJson(const std::string& text, std::string& error) {
    // The reader ignores all bytes after a zero byte.
    if (text.find('\0') != std::string::npos) {
        error = "holds a zero byte";
        return std::nullopt;
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["strictRoot"] = false;
    builder["stackLimit"] = 64;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    try {
        Json::Value value;
        if (!reader->parse(text.data(), text.data() + text.size(), &value, &error)) {
            return std::nullopt;
        }
        return value;
    } catch (const std::exception& exception) {
        // The reader throws above its depth limit.
        error = exception.what();
        return std::nullopt;
    }
}

std::string OneLine(const Json::Value& value) {
    static const Json::StreamWriterBuilder builder = [] {
        Json::StreamWriterBuilder line;
        line["indentation"] = "";
        line["commentStyle"] = "None";
        line["emitUTF8"] = true;
        return line;
    }();
    return Json::writeString(builder, value);
}

}  // namespace host
