#pragma once

#include <QMetaType>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

/// A command on its way to the server, what came of it, or a push.
struct CommandSeen {
    enum class EnKind { Sent, Replied, Failed, Pushed };
    EnKind kind = EnKind::Sent;
    uint32_t command = 0;
    unsigned long session = 0;  // 0 for a push
    int error = 0;
    int64_t durationMs = -1;  // from the sending to the answer
    std::string body;
    uint32_t asked = 0;  // the command that an answer belongs to, whatever number it bears
};

/// A message on the bus, before it is delivered.
struct MessageSeen {
    unsigned int id = 0;
    unsigned long wParam = 0;
    bool hasBody = false;
    uint64_t p1 = 0;
    uint64_t p2 = 0;
    std::string location;
    int receivers = -1;  // -1: sent from another thread, not counted
};

/// A read or a save of the store.
struct StoreSeen {
    bool isSave = false;
    std::optional<uint64_t> owner;  // a user; none: the installation
    std::string key;
    std::string value;  // a number in decimal; empty where a read failed
    bool isNumber = false;
    bool succeeded = false;
};

/// A URL that somebody asked to open.
struct UrlSeen {
    QString url;
    QString refusal;  // why it was not opened; empty if it was
    int businessType = 0;
    int fallbackMode = 0;
};

/// One thing that went through the contract, and when (milliseconds since 1970, of the local clock).
struct Seen {
    uint64_t number = 0;  // from 1, in order
    int64_t timeMs = 0;
    std::variant<CommandSeen, MessageSeen, StoreSeen, UrlSeen> what;
};
Q_DECLARE_METATYPE(Seen)
