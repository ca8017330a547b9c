#pragma once

#include <QMetaType>
#include <QString>
#include <cstdint>
#include <map>
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

/// A request over HTTP, or what came of it. Pictures have numbers of their own, and their bytes are not kept.
struct HttpSeen {
    enum class EnKind { Sent, Answered, Failed };
    /// So much of a body is kept.
    static constexpr size_t kBodyKept = 64 << 10;

    EnKind kind = EnKind::Sent;
    unsigned long task = 0;
    bool isPost = false;
    std::string url;                             // with the query
    std::map<std::string, std::string> headers;  // of the request
    int result = 0;                              // of an end
    int status = 0;
    int64_t durationMs = -1;  // from the start to the end
    std::string body;         // of the request, or of the answer; its first part where it is long
    size_t bodyBytes = 0;     // of the whole
    std::string requestBody;  // of an end: the body that was sent, its first part where it is long
    size_t requestBytes = 0;  // of the whole
    bool isPicture = false;
    bool fromCache = false;  // of a picture's end: the bytes are those of the disk; status 0: nobody was asked
    std::string refusal;     // of a picture's end: why the bytes are none; empty if they are one
};

/// An event that was reported, or a measurement that was begun for one.
struct ReportSeen {
    enum class EnKind { Reported, TimerStarted, TimerEnded };
    EnKind kind = EnKind::Reported;
    std::string event;
    std::string timer;  // the measurement's own text
    int code = 0;
    int32_t broker = 0;
    std::string params;       // JSON in one line
    int64_t durationMs = -1;  // of a measurement that ended, where its start was seen
    bool taken = false;
};

/// One thing that went through the contract, and when (milliseconds since 1970, of the local clock).
struct Seen {
    uint64_t number = 0;  // from 1, in order
    int64_t timeMs = 0;
    std::variant<CommandSeen, MessageSeen, StoreSeen, UrlSeen, HttpSeen, ReportSeen> what;
};
Q_DECLARE_METATYPE(Seen)
