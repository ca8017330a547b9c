#include "Ad/Model/ZRAdJson.h"

#include <cstring>

namespace ad_json {

const Json::Value& Member(const Json::Value& object, const char* key) {
    const Json::Value* member = object.find(key, key + std::strlen(key));
    return member ? *member : Json::Value::nullSingleton();
}

QString Text(const Json::Value& value) {
    const char* begin = nullptr;
    const char* end = nullptr;
    return value.getString(&begin, &end) ? QString::fromUtf8(begin, int(end - begin)) : QString();
}

}  // namespace ad_json
