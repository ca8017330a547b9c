#include "workbench/ads/AdBodies.h"

#include <QUrl>

#include "framework/JsonText.h"

namespace ad_bodies {
namespace {

Json::Value Parsed(const std::string& body) {
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

const Json::Value& Member(const Json::Value& json, const std::string& name) {
    const Json::Value* member = json.isObject() ? json.find(name.data(), name.data() + name.size()) : nullptr;
    return member ? *member : Json::Value::nullSingleton();
}

QString TextOf(const Json::Value& json) {
    return json.isString() ? QString::fromStdString(json.asString()) : QString();
}

QStringList TextsOf(const Json::Value& json) {
    QStringList texts;
    if (json.isArray()) {
        for (const Json::Value& item : json) {
            texts << TextOf(item);
        }
    }
    return texts;
}

std::optional<qint64> NumberOf(const Json::Value& json) {
    return json.isInt64() ? std::make_optional<qint64>(json.asInt64()) : std::nullopt;
}

std::vector<int> IntsOf(const Json::Value& json) {
    std::vector<int> numbers;
    if (json.isArray()) {
        for (const Json::Value& item : json) {
            if (item.isInt()) {
                numbers.push_back(item.asInt());
            }
        }
    }
    return numbers;
}

std::optional<AdSlot> SlotOf(const Json::Value& json) {
    const Json::Value& type = Member(json, "ad_type");
    const Json::Value& position = Member(json, "ad_position");
    return type.isInt() && position.isInt() ? std::make_optional(AdSlot{type.asInt(), position.asInt()}) : std::nullopt;
}

}  // namespace

std::optional<Request> ReadRequest(const std::string& url, const std::string& body) {
    const QString path = QUrl(QString::fromStdString(url)).path();
    if (!path.endsWith(QLatin1String("/ad/search")) && !path.endsWith(QLatin1String("/ad/check"))) {
        return std::nullopt;
    }
    const Json::Value json = Parsed(body);
    const QString id = TextOf(Member(json, "request_id"));
    const std::optional<AdSlot> slot = SlotOf(json);
    if (id.isEmpty() || !slot) {
        return std::nullopt;
    }
    return Request{id, *slot, TextsOf(Member(json, "ad_id"))};
}

Answer ReadAnswer(const std::string& body) {
    const Json::Value json = Parsed(body);
    const Json::Value& data = Member(json, "data");
    Answer answer{NumberOf(Member(json, "code")), std::nullopt};
    const Json::Value& ads = Member(data, "ad");
    if (data.isObject()) {
        answer.offers.emplace();
    }
    if (ads.isArray()) {
        for (const Json::Value& ad : ads) {
            answer.offers->push_back({TextOf(Member(ad, "ad_id")), NumberOf(Member(ad, "start_time")),
                                      NumberOf(Member(ad, "end_time")), NumberOf(Member(ad, "expire_time")),
                                      IntsOf(Member(Member(ad, "popup_ad"), "show_areas"))});
        }
    }
    return answer;
}

CParams::CParams(const std::string& params) {
    const Json::Value json = Parsed(params);
    if (!json.isObject()) {
        return;
    }
    for (const std::string& name : json.getMemberNames()) {
        const Json::Value& value = json[name];
        if (value.isArray()) {
            m_lists[name] = TextsOf(value);
        } else if (const auto number = NumberOf(value)) {
            m_numbers[name] = *number;
        } else {
            m_texts[name] = TextOf(value);
        }
    }
}

QString CParams::Text(const char* name) const {
    const auto found = m_texts.find(name);
    return found == m_texts.end() ? QString() : found->second;
}

QStringList CParams::Texts(const char* name) const {
    const auto found = m_lists.find(name);
    return found == m_lists.end() ? QStringList() : found->second;
}

std::optional<qint64> CParams::Number(const char* name) const {
    const auto found = m_numbers.find(name);
    return found == m_numbers.end() ? std::nullopt : std::make_optional(found->second);
}

}  // namespace ad_bodies
