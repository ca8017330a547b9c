#include "workbench/WireCommands.h"

#include <algorithm>
#include <map>

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
        {20981, "ActivePermissionState", "web_premium_access.ActivePermissionStateReq",
         "web_premium_access.ActivePermissionStateRsp", nullptr},
        {20145, "AdStatusChangedPush", nullptr, nullptr, "ad_manage_oss.AdPush"},
        {20170, "AdCheckPush", nullptr, nullptr, "ad_manage_oss.AdCheckPush"},
        {20171, "AdPush", nullptr, nullptr, "ads_service.AdPush"},
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
    static const std::map<unsigned int, const char*> names{
        {core::kMsgCommonConfigChanged, "CommonConfigChanged"},
        {core::kMsgLoginChannelConnected, "LoginChannelConnected"},
        {core::kMsgLanguageChanged, "LanguageChanged"},
        {core::kMsgThemeChanged, "ThemeChanged"},
        {core::kMsgTabFrameChanged, "TabFrameChanged"},
        {kMsgAIChatEnableChanged, "AIChatEntriesChanged"},
        {kMsgAIChatHiddenButNotClosed, "AIChatHiddenButNotClosed"},
        {kMsgAIChatPageSceneChanged, "AIChatPageSceneChanged"},
        {kMsgPremiumDataChanged, "PremiumDataChanged"},
        {kMsgPremiumRequestAnswered, "PremiumRequestAnswered"},
        {kMsgVipStatusChanged, "VipStatusChanged"},
    };
    const auto name = names.find(messageId);
    return name == names.end() ? QString() : QString::fromLatin1(name->second);
}

}  // namespace wire
