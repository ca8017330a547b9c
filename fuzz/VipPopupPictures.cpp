// Input: the configuration of the activation pictures, for several markets and languages.
#include <gmock/gmock.h>
#include <json/reader.h>

#include <QWidget>
#include <sstream>

#include "Ad/View/ZRAdMiddlePopupView.h"
#include "FuzzTarget.h"
#include "Vip/Controller/ZRActiveVipPopupController.h"
#include "support/ScriptedHost.h"
#include "ui/ZToast.h"

using namespace ::testing;

namespace {

constexpr uint32_t kActivate = 20981;

struct User {
    int market;
    const char* marketKey;
    int language;
    const char* languageKey;
};

constexpr User kUsers[] = {{0, "US", 2, "en"}, {5, "SG", 0, "zh-Hans"}, {6, "AU", 5, "ja"}, {7, "JP", 7, "fr"}};

Json::Value ConfigOf(const std::string& text) {
    Json::Value config;
    try {
        std::istringstream stream(text);
        std::string error;
        if (Json::parseFromStream(Json::CharReaderBuilder(), stream, &config, &error)) {
            return config;
        }
    } catch (const std::exception&) {
        // The host hands out no value that its parser refused.
    }
    return Json::Value();
}

/// Empty: no picture.
QString PictureOf(Json::Value config, const User& user) {
    for (const char* key : {"image_info", user.marketKey, user.languageKey}) {
        if (!config.isObject() || !config.isMember(key)) {
            return QString();
        }
        const Json::Value member = config[key];
        config = member;
    }
    return config.isString() ? QString::fromStdString(config.asString()) : QString();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Json::Value config = ConfigOf(std::string(reinterpret_cast<const char*>(data), size));
    for (const User& user : kUsers) {
        CScriptedHost host;
        host.state.account.Set(501, 1, {user.market, 9});
        host.state.language.Set(user.language);
        host.state.config.Set("premium_active_popup_image", config);
        QWidget window;
        window.resize(600, 650);
        CZRActiveVipPopupController controller(nullptr);
        controller.RequestActiveVip(EnPremiumAccess(101), QStringLiteral("https://target.test/a"), &window);

        host.channel.Reply(host.channel.LastSession(), kActivate, std::string());
        host.time.Settle();

        const QString picture = PictureOf(config, user);
        const auto popups = window.findChildren<CZRAdMiddlePopupView*>();
        const auto toasts = window.findChildren<ZToast*>();
        EXPECT_EQ(popups.size(), picture.isEmpty() ? 0 : 1);
        EXPECT_EQ(toasts.size(), picture.isEmpty() ? 1 : 0);
        EXPECT_EQ(host.pictures.Asked().empty() ? std::string() : host.pictures.Asked()[0].url, picture.toStdString());
        host.log.Forget();
    }
    return 0;
}
