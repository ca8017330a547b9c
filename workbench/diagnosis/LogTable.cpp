#include "workbench/diagnosis/LogTable.h"

#include <QDateTime>
#include <algorithm>
#include <map>
#include <utility>

#include "workbench/FieldNode.h"

namespace log_table {
namespace {

// The first row that fits is taken. The checks of a step are in the module's order.
using E = EnEvent;
using F = EnFree;

const RowText kAdRows[] = {
    {"[Ad] Request ad limited. currentTimeStamp = {n}, lastRequestTimeStamp = {n}, requestInterval = {n}, {@}",
     E::Ignored, kStepAsked, "It asked again less than {2:s} after its last request.", "pause between requests",
     "{0:t}", "{2:s} after the last request, {1:t}", F::Sum},
    {"[Ad] Request ad start, path = {w}, {@}, adIdList = {}, requestId = {}", E::Asked},
    {"[Ad] Request ad failed, requestTaskId = 0, path = {w}, {@}, requestId = {}", E::Refused, kStepAnswered,
     "The request could not be sent.", "sent", "not sent", "sent"},
    {"[Ad] Request ad callback, requestTaskId unmatched, path = {w}, {@}, requestId = {}, currentTaskId = {n}, "
     "callbackTaskId = {n}",
     E::Ignored, kStepAnswered, "The answer belongs to an older request and was ignored.",
     "answer to the latest request", "task {5}", "task {4}", F::Never, true},
    {"[Ad] Request ad failed, path = {w}, result = {n}, {@}, requestId = {}", E::Refused, kStepAnswered,
     "The exchange with the ad server failed with result {1}.", "exchange", "result {1}", "result 0"},
    {"[Ad] Request ad failed, path = {w}, body parse failed, {@}, requestId = {}", E::Refused, kStepAnswered,
     "The server's answer is not JSON.", "JSON", "not JSON", "JSON"},
    {"[Ad] Request ad failed, path = {w}, response model decode failed, {@}, requestId = {}", E::Refused, kStepAnswered,
     "The server's answer cannot be decoded{reason}.", "decoded", "unfit{reason}", "complete"},
    {"[Ad] Request ad failed, path = {w}, code = {n}, message= {}, {@}, requestId = {}", E::Refused, kStepAnswered,
     "The server refused the request with code {1}: {2}.", "code 0", "code {1}: {2}", "code 0"},
    {"[Ad] Request ad succeed, path = {w}, {@}, requestId = {}", E::Good, kStepKept},
    {"[Ad] {w} decode failed, {} is unvalid", E::Reason, -1, ": {0}: {1}"},
    {"[Ad] adModelList is null, m_{@}", E::Refused, kStepKept, "No list is waiting.", "a list", "none", "a list",
     F::Never, true},
    {"[Ad] Ad type unmatch, adType_local = {t}, adType_svr = {n}, adPosition_local = {p}, adPosition_svr = {n}",
     E::Refused, kStepKept, "The server answered with a list for {1:k} {3}.", "type", "{1:k} {3}", "{0:k} {2}"},
    {"[Ad] Ad position unmatch, adType = {t}, adPosition_svr = {n}, adPosition_local = {p}", E::Refused, kStepKept,
     "The server answered with a list for {0:k} {1}.", "position", "{0:k} {1}", "{0:k} {2}"},
    {"[Ad] Ad list is empty, {@}", E::Refused, kStepKept, "The server has no ad for this user here.", "ads in it", "0",
     "\u2265 1", F::Never, true},
    {"[Ad] CurrentTime < startTime, currentTime = {n}, startTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "starts {1:t}", "starts", "{0:t}", "{1:t}", F::Never, true},
    {"[Ad] CurrentTime > endTime, currentTime = {n}, endTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "ended {1:t}", "ended", "{0:t}", "{1:t}", F::Never, true},
    {"[Ad] CurrentTime > expireTime, currentTime = {n}, expireTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "expired {1:t}", "expired", "{0:t}", "{1:t}", F::Never, true},
    {"[Ad] Ad list has no valid ad. {@}", E::Refused, kStepKept, "No ad of the list is due: {drops}.",
     "an ad that is due", "{drops}", "in its window", F::Window, true},
    {"[Ad] Banner position is null, adType = {t}, m_adPosition = {p}", E::Refused, kStepKept,
     "The list has no layout for a banner.", "layout", "missing", "a layout"},
    {"[Ad] Banner complete callback is null, {@}", E::Refused, kStepKept, "No page waits for the banner any more.",
     "a page waits for it", "none", "a page"},
    {"[Ad] AdPopupModel is null, {@}", E::Refused, kStepKept, "The first ad of the list is no popup.", "a popup first",
     "missing", "a popup"},
    {"[Ad] AdId is null, {@}", E::Refused, kStepKept, "The first ad of the list has no id.", "ad id", "missing",
     "an id"},
    {"[Ad] ShowAreas is null, {@}, adId = {}", E::Refused, kStepKept, "Ad {2} names no area in which to show it.",
     "areas", "missing", "at least one"},
    {"[Ad] Ad popup data is OK, {@}, adId = {}", E::Note, kStepConditions},
    {"[Ad] Try show ad popup, {@}", E::Retried, kStepKept},
    {"[Ad] Cannot show ad popup, adModelList is null, m_{@}", E::Refused, kStepConditions,
     "Its list was taken away meanwhile.", "a list", "none", "a list"},
    {"[Ad] ShowAreas donot contain currentTab, currentTab = {n}, tabFrameKey = {n}, {@}, adId = {}", E::Refused,
     kStepConditions, "Ad {4} is not for the current tab, {0:a}. Open {areas}.", "current tab", "{0:a}, key {1}",
     "{areas}"},
    {"[Ad] CurrentTime donot exceed showInterval. currentTime = {n}, lastShowTime = {n}, showInterval = {n}, {@}, adId "
     "= {}, key = {w}",
     E::Refused, kStepConditions, "A popup was shown at {1:t}, and ad {5} needs {2:s} between two showings.",
     "interval since the last showing", "{0:t}", "more than {2:s} after the last showing, {1:t}", F::AfterSum},
    {"[Ad] Popup isnot allowed to show by uniform resource slot, {@}, adId = {}", E::Refused, kStepConditions,
     "Another interruption holds the shared slot for popups. Wait until it ends, or remove the override.",
     "shared slot", "taken", "free"},
    {"[Ad] Main frame isnot focus in, {@}, adId = {}", E::Refused, kStepConditions,
     "The main window has no focus. Click into it.", "focus", "the main window has no focus", "it has the focus"},
    {"[Ad] Show ad popup Failed, adModelList is null, {@}", E::Refused, kStepPicture,
     "Its list was taken away meanwhile.", "a list", "none", "a list"},
    {"[Ad] Show ad popup start. {@}", E::Note, kStepPicture},
    {"[Ad] Show ad popup failed, adPosition from svr is unknown, {@}, adPositionSvr = {n}", E::Refused, kStepPicture,
     "The list is for {0:k} {2}.", "position", "{0:k} {2}", "{0:k} {1}"},
    {"[Ad] Show ad popup failed, data error, {@}", E::Refused, kStepPicture, "The first ad of the list is no popup.",
     "a popup first", "missing", "a popup"},
    {"[Ad] AddAdBottomPopupView, adPopupModel is null, {@}, adId = {}", E::Refused, kStepPicture,
     "The first ad of the list is no popup.", "a popup first", "missing", "a popup"},
    {"[Ad] AddAdBottomPopupView, adBottomPopupModel is null, {@}, adId = {}", E::Refused, kStepPicture,
     "Ad {2} has no picture and link.", "picture and link", "missing", "both"},
    {"[Ad] AddAdBottomPopupView, spMainFrameInterface is null, {@}, adId = {}", E::Refused, kStepPicture,
     "The main window offers no interface to the module.", "interface of the main window", "missing", "offered"},
    {"[Ad] AddAdBottomPopupView, MainFrame is null, {@}, adId = {}", E::Refused, kStepPicture,
     "There is no main window to show it in.", "main window", "missing", "open"},
    {"[Ad] Create CZRAdBottomPopupView, {@}, adId = {}, pushId = {}, enableClose = {w}, showDuration = {n}s",
     E::Loading, kStepPicture},
    {"[Ad] Show ad banner Failed, adModelList is null, adType = {t}, m_adPosition = {p}", E::Refused, kStepPicture,
     "Its list was taken away meanwhile.", "a list", "none", "a list"},
    {"[Ad] Show ad banner Failed, ad List is null, {@}", E::Refused, kStepPicture, "The list has no ad.", "ads in it",
     "0", "\u2265 1"},
    {"[Ad] Ad banner type is unknown, {@}, bannerType = {n}", E::Refused, kStepPicture,
     "The list has an unknown type of banner, {2}.", "banner type", "{2}", "\u2260 0"},
    {"[Ad] OnImageLoadFailed, adType = {t}, imageUrl = {}, loadCount = {n}, time = {n}", E::PictureFailed, kStepPicture,
     "The picture could not be loaded in {2} tries: {1}.", "picture loaded", "failed at try {2}: {1}", "loaded"},
    {"[Ad] OnImageLoadSucceeded, adId is null, {@}", E::Refused, kStepShown, "The ad has no id.", "ad id", "missing",
     "an id"},
    {"[Ad] Show ad popup failed, adPopupView is null. {@}, adId = {}", E::Refused, kStepShown,
     "The card of ad {2} was removed before its picture came.", "view still there", "gone", "there"},
    {"[Ad] Show ad popup success. {@}, adId = {}, pushId = {}", E::Shown},
    {"[Ad] Create ad banner, {@}", E::Shown},
    {"[Ad] Delete AdPopupView, {@}, adId = {}", E::Gone},
    {"[Ad] Closed ad by tab switched. {@}, adId = {}", E::Closed, kStepShown, "when the tab changed"},
    {"[Ad] Closed ad by timeout. {@}, adId = {}", E::Closed, kStepShown, "when its display time was over"},
    {"[Ad] Closed ad by ad clicked. {@}, adId = {}", E::Closed, kStepShown, "with a click on it"},
    {"[Ad] Closed ad by close button clicked. {@}, adId = {}", E::Closed, kStepShown, "with its close button"},
    {"[Ad] Closed ad by language changed. {@}, adId = {}", E::Closed, kStepShown, "with a change of the language"},
    {"[Ad] Closed ad by login. {@}, adId = {}", E::Closed, kStepShown, "when its page removed it"},
    {"[Ad] Closed ad by logout. {@}, adId = {}", E::Closed, kStepShown, "with the logout"},
    {"[Ad] Closed ad by push offline. {@}, adId = {}", E::ClosedByPush, kStepShown, "when the server took it offline"},
    {"[Ad] Clear ad data. {@}, adId = {}", E::Cleared, kStepKept, "{reason}"},
    {"[Ad] Expose ad start, path = {w}, {@}, adId = {}, exposeId = {}, exposeDuration = {n}, pushId = {}", E::Note, -1,
     "", "", "", "", F::Never, true},
    {"[Ad] Expose ad {w}, path = {w}, {}{@}, adId = {}, exposeId = {}"},
    {"[Ad] AdStatusChangedPush callback,receive cmd 20145, {@}, offlineAdId = {}, delay = {n}", E::Withdrawn, kStepKept,
     "when the server took ad {2} offline"},
    {"[Ad] {w} callback,receive cmd {w}, {@}{}, delay = {n}", E::Pushed},
    {"[Ad] {w} callback, {}", E::Ignored, kStepAsked, "A push was refused: {1}.", "push", "{1}", "a complete push"},
    {"[Ad] Login out", E::Reason, -1, "with the logout"},
    {"[Ad] Language changed", E::Reason, -1, "with the change of the language"},
};

const RowText kRightsRows[] = {
    {"[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready", E::TimerReady},
    {"[Premium] Premium Data Handler Module Uninit Begin", E::TimerStopped},
    {"[Premium] User Login Received, Request All Premium Data From Server", E::Reason, -1, "login"},
    {"[Premium] Hourly Timer Fired, Refresh All Premium Data", E::TimerReady, -1, "hourly"},
    {"[Premium] Language Changed, Refresh All Premium Data", E::Reason, -1, "language"},
    {"[Premium] Send Request For All Premium Access, Session = {s}, Server Push = {w}", E::Asked},
    {"[Premium] Send Request For Custom Premium Access, Count = {n}, Session = {s}, Server Push = {w}", E::Asked},
    {"[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = {s}", E::Refused, kStepAnswered,
     "The answer belongs to no request, and was ignored.", "a known request", "unknown session", "a known session"},
    {"[Premium] Request Failed On Channel Error, Session = {s}, Error = {n}", E::Refused, kStepAnswered,
     "The channel failed with error {1}.", "channel", "channel error {1}", "no error"},
    {"[Premium] Parse Response Failed, Invalid Protobuf Data", E::Refused, kStepKept, "The answer is not readable.",
     "readable", "bad bytes", "an answer"},
    {"[Premium] Parse Response Failed, Missing Code Field", E::Refused, kStepKept, "The answer has no code.", "a code",
     "no code", "a code"},
    {"[Premium] Server Returned Error Code = {n}", E::Refused, kStepKept,
     "The server refused the request with code {0}.", "code 0", "code {0}", "code 0"},
    {"[Premium] Parse Response Success, Premium Data Updated And Saved", E::Good},
    {"[Premium] Premium Change Push Received, Need All Access = {w}, Custom Access Count = {n}, Will Refresh After {n} "
     "Ms",
     E::Pushed},
    {"[Premium] Premium Change Push {}"},
    {"[Premium] Parse Push Failed, Invalid Protobuf Data"},
};

const RowText kVipRows[] = {
    {"[Vip] Send Request For Vip Status From Server", E::Asked},
    {"[Vip] Vip Status Response Failed, Error = 0, Cmd = {n}", E::Refused, kStepAnswered,
     "The answer has the wrong command, {0}.", "command of the answer", "wrong command {0}", "command 20831"},
    {"[Vip] Vip Status Response Failed, Error = {n}, Cmd = {n}", E::Refused, kStepAnswered,
     "The channel failed with error {0}.", "channel", "channel error {0}", "no error"},
    {"[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data", E::Refused, kStepKept,
     "The answer is not readable.", "readable", "bad bytes", "an answer"},
    {"[Vip] Vip Status Updated, {}", E::Good},
    {"[Vip] Clear Vip Status, Reset To Default", E::Good},
    {"[Vip] Vip Status Change Push Received, Will Refresh After {n} Ms", E::Pushed},
    {"[Vip] Vip Status Push {}"},
};

const RowText kWidgetRows[] = {
    {"[Vip] Vip {} Disabled, {}, Premium Access = {s}{}"},
    {"[Vip] Active vip, access = {s}, dataType = {n}, targetUrl = {}", E::Asked, -1, "Clicked"},
    {"[Vip] {}, access = {s}, dataType = {n}{}", E::Asked},
    {"[Vip] Open Vip Web Page failed, strUrl is empty"},
    {"[Vip] RequestActiveVip callback, {}", E::Refused, -1, "Failed: {0}"},
    {"[Vip] Get ActiveVipPopImageUrl failed, {}", E::Note, -1, "Activated, no picture: {0}"},
    {"[Vip] Show popup failed, imageUrl is empty. Show success toast", E::Note, -1,
     "Activated, told by a toast: no picture for market and language"},
    {"[Vip] Show popup failed, {}", E::Refused, -1, "Activated, not told: {0}"},
    {"[Vip] Show popup start, imageUrl = {}", E::Note, -1, "Activated, the picture loads"},
    {"[Vip] OnImageLoadSucceeded, {}", E::Note, -1, "Activated, the picture is shown"},
    {"[Vip] OnImageLoadFailed, {}", E::Refused, -1, "Activated, the picture failed: {0}"},
    {"[Vip] OnImageClicked, {}", E::Note, -1, "Activated, the picture was clicked: {0}"},
    {"[Vip] OnClosed", E::Note, -1, "Activated, the picture was closed"},
};

const RowText kChatRows[] = {
    {"[AIChat] RequestAIChatEnableStatus callback, receive cmd error, error = {n}, cmd = {n}", E::Refused,
     kStepAnswered, "The request for the scenes failed with error {0}.", "answer", "error {0}, command {1}",
     "error 0, command 20982"},
    {"[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = {}", E::Good},
    {"[AIChat] RequestAIChatEnableStatus callback, receive cmd 20832, data parse failed", E::Refused, kStepKept,
     "The answer about the scenes is not readable.", "readable", "bad bytes", "an answer"},
    {"[AIChat] RequestAIChatEnableStatus success, scene = {s}, is_all_open = {w}", E::SceneAnswered},
    {"[AIChat] Is AI chat enable, entryScene = {s}, enable = {w}"},
};

const RowText kChatOpenRows[] = {
    {"[AIChat] Last load is preload, clear web data", E::Reason, -1, "the last load was the preload"},
    {"[AIChat] Create AI chat web dialog", E::Reason, -1, "there was no window"},
    {"[AIChat] Load AI chat page start, pageScene = {s}, isPreload = {w}, hiddenButNotClosed = {w}, url = {}",
     E::Loading},
    {"[AIChat] Load AI chat page end, httpCode = {n}, url = {}", E::Good},
};

QString FormattedValue(const QString& value, const QString& format, qint64 nowMs) {
    const qint64 number = value.toLongLong();
    return format == QLatin1String("t")   ? Clock(number * 1'000, nowMs)
           : format == QLatin1String("s") ? Duration(number)
           : format == QLatin1String("a") ? Area(number)
           : format == QLatin1String("k") ? AdKind(number)
                                          : value;
}

}  // namespace

QString PatternOf(const char* text) {
    return QString::fromUtf8(text).replace("{@}"_q, "adType = {t}, adPosition = {p}"_q);
}

const std::vector<Row>& All() {
    static const std::vector<Row> rows = [] {
        const QRegularExpression mark("\\{[a-z]?\\}"_q);
        const QRegularExpression number("\\\\\\{[a-z]\\\\\\}"_q);
        std::vector<Row> all;
        const auto add = [&](const auto& group, EnKind kind) {
            for (const RowText& row : group) {
                const QString text = PatternOf(row.text);
                QStringList marks;
                for (auto matches = mark.globalMatch(text); matches.hasNext();) {
                    marks << matches.next().captured();
                }
                QString expression = QRegularExpression::escape(text).replace("\\{w\\}"_q, "(\\S+)"_q);
                expression.replace(number, "(-?\\d+)"_q).replace("\\{\\}"_q, "(.*)"_q);
                all.push_back({row, kind, std::max(marks.indexOf("{t}"_q), marks.indexOf("{s}"_q)),
                               marks.indexOf("{p}"_q), text.left(text.indexOf(QLatin1Char('{'))),
                               QRegularExpression(QRegularExpression::anchoredPattern(expression),
                                                  QRegularExpression::DotMatchesEverythingOption)});
            }
        };
        add(kAdRows, EnKind::Ad);
        add(kRightsRows, EnKind::Rights);
        add(kVipRows, EnKind::Vip);
        add(kWidgetRows, EnKind::Widget);
        add(kChatRows, EnKind::Chat);
        add(kChatOpenRows, EnKind::ChatOpen);
        return all;
    }();
    return rows;
}

QStringList StepNames(EnKind kind) {
    static const std::map<EnKind, QString> names{
        {EnKind::Ad, "asked answered kept conditions picture shown"_q},
        {EnKind::Rights, "asked answered taken"_q},
        {EnKind::Vip, "asked answered taken member"_q},
        {EnKind::Widget, "asked answered taken listed held"_q},
        {EnKind::Chat, "asked answered taken open"_q},
        {EnKind::ChatOpen, "asked loaded arrived"_q},
    };
    return names.at(kind).split(QLatin1Char(' '));
}

std::optional<ParsedLine> Read(const QString& text) {
    for (const Row& row : All()) {
        const QRegularExpressionMatch match =
            text.startsWith(row.begin) ? row.expression.match(text) : QRegularExpressionMatch();
        if (match.hasMatch()) {
            ParsedLine line{&row, match.capturedTexts().mid(1), text};
            for (int index = 0; index < line.values.size(); ++index) {
                line.values[index] = readable::FromLatin1(line.values[index]).value_or(line.values[index]);
            }
            return line;
        }
    }
    return std::nullopt;
}

bool IsExpectedError(const QString& text) {
    const auto line = Read(text);
    return line && line->row->isNormal;
}

QString Filled(const char* text, const ParsedLine& line, qint64 nowMs) {
    static const QRegularExpression mark("\\{(\\w+)(?::(\\w))?\\}"_q);
    const QString pattern = QString::fromUtf8(text);
    QString filled;
    int done = 0;
    for (auto matches = mark.globalMatch(pattern); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(1);
        const QString value = FormattedValue(line.values.value(name.toInt()), match.captured(2), nowMs);
        filled += pattern.mid(done, match.capturedStart() - done) + line.words.value(name, value);
        done = match.capturedEnd();
    }
    filled += pattern.midRef(done);
    return filled.replace(": ."_q, "."_q);
}

QString Clock(qint64 timeMs, qint64 nowMs) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(timeMs);
    const bool isToday = time.date() == QDateTime::fromMSecsSinceEpoch(nowMs).date();
    return time.toString(isToday ? "HH:mm:ss"_q : "yyyy-MM-dd HH:mm:ss"_q);
}

QString Duration(qint64 seconds) {
    QStringList parts;
    for (const auto& [length, name] : {std::pair(86'400, "d"), {3'600, "h"}, {60, "min"}, {1, "s"}}) {
        if (seconds >= length && parts.size() < 2) {
            parts << "%1 %2"_q.arg(seconds / length).arg(QLatin1String(name));
            seconds %= length;
        }
    }
    return parts.isEmpty() ? "0 s"_q : parts.join(QLatin1Char(' '));
}

QString Area(qint64 area) {
    constexpr int kFirst = 500;
    static const QStringList tabs =
        "Watchlist,Quotes,Research,Account,News,Market,Alerts,Portfolio"_q.split(QLatin1Char(','));
    return "%1 (area %2)"_q.arg(tabs.value(int(area) - kFirst, "no tab"_q)).arg(area);
}

QString AdKind(qint64 type) {
    return type == 2 ? "Popup"_q : type == 3 ? "Banner"_q : "Type %1"_q.arg(type);
}

}  // namespace log_table
