#include "framework/JsonText.h"

#include <json/reader.h>
#include <json/writer.h>

#include <algorithm>
#include <memory>

namespace host {
namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Returns whether the text is a number of RFC 8259: -?(0|[1-9][0-9]*)(.[0-9]+)?([eE][+-]?[0-9]+)?
bool IsNumber(const char* at, const char* end) {
    const auto take = [&](auto matches) { return at != end && matches(*at) && (++at, true); };
    const auto takeDigits = [&] {
        const char* first = at;
        at = std::find_if_not(at, end, IsDigit);
        return at != first;
    };
    take([](char c) { return c == '-'; });
    if (!take([](char c) { return c == '0'; }) && !takeDigits()) {
        return false;
    }
    if (take([](char c) { return c == '.'; }) && !takeDigits()) {
        return false;
    }
    if (take([](char c) { return c == 'e' || c == 'E'; })) {
        take([](char c) { return c == '+' || c == '-'; });
        if (!takeDigits()) {
            return false;
        }
    }
    return at == end;
}

/// The reader accepts any run of digits, signs and points as a number, comments in lists and objects, and control
/// characters in strings. Returns why the text, which the reader accepted, is not JSON; null if it is.
const char* WhyNotJson(const std::string& text) {
    const char* const end = text.data() + text.size();
    bool inString = false;
    for (const char* at = text.data(); at != end; ++at) {
        if (inString) {
            if (static_cast<unsigned char>(*at) < 0x20) {
                return "holds a control character in a string";
            }
            if (*at == '\\') {
                ++at;
            }
            inString = *at != '"' || at[-1] == '\\';
        } else if (*at == '"') {
            inString = true;
        } else if (*at == '/') {
            return "holds a comment";
        } else if (IsDigit(*at) || *at == '-' || *at == '+' || *at == '.') {
            const char* last = std::find_if_not(
                at, end, [](char c) { return IsDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E'; });
            if (!IsNumber(at, last)) {
                return "holds an invalid number";
            }
            at = last - 1;
        }
    }
    return nullptr;
}

}  // namespace

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
        if (const char* reason = WhyNotJson(text)) {
            error = reason;
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
