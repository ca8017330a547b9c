#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Language.h"

namespace devserver {

constexpr int32_t kAdTypePopup = 2;
constexpr int32_t kAdTypeBanner = 3;

/// A moment of a campaign.
struct AdMoment {
    bool isRelative = false;  // to the server's clock at the answer
    int64_t seconds = 0;      // since 1970, or from then on

    int64_t At(int64_t nowSeconds) const { return isRelative ? nowSeconds + seconds : seconds; }
};

struct Campaign {
    std::string id;
    std::optional<std::string> name;
    std::optional<std::string> pushId;
    AdMoment start;
    AdMoment end;
    AdMoment expire;
    std::optional<std::vector<Language>> languages;  // who reads in one of them alone; without it everybody
    std::optional<std::vector<uint64_t>> users;      // these alone; without it everybody
    std::string image;                               // the name of a picture of the server, or a whole URL
    std::string schema;                              // what a click opens
    int32_t popupType = kAdTypePopup;                // of a popup, as the areas
    std::vector<int32_t> showAreas;
};

struct BannerPosition {
    int32_t bannerType = 0;
    std::optional<int32_t> carouselInterval;
    std::string materialScale;
    std::string materialCorner;
};

/// A place where ads show, and all that may show there.
struct AdSlot {
    int32_t adType = 0;
    int32_t adPosition = 0;
    std::optional<int32_t> showDuration;  // seconds; as the two below needed of a popup
    std::optional<int64_t> showInterval;  // seconds
    std::optional<int32_t> showIntervalType;
    bool enableClose = false;
    std::optional<BannerPosition> bannerPosition;
    std::vector<Campaign> campaigns;
};

/// The member "ads" of a scenario: no two slots of one type and position, no two campaigns of one id in a slot.
std::vector<AdSlot> ReadAds(const CJsonNode& node);
Json::Value WriteAds(const std::vector<AdSlot>& slots);

}  // namespace devserver
