#pragma once

#include <json/json.h>

#include <sstream>
#include <string>

/// A value of a JSON text that is known to be good.
inline Json::Value JsonOf(const std::string& text) {
    Json::Value value;
    std::istringstream stream(text);
    stream >> value;
    return value;
}

/// A popup ad with every key, of a window from 100 to 300 seconds that expires at 400.
inline Json::Value PopupAd(const std::string& id = "18088") {
    Json::Value ad = JsonOf(R"({"ad_id": "", "name": "Autumn", "start_time": 100, "end_time": 300, "expire_time": 400,
        "push_id": "p-1", "popup_ad": {"popup_type": 2, "show_areas": [500, 501],
        "bottom_popup": {"img": "https://pictures.test/card.png", "schema": "https://www.test/autumn"}}})");
    ad["ad_id"] = id;
    return ad;
}

/// A banner ad of the same window.
inline Json::Value BannerAd(const std::string& id = "18089") {
    Json::Value ad = JsonOf(R"({"ad_id": "", "start_time": 100, "end_time": 300, "expire_time": 400,
        "banner_ad": {"img": "https://pictures.test/strip.png", "schema": "zrclient://page/news"}})");
    ad["ad_id"] = id;
    return ad;
}

/// Returns the member "data" for the bottom popup, without ads.
inline Json::Value PopupData() {
    return JsonOf(R"({"ad_type": 2, "ad_position": 42, "show_duration": 15, "show_interval": 3600,
        "show_interval_type": 1, "enable_close": true, "ad": []})");
}

/// The same for a banner at position 7.
inline Json::Value BannerData() {
    return JsonOf(R"({"ad_type": 3, "ad_position": 7, "enable_close": false, "banner_position": {"banner_type": 2,
        "carousel_interval": 5, "material_scale": "6:1", "material_corner": "8"}, "ad": []})");
}

/// A whole answer.
inline Json::Value AnswerOf(const Json::Value& data) {
    Json::Value answer;
    answer["code"] = 0;
    answer["message"] = "ok";
    answer["data"] = data;
    return answer;
}

inline Json::Value PopupAnswer() {
    Json::Value data = PopupData();
    data["ad"].append(PopupAd());
    return AnswerOf(data);
}

inline Json::Value BannerAnswer() {
    Json::Value data = BannerData();
    data["ad"].append(BannerAd());
    return AnswerOf(data);
}
