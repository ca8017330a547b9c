#pragma once

#include <gmock/gmock.h>

#include <QLabel>
#include <string>
#include <vector>

#include "Ad/AdSamples.h"
#include "Ad/View/ZRAdImageView.h"
#include "Ad/View/ZRAdMiddlePopupView.h"
#include "ui/ZToast.h"

constexpr const char* kPictureConfig = "premium_active_popup_image";
constexpr uint32_t kActivate = 20981;
constexpr unsigned int kTextActivated = 292250;
constexpr unsigned int kTextFailed = 292248;

/// A picture for each market and language, whose URL names both.
inline Json::Value AllPictures() {
    Json::Value config;
    for (const char* market : {"US", "SG", "AU", "JP", "CA", "MY"}) {
        for (const char* language : {"zh-Hans", "zh-Hant", "en", "ja", "fr"}) {
            config["image_info"][market][language] =
                "https://pictures.test/" + std::string(market) + "/" + language + ".png";
        }
    }
    return config;
}

/// The texts of the toasts over a window, in order.
inline std::vector<std::string> ToastsOver(const QWidget& window) {
    std::vector<std::string> texts;
    for (const ZToast* toast : window.findChildren<ZToast*>()) {
        texts.push_back(toast->isHidden() ? "hidden" : toast->accessibleName().toStdString());
    }
    return texts;
}

/// The popups over a window, without those on their way out.
inline std::vector<CZRAdMiddlePopupView*> PopupsOver(const QWidget& window) {
    const auto found = window.findChildren<CZRAdMiddlePopupView*>();
    return {found.begin(), found.end()};
}
