#include "workbench/WireCommands.h"

#include <algorithm>

#include "EntryScenes.h"
#include "PremiumNumbers.h"
#include "core/message_ids.h"
#include "modules/ZRGrowthMessages.h"

namespace wire {

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands{
        {20982, "GetChatEntry", "chat.GetChatEntryReq", "chat.GetChatEntryRsp", nullptr},
        {kCommandPremiumAccess, "GetUiMsgAndPremiumAccess", "web_premium_access.GetUiMsgAndPremiumAccessReq",
         "web_premium_access.GetUiMsgAndPremiumAccessRsp", nullptr},
        {kCommandVipStatus, "GetAppEntryMessage", "vip_base_service.GetAppEntryMessageReq",
         "vip_base_service.GetAppEntryMessageRsp", nullptr},
        {kPushPremiumChange, "PremiumChangePush", nullptr, nullptr, "web_premium_access.PremiumChangePush"},
        {kPushVipChange, "UserVipStateChangePush", nullptr, nullptr, "vip_base_service.UserVipStateChangePush"},
    };
    return commands;
}

const Command* Find(uint32_t number) {
    const auto found = std::find_if(Commands().begin(), Commands().end(),
                                    [number](const Command& command) { return command.number == number; });
    return found == Commands().end() ? nullptr : &*found;
}

QString CommandName(uint32_t number) {
    const Command* command = Find(number);
    return command ? QString::fromLatin1(command->name) : QString();
}

QString MessageName(unsigned int messageId) {
    switch (messageId) {
        case core::kMsgCommonConfigChanged:
            return QStringLiteral("CommonConfigChanged");
        case core::kMsgLoginChannelConnected:
            return QStringLiteral("LoginChannelConnected");
        case core::kMsgLanguageChanged:
            return QStringLiteral("LanguageChanged");
        case core::kMsgThemeChanged:
            return QStringLiteral("ThemeChanged");
        case kMsgAIChatEnableChanged:
            return QStringLiteral("AIChatEntriesChanged");
        case kMsgPremiumDataChanged:
            return QStringLiteral("PremiumDataChanged");
        case kMsgPremiumRequestAnswered:
            return QStringLiteral("PremiumRequestAnswered");
        case kMsgVipStatusChanged:
            return QStringLiteral("VipStatusChanged");
        default:
            return QString();
    }
}

}  // namespace wire
