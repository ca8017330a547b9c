#pragma once

#include <cstdint>

/// The numbers and names by which AI chat is known outside of the module.
constexpr uint32_t kCmdAIChatEnableStatus = 20982;

/// Handlers of the chat window itself, which other modules can't register.
constexpr const char* kAIChatJSAPISetNewSessionEnable = "SetNewSessionEnable";
constexpr const char* kAIChatJSAPIUpdateNetworkStatus = "updateAIChatNetworkStatus";
constexpr const char* kAIChatJSAPICloseWindow = "closeWindow";

/// The first path word of the client URLs that the chat opens.
constexpr const char* kstrAIChatSchemeUrl = "url";

/// The pages that apply if the common configuration names none.
constexpr const char* kAIChatWebPageUrl = "https://chat.zrgrowth.example/";
constexpr const char* kAIChatWebPagePreloadUrl = "https://chat.zrgrowth.example/preload";

/// The network state of the chat, as the page reports it.
enum ZRAIChatWebNetWorkStatus : int {
    ZRAIChatNetworkGood = 1,
    ZRAIChatNetworkFailed = 2,
    ZRAIChatNetworkPoor = 3,
    ZRAIChatNetworkConnecting = 4,
};
