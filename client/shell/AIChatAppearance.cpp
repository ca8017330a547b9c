#include "AIChatAppearance.h"

#include "GrowthService.h"
#include "core/lang.h"
#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "ui/zr_ui_theme.h"

namespace {

Json::Value Appearance() {
    Json::Value appearance;
    appearance["theme"] = int(zr_ui_theme::Manager::instance()->getTheme());
    appearance["language"] = core::lang::GetLanguageID();
    return appearance;
}

}  // namespace

CAIChatAppearance::CAIChatAppearance(QObject* parent) : QObject(parent) {
    for (const unsigned int message : {core::kMsgThemeChanged, core::kMsgLanguageChanged}) {
        core::__CMessageDispatch("[Client]")
            .Bind(
                message,
                [](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                    if (const auto service = GrowthService()) {
                        service->InvokeAIChatWebJSAPI(QStringLiteral("appearanceChanged"), Appearance());
                    }
                },
                this);
    }
}

// The handler captures nothing, because it can outlive this object: a page keeps it.
void CAIChatAppearance::Offer() {
    if (const auto service = GrowthService()) {
        service->RegisterAIChatNativeJSAPI(
            QStringLiteral("getAppearance"),
            [](const Json::Value& /*params*/, int /*call*/) { return std::make_shared<Json::Value>(Appearance()); });
    }
}
