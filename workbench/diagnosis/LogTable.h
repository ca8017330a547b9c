#pragma once

#include <QMap>
#include <QRegularExpression>
#include <QStringList>
#include <optional>
#include <vector>

#include "workbench/diagnosis/Literal.h"

/// The growth module's log lines that the workbench reads. Their texts and meanings are in this unit only.
namespace log_table {

/// The kind of subject that a line is about.
enum class EnKind { Ad, Rights, Vip, Widget, Chat, ChatOpen };

/// The effect of a line on its subject.
enum class EnEvent {
    Note,  // belongs to the subject's history only
    Asked,
    Retried,  // a waiting list is checked again
    Dropped,  // one ad of a list
    Refused,
    Ignored,  // refused, and the state before remains
    PictureFailed,
    Loading,
    Shown,
    Gone,
    Closed,
    ClosedByPush,
    Cleared,
    Pushed,
    Withdrawn,
    Reason,  // for a following line
    TimerReady,
    TimerStopped,
    Good,  // an answer was taken
    SceneAnswered,
};

/// The time from which the check passes without any other change.
enum class EnFree {
    Never,
    Sum,       // value 1 plus value 2
    AfterSum,  // one second later: the last second still refuses
    Window,    // the first start of the dropped ads
};

/// The steps of an ad. The other kinds have fewer, see StepNames.
enum EnStep { kStepAsked, kStepAnswered, kStepKept, kStepConditions, kStepPicture, kStepShown };

/// One line. Its text has placeholders for a number {n}, a word {w} and any text {}. The subject is an ad position
/// by its type {t} and position {p}, or any other number {s}. {@} is {t} and {p} with their names. In the other
/// texts, {0} is the first value; {0:t} is a time, {0:s} a duration, {0:a} an area, {0:k} an ad type.
struct RowText {
    const char* text;
    EnEvent event = EnEvent::Note;
    int step = -1;           // that a refusal stops, or that comes next
    const char* say = "";    // the refusal, end or reason in plain words
    const char* check = "";  // name of the check
    const char* actual = "";
    const char* expected = "";
    EnFree free = EnFree::Never;
    bool isNormal = false;  // written with severity 8 although nothing is wrong
};

struct Row : RowText {
    EnKind kind;
    int at;         // index of the subject's value
    int position;   // index of an ad's position
    QString begin;  // up to the first placeholder; comparing it avoids most expressions
    QRegularExpression expression;
};

const std::vector<Row>& All();

/// A row's text with {@} written out.
QString PatternOf(const char* text);

/// Names of the steps of a kind, in order.
QStringList StepNames(EnKind kind);

struct ParsedLine {
    const Row* row = nullptr;
    QStringList values;                 // unescaped
    QString text;                       // of the whole line
    qint64 timeMs = 0;                  // local time
    qint64 serverMs = 0;                // on the server's clock
    QMap<QString, QString> words = {};  // from other lines, for the row's texts

    qint64 Number(int index) const { return values.value(index).toLongLong(); }
};

/// Returns the matching line with its values; nothing for any other text. A server's text within a line can resemble
/// values, but the line's last values are the module's.
std::optional<ParsedLine> Read(const QString& text);

/// Returns true for a line that the module writes with severity 8 although nothing is wrong.
bool IsExpectedError(const QString& text);

/// Fills in the line's values and words in a text of its row. Times are on the server's clock; `nowMs` decides whether
/// they need a date.
QString Filled(const char* text, const ParsedLine& line, qint64 nowMs);

/// A time in the local zone, with the date if the day differs from that of `nowMs`.
QString Clock(qint64 timeMs, qint64 nowMs);
/// A duration in its two largest units.
QString Duration(qint64 seconds);
/// The tab of an area of the main window.
QString Area(qint64 area);
/// "Popup" or "Banner", or the number of any other type.
QString AdKind(qint64 type);

}  // namespace log_table
