#pragma once

#include <QStringList>
#include <optional>
#include <vector>

/// The growth module's log lines on rights and VIP status that are read here: the one place that holds their
/// texts.
namespace module_lines {

enum class EnLine {
    TimerReady,      // the hourly timer runs from here on
    TimerStops,      // and up to here
    ForLogin,        // the next premium request is for a login
    ForHour,         // ... for the hourly timer
    ForLanguage,     // ... for another display language
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
    const char* text;  // as the module writes it, with {} for each value
};

const std::vector<Line>& All();

struct Said {
    EnLine line;
    QStringList values;
};

/// Which of the lines the text is, and its values; nothing for any other.
std::optional<Said> Read(const QString& text);

}  // namespace module_lines
