// Input: the further data of a right that is ready to be activated.
#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "FuzzTarget.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

constexpr auto kRight = EnPremiumAccess(101);
constexpr unsigned long kLink = 302;

/// The target by the toolkit's strict parser. Nothing if that parser refuses the text.
std::optional<QString> TargetOf(const QString& otherInfo) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(otherInfo.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError) {
        return std::nullopt;
    }
    return document.object()[QLatin1String("active_premium_popup_info")]
        .toObject()[QLatin1String("target_url")]
        .toString();
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CScriptedHost host;
    host.state.links.Set(kLink, "https://links.test/detail");
    CZRVipManager manager;
    manager.Init();
    CZRPremiumManager::Singleton()->Init();
    CPremiumUIAccessData record;
    record.strOtherInfo = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    record.nActivationType = 6;
    record.nDetailBtnUrlID = kLink;
    CZRPremiumManager::Singleton()->SetUIAccessData(kRight, record);
    host.log.Forget();

    manager.HandleVipWidgetClicked(kRight, ZRVipUIDataDetail, nullptr);

    const size_t opened = host.urls.Opened().size();
    const size_t sent = host.channel.Sent().size();
    EXPECT_EQ(opened + sent, 1u);
    bool failed = false;
    std::string target;
    const std::string kActive = "[Vip] Active vip, access = 101, dataType = 2, targetUrl = ";
    for (const LogLine& line : host.log.Lines()) {
        failed = failed || line.text.rfind("[Vip] Parse strOtherInfo failed, error = ", 0) == 0;
        target = line.text.rfind(kActive, 0) == 0 ? line.text.substr(kActive.size()) : target;
    }
    EXPECT_EQ(sent == 1, !target.empty());
    EXPECT_FALSE(failed && sent == 1);
    // The two parsers differ in what they accept. A text that both accept has one target.
    if (const auto strict = TargetOf(record.strOtherInfo); strict && !failed) {
        EXPECT_EQ(sent == 1, !strict->isEmpty());
    }
    host.log.Forget();
    return 0;
}
