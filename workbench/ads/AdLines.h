#pragma once

#include <QStringList>
#include <optional>
#include <vector>

/// The growth module's log lines about ads. Their texts are in this unit only.
namespace ad_lines {

enum class EnLine {
    Limited,          // server seconds now, of the last request, the interval, type, position
    Asked,            // path, type, position, ad ids, request id
    NoTask,           // path, type, position, request id
    Superseded,       // path, type, position, request id, current task, the answer's task
    ExchangeFailed,   // path, result, type, position, request id
    NoJson,           // path, type, position, request id
    NotDecoded,       // path, type, position, request id
    Refused,          // path, code, message, type, position, request id
    Answered,         // path, type, position, request id
    Undecodable,      // class, what is wrong: ahead of NotDecoded
    TooEarly,         // server seconds now, the window's start, type, position, ad id
    Over,             // server seconds now, the window's end, type, position, ad id
    Expired,          // server seconds now, the expiry, type, position, ad id
    ForeignType,      // type here, type of the answer, position here, position of the answer
    ForeignPosition,  // type, position of the answer, position here
    EmptyList,        // type, position
    NoneValid,        // type, position
    Cleared,          // type, position, ad id
    Closed,           // why, type, position, ad id
    ExposeSent,       // path, type, position, ad ids, expose id, milliseconds, push ids
    ExposeNoTask,     // path, type, position, ad ids, expose id
    ExposeFailed,     // path, result, type, position, ad ids, expose id
    ExposeNoJson,     // path, result, HTTP status, type, position, ad ids, expose id
    ExposeRefused,    // path, code, type, position, ad ids, expose id
    ExposeTaken,      // path, type, position, ad ids, expose id
    ClickLost,        // request id, action, ad id
    NoList,           // type, position
    NoPopup,          // type, position
    NoAdId,           // type, position
    NoAreas,          // type, position, ad id
    ListGood,         // type, position, ad id
    Try,              // type, position
    NoListNow,        // type, position
    OtherTab,         // area, key of the tab, type, position, ad id
    WithinInterval,   // server seconds now, of the last showing, the interval, type, position, ad id, key
    SlotTaken,        // type, position, ad id
    NoFocus,          // type, position, ad id
    ShowNoList,       // type, position
    ShowStart,        // type, position
    ShowElsewhere,    // type, position, position of the list
    ShowNoData,       // type, position
    CardNoPopup,      // type, position, ad id
    CardNoPicture,    // type, position, ad id
    CardNoInterface,  // type, position, ad id
    CardNoFrame,      // type, position, ad id
    CardMade,         // type, position, ad id, push id, whether it can be closed, seconds
    CardGone,         // type, position, ad id of what is on screen
    PictureFailed,    // type, URL, tries, milliseconds
    PictureOfNone,    // type, position
    NoView,           // type, position, ad id
    Shown,            // type, position, ad id, push id
    BannerNoLayout,   // type, position
    BannerNoCaller,   // type, position
    BannerNoList,     // type, position
    BannerNoAds,      // type, position
    BannerUnknown,    // type, position, banner type
    BannerMade,       // type, position
    PushNew,          // type, position, delay in seconds
    PushChanged,      // type, position, withdrawn ad ids, delay in seconds
    PushCheck,        // type, position, ad ids, delay in seconds
    PushBad,          // the reason, in the module's words
    LoggedOut,        //
    OtherLanguage,    //
};

struct Line {
    EnLine line;
    const char* text;  // the module's text, with {n} for a number, {w} for a word and {} for any text
};

const std::vector<Line>& All();

struct ParsedLine {
    EnLine line;
    QStringList values;  // unescaped

    qint64 Number(int place) const { return values[place].toLongLong(); }
};

/// Returns the matching line with its values; nothing for any other text. A server's text within a line can resemble
/// values, but the line's last values are the module's.
std::optional<ParsedLine> Read(const QString& text);

}  // namespace ad_lines
