#include "GrowthJson.h"

#include <json/reader.h>

#include <cstring>
#include <sstream>

namespace growth_json {

bool Parse(const std::string& text, Json::Value& value, std::string& error) {
    try {
        std::istringstream stream(text);
        if (Json::parseFromStream(Json::CharReaderBuilder(), stream, &value, &error)) {
            return true;
        }
    } catch (const std::exception& exception) {
        // The reader throws on deep nesting.
        error = exception.what();
    }
    // A failed parse leaves the values that it has read.
    value = Json::Value();
    return false;
}

const Json::Value& Member(const Json::Value& object, const char* key) {
    const Json::Value* member = IsObject(object) ? object.find(key, key + std::strlen(key)) : nullptr;
    return member ? *member : Json::Value::nullSingleton();
}

QString Text(const Json::Value& value) {
    const char* begin = nullptr;
    const char* end = nullptr;
    return value.getString(&begin, &end) ? QString::fromUtf8(begin, int(end - begin)) : QString();
}

}  // namespace growth_json
