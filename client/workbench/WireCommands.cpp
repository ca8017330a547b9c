#include "workbench/WireCommands.h"

#include <algorithm>

#include "EntryScenes.h"
#include "core/message_ids.h"

namespace wire {

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands{
        {20982, "GetChatEntry", "chat.GetChatEntryReq", "chat.GetChatEntryRsp", nullptr},
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
        case kMsgAIChatEntriesChanged:
            return QStringLiteral("AIChatEntriesChanged");
        default:
            return QString();
    }
}

}  // namespace wire
