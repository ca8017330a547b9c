#pragma once

#include <QMetaType>
#include <QSize>
#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

/// Number of bytes that are kept of a body or text.
inline constexpr size_t kTracedBytes = 64 << 10;

/// A sent command, its reply or failure, or a push.
struct CommandTrace {
    enum class EnKind { Sent, Replied, Failed, Pushed };
    EnKind kind = EnKind::Sent;
    uint32_t command = 0;
    unsigned long session = 0;  // 0 in a push
    int error = 0;
    int64_t durationMs = -1;  // from the request to the reply
    std::string body;         // up to kTracedBytes
    uint32_t asked = 0;       // the requested command; a reply can have another number
    size_t bodyBytes = 0;     // full size
};

/// A message on the bus, before its delivery.
struct MessageTrace {
    unsigned int id = 0;
    unsigned long wParam = 0;
    bool hasBody = false;
    uint64_t p1 = 0;
    uint64_t p2 = 0;
    std::string location;
    int receivers = -1;  // -1: not counted, because the sender is not on the main thread
};

/// A read from the store or a save to it.
struct StoreTrace {
    bool isSave = false;
    std::optional<uint64_t> owner;  // a user; empty: the installation
    std::string key;
    std::string value;  // a number in decimal, text up to kTracedBytes; empty after a failed read
    bool isNumber = false;
    bool succeeded = false;
};

/// A request to open a URL.
struct UrlTrace {
    QString url;
    QString refusal;  // empty if the URL was opened
    int businessType = 0;
    int fallbackMode = 0;
    QSize windowSize = {};  // invalid without a wish
};

/// An HTTP request or its result. Loads of pictures have their own numbers and no bodies.
struct HttpTrace {
    enum class EnKind { Sent, Answered, Failed };
    static constexpr size_t kBodyKept = kTracedBytes;

    EnKind kind = EnKind::Sent;
    unsigned long task = 0;
    bool isPost = false;
    std::string url;                             // with the query
    std::map<std::string, std::string> headers;  // of the request
    int result = 0;                              // only in a result
    int status = 0;
    int64_t durationMs = -1;  // from the request to the result
    std::string body;         // of the request or of the response, up to kBodyKept bytes
    size_t bodyBytes = 0;     // full size
    std::string requestBody;  // in a result: the request's body, up to kBodyKept bytes
    size_t requestBytes = 0;  // full size
    bool isPicture = false;
    bool fromCache = false;  // picture result: the cache had the bytes; status 0: no server was asked
    std::string refusal;     // picture result: why the bytes were rejected; empty if they were accepted
};

/// A reported event, or the start or end of a timer.
struct ReportTrace {
    enum class EnKind { Reported, TimerStarted, TimerEnded };
    EnKind kind = EnKind::Reported;
    std::string event;
    std::string timer;
    int code = 0;
    int32_t broker = 0;
    std::string params;       // JSON in one line, up to kTracedBytes
    int64_t durationMs = -1;  // of an ended timer whose start was recorded
    bool taken = false;
};

/// A page of the web engine, or a message of its bridge.
struct WebTrace {
    enum class EnKind { Page, Call, Answer, Refused, Event };
    EnKind kind = EnKind::Page;
    QString name;      // of the call or event; of a page its address
    std::string text;  // values as JSON, or the reason of a refusal; up to HttpTrace::kBodyKept bytes
    int call = 0;      // 0: no answer is wanted
    bool isBad = false;
};

/// One recorded call of a port.
struct TraceEvent {
    uint64_t number = 0;  // from 1, in order
    int64_t timeMs = 0;   // local clock, milliseconds since 1970
    std::variant<CommandTrace, MessageTrace, StoreTrace, UrlTrace, HttpTrace, ReportTrace, WebTrace> what;
};
Q_DECLARE_METATYPE(TraceEvent)
