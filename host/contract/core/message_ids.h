#pragma once

namespace core {

/// Bus messages that the host sends; state is changed before the message goes out.
enum HostMessageId : unsigned int {
    /// Common configuration may have changed. No body.
    kMsgCommonConfigChanged = 10250,
    /// The login channel is connected: after OnLogin, and at each reconnect. No body.
    kMsgLoginChannelConnected = 10650,
    /// The display language changed. No body.
    kMsgLanguageChanged = 20100,
    /// The theme changed, and zr_ui_theme::Manager has told its listeners. No body.
    kMsgThemeChanged = 20101,
    /// The main window shows another tab, or the first one; wParam holds its EnZRTabFrameKey. No body.
    kMsgTabFrameChanged = 20157,
};

}  // namespace core
