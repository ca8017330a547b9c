#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <string>

#include "framework/export.h"

/// Identifies a channel. There is exactly one, to the client's servers.
enum CSChannelType : int32_t {
    kCSChannelMain = 1,
};

/// Identifies a broker. 0 is the user's own broker.
using CSBrokerId = int32_t;

/// The reason why a request failed. 0 is success, positive values come from the server, negative ones from the client.
enum CSProtoError : int32_t {
    kCSProtoOk = 0,
    kCSProtoTimedOut = -1,
    kCSProtoDisconnected = -2,
    /// The reply is larger than the host accepts.
    kCSProtoTooLarge = -3,
};

/// A command, a reply or a push: the number of the command and a serialised message.
struct CSProtoData {
    uint32_t m_nCmd = 0;
    std::string m_strData;
};

/// Extra data of a request. Reserved: callers pass null.
struct CSRequestExt {};
/// Extra data of a reply. Reserved: receivers ignore it.
struct CSResponseExt {};

/// Receives a reply or a push. Runs on the main thread. `data` is valid only during the call.
using CSCallback =
    std::function<void(unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext)>;

/// The command channel to the client's servers. No operation blocks.
/// Thread: main thread only.
/// Ownership: a callback is tied to its context object and never runs after the end of that object.
class ZRHOST_API IZRChannelProxy {
public:
    /// Sends a command.
    /// Returns its session id: 64 bits, from 1 upwards, unique in the process.
    /// The callback runs exactly once, later, never inside this call, and gets the same session id. It gets error 0
    /// with the reply, or another error if the server refuses, the time limit passes or the connection is lost.
    /// Ownership: after the end of `context`, or `UnbindCallback(context)`, the callback does not run. A null
    /// `context` gets no reply.
    /// Failure: without a channel, or for an unknown `channel`, it returns 0, logs, and never runs the callback.
    static unsigned long SendCommand(CSChannelType channel, const CSProtoData& data, const CSRequestExt* ext,
                                     CSCallback callback, QObject* context);

    /// Subscribes to the server's pushes of `commandId`. Subscribers are called in order of binding, with session 0.
    /// Ownership: the subscription ends with `context`, or with `UnbindCallback(context)`.
    static void BindCallback(CSChannelType channel, unsigned short commandId, CSCallback callback, QObject* context);

    /// Removes all subscriptions and all outstanding callbacks of `context`.
    static void UnbindCallback(QObject* context);
};
