#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <string>

#include "framework/export.h"

/// Selects a channel. There is one, to the client's servers.
enum CSChannelType : int32_t {
    kCSChannelMain = 1,
};

/// Selects a broker; 0 is the user's own.
using CSBrokerId = int32_t;

/// Why a request failed; 0 is success. Values above 0 come from the server, those below from the client.
enum CSProtoError : int32_t {
    kCSProtoOk = 0,
    kCSProtoTimedOut = -1,
    kCSProtoDisconnected = -2,
};

/// A command or its reply: the command's number and a serialised message.
struct CSProtoData {
    uint32_t m_nCmd = 0;
    std::string m_strData;
};

/// Extra data of a request and of a reply. Reserved: pass null, ignore what is passed.
struct CSRequestExt {};
struct CSResponseExt {};

using CSCallback =
    std::function<void(unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext)>;

/// The command channel to the client's servers. Main thread only; nothing blocks.
class ZRHOST_API IZRChannelProxy {
public:
    /// Sends a command and returns its session id: from 1 upwards, 64 bits, never twice in a process.
    /// The callback runs once, on the main thread, never inside this call, with `session` equal to the
    /// result: with the reply and error 0, or with a non-zero error when the server refuses, the time
    /// limit passes, the connection is lost or there is none. It never runs once `context` is gone (or
    /// null), or after `UnbindCallback(context)`. Returns 0, and calls nothing, without a channel or for a type that is
    /// none, which is logged.
    static unsigned long SendCommand(CSChannelType channel, const CSProtoData& data, const CSRequestExt* ext,
                                     CSCallback callback, QObject* context);

    /// Subscribes to the server's pushes of `commandId`, in order of binding, until `context` is gone or
    /// unbound. The session of a push is 0.
    static void BindCallback(CSChannelType channel, unsigned short commandId, CSCallback callback, QObject* context);

    /// Removes all subscriptions and outstanding callbacks of `context`.
    static void UnbindCallback(QObject* context);
};
