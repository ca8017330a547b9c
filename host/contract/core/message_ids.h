#pragma once

namespace core {

/// Bus messages that the host sends. The state changes before its message is sent. None has a body.
enum HostMessageId : unsigned int {
    /// The common configuration may have changed.
    kMsgCommonConfigChanged = 10250,
    /// The login channel is connected: after OnLogin, and after each reconnect.
    kMsgLoginChannelConnected = 10650,
    /// The display language changed.
    kMsgLanguageChanged = 20100,
    /// The theme changed. zr_ui_theme::Manager has already notified its listeners.
    kMsgThemeChanged = 20101,
    /// The main window shows its first tab or another one. wParam holds its EnZRTabFrameKey.
    kMsgTabFrameChanged = 20157,
};

}  // namespace core
