#pragma once

#include <QStringList>
#include <optional>
#include <vector>

/// The growth module's log lines about rights and VIP status. Their texts are in this unit only.
namespace module_lines {

enum class EnLine {
    TimerReady,      // the hourly timer starts
    TimerStops,      // the hourly timer stops
    ForLogin,        // the next premium request is for a login
    ForHour,         // ... for the hourly timer
    ForLanguage,     // ... for a change of the language
    SentAll,         // session, server push
    SentList,        // count, session, server push
    UnknownSession,  // session
    ChannelError,    // session, error
    BadBytes,
    NoCode,
    OtherCode,  // code
    PushTaken,  // need all, count, milliseconds
    VipSent,
    VipRefused,  // error, command
    VipBadBytes,
    VipPushTaken,  // milliseconds
};

struct Line {
    EnLine line;
    const char* text;  // the module's text, with {} for each value
};

const std::vector<Line>& All();

struct ParsedLine {
    EnLine line;
    QStringList values;
};

/// Returns the matching line with its values; nothing for any other text.
std::optional<ParsedLine> Read(const QString& text);

}  // namespace module_lines
