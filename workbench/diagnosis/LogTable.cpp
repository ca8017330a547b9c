#include "workbench/diagnosis/LogTable.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "workbench/FieldNode.h"
#include "workbench/ads/AdTabs.h"

namespace log_table {
namespace {

// One refusal of a condition or of the list is a line for each place that the module checks it.
using E = EnEvent;
using F = EnFree;

const Row kAdRows[] = {
    {"[Ad] Request ad limited. currentTimeStamp = {n}, lastRequestTimeStamp = {n}, requestInterval = {n}, {@}",
     E::Refused, kStepAsked, "pause between requests", "{0:t}", "{2:s} after the last request, {1:t}",
     "It asked again less than {2:s} after its last request.", F::Sum},
    {"[Ad] Request ad start, path = {w}, {@}, adIdList = {}, requestId = {}", E::Asked},
    {"[Ad] Request ad failed, requestTaskId = 0, path = {w}, {@}, requestId = {}", E::Refused, kStepAnswered, "sent",
     "not sent", "sent", "The request could not be sent."},
    {"[Ad] Request ad callback, requestTaskId unmatched, path = {w}, {@}, requestId = {}, currentTaskId = {n}, "
     "callbackTaskId = {n}",
     E::Refused, kStepAnswered, "answer to the latest request", "task {5}", "task {4}",
     "The answer belongs to an older request and was ignored.", F::Never, true},
    {"[Ad] Request ad failed, path = {w}, result = {n}, {@}, requestId = {}", E::Refused, kStepAnswered, "exchange",
     "result {1}", "result 0", "The exchange with the ad server failed with result {1}."},
    {"[Ad] Request ad failed, path = {w}, body parse failed, {@}, requestId = {}", E::Refused, kStepAnswered, "JSON",
     "not JSON", "JSON", "The server's answer is not JSON."},
    {"[Ad] Request ad failed, path = {w}, response model decode failed, {@}, requestId = {}", E::Refused, kStepAnswered,
     "decoded", "unfit{reason}", "complete", "The server's answer cannot be decoded{reason}."},
    {"[Ad] Request ad failed, path = {w}, code = {n}, message= {}, {@}, requestId = {}", E::Refused, kStepAnswered,
     "code 0", "code {1}: {2}", "code 0", "The server refused the request with code {1}: {2}."},
    {"[Ad] Request ad succeed, path = {w}, {@}, requestId = {}", E::Answered},
    {"[Ad] {w} decode failed, {} is unvalid", E::Undecodable},
    {"[Ad] adModelList is null, m_{@}", E::Refused, kStepKept, "a list", "none", "a list", "No list is waiting.",
     F::Never, true},
    {"[Ad] Ad type unmatch, adType_local = {t}, adType_svr = {n}, adPosition_local = {p}, adPosition_svr = {n}",
     E::Refused, kStepKept, "type", "{1:k} {3}", "{0:k} {2}", "The server answered with a list for {1:k} {3}."},
    {"[Ad] Ad position unmatch, adType = {t}, adPosition_svr = {n}, adPosition_local = {p}", E::Refused, kStepKept,
     "position", "{0:k} {1}", "{0:k} {2}", "The server answered with a list for {0:k} {1}."},
    {"[Ad] Ad list is empty, {@}", E::Refused, kStepKept, "ads in it", "0", "\u2265 1",
     "The server has no ad for this user here.", F::Never, true},
    {"[Ad] CurrentTime < startTime, currentTime = {n}, startTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "starts", "{0:t}", "{1:t}", "starts {1:t}", F::Never, true},
    {"[Ad] CurrentTime > endTime, currentTime = {n}, endTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "ended", "{0:t}", "{1:t}", "ended {1:t}", F::Never, true},
    {"[Ad] CurrentTime > expireTime, currentTime = {n}, expireTime = {n}, {@}, remove adId = {}", E::Dropped, kStepKept,
     "expired", "{0:t}", "{1:t}", "expired {1:t}", F::Never, true},
    {"[Ad] Ad list has no valid ad. {@}", E::Refused, kStepKept, "an ad that is due", "{drops}", "in its window",
     "No ad of the list is due: {drops}.", F::Window, true},
    {"[Ad] Banner position is null, adType = {t}, m_adPosition = {p}", E::Refused, kStepKept, "layout", "missing",
     "a layout", "The list has no layout for a banner."},
    {"[Ad] Banner complete callback is null, {@}", E::Refused, kStepKept, "a page waits for it", "none", "a page",
     "No page waits for the banner any more."},
    {"[Ad] AdPopupModel is null, {@}", E::Refused, kStepKept, "a popup first", "missing", "a popup",
     "The first ad of the list is no popup."},
    {"[Ad] AdId is null, {@}", E::Refused, kStepKept, "ad id", "missing", "an id",
     "The first ad of the list has no id."},
    {"[Ad] ShowAreas is null, {@}, adId = {}", E::Refused, kStepKept, "areas", "missing", "at least one",
     "Ad {2} names no area in which to show it."},
    {"[Ad] Ad popup data is OK, {@}, adId = {}", E::Passed, kStepKept},
    {"[Ad] Try show ad popup, {@}", E::Retried},
    {"[Ad] Cannot show ad popup, adModelList is null, m_{@}", E::Refused, kStepConditions, "a list", "none", "a list",
     "Its list was taken away meanwhile."},
    {"[Ad] ShowAreas donot contain currentTab, currentTab = {n}, tabFrameKey = {n}, {@}, adId = {}", E::Refused,
     kStepConditions, "current tab", "{0:a}, key {1}", "{areas}",
     "Ad {4} is not for the current tab, {0:a}. Open {areas}."},
    {"[Ad] CurrentTime donot exceed showInterval. currentTime = {n}, lastShowTime = {n}, showInterval = {n}, {@}, adId "
     "= {}, key = {w}",
     E::Refused, kStepConditions, "interval since the last showing", "{0:t}",
     "more than {2:s} after the last showing, {1:t}",
     "A popup was shown at {1:t}, and ad {5} needs {2:s} between two showings.", F::AfterSum},
    {"[Ad] Popup isnot allowed to show by uniform resource slot, {@}, adId = {}", E::Refused, kStepConditions,
     "shared slot", "taken", "free",
     "Another interruption holds the shared slot for popups. Wait until it ends, or remove the override."},
    {"[Ad] Main frame isnot focus in, {@}, adId = {}", E::Refused, kStepConditions, "focus",
     "the main window has no focus", "it has the focus", "The main window has no focus. Click into it."},
    {"[Ad] Show ad popup Failed, adModelList is null, {@}", E::Refused, kStepPicture, "a list", "none", "a list",
     "Its list was taken away meanwhile."},
    {"[Ad] Show ad popup start. {@}", E::Passed, kStepConditions},
    {"[Ad] Show ad popup failed, adPosition from svr is unknown, {@}, adPositionSvr = {n}", E::Refused, kStepPicture,
     "position", "{0:k} {2}", "{0:k} {1}", "The list is for {0:k} {2}."},
    {"[Ad] Show ad popup failed, data error, {@}", E::Refused, kStepPicture, "a popup first", "missing", "a popup",
     "The first ad of the list is no popup."},
    {"[Ad] AddAdBottomPopupView, adPopupModel is null, {@}, adId = {}", E::Refused, kStepPicture, "a popup first",
     "missing", "a popup", "The first ad of the list is no popup."},
    {"[Ad] AddAdBottomPopupView, adBottomPopupModel is null, {@}, adId = {}", E::Refused, kStepPicture,
     "picture and link", "missing", "both", "Ad {2} has no picture and link."},
    {"[Ad] AddAdBottomPopupView, spMainFrameInterface is null, {@}, adId = {}", E::Refused, kStepPicture,
     "interface of the main window", "missing", "offered", "The main window offers no interface to the module."},
    {"[Ad] AddAdBottomPopupView, MainFrame is null, {@}, adId = {}", E::Refused, kStepPicture, "main window", "missing",
     "open", "There is no main window to show it in."},
    {"[Ad] Create CZRAdBottomPopupView, {@}, adId = {}, pushId = {}, enableClose = {w}, showDuration = {n}s",
     E::Loading},
    {"[Ad] Show ad banner Failed, adModelList is null, adType = {t}, m_adPosition = {p}", E::Refused, kStepPicture,
     "a list", "none", "a list", "Its list was taken away meanwhile."},
    {"[Ad] Show ad banner Failed, ad List is null, {@}", E::Refused, kStepPicture, "ads in it", "0", "\u2265 1",
     "The list has no ad."},
    {"[Ad] Ad banner type is unknown, {@}, bannerType = {n}", E::Refused, kStepPicture, "banner type", "{2}",
     "\u2260 0", "The list has an unknown type of banner, {2}."},
    {"[Ad] OnImageLoadFailed, adType = {t}, imageUrl = {}, loadCount = {n}, time = {n}", E::PictureFailed, kStepPicture,
     "picture loaded", "failed at try {2}: {1}", "loaded", "The picture could not be loaded in {2} tries: {1}."},
    {"[Ad] OnImageLoadSucceeded, adId is null, {@}", E::Refused, kStepShown, "ad id", "missing", "an id",
     "The ad has no id."},
    {"[Ad] Show ad popup failed, adPopupView is null. {@}, adId = {}", E::Refused, kStepShown, "view still there",
     "gone", "there", "The card of ad {2} was removed before its picture came."},
    {"[Ad] Show ad popup success. {@}, adId = {}, pushId = {}", E::Shown},
    {"[Ad] Create ad banner, {@}", E::Shown},
    {"[Ad] Delete AdPopupView, {@}, adId = {}", E::Gone},
    {"[Ad] Closed ad by {}. {@}, adId = {}", E::Closed},
    {"[Ad] Clear ad data. {@}, adId = {}", E::Cleared},
    {"[Ad] Expose ad start, path = {w}, {@}, adId = {}, exposeId = {}, exposeDuration = {n}, pushId = {}", E::Note, -1,
     "", "", "", "", F::Never, true},
    {"[Ad] Expose ad failed, path = {w}, ExposeTaskID  = 0, {@}, adId = {}, exposeId = {}", E::Note},
    {"[Ad] Expose ad failed, path = {w}, result = {n}, {@}, adId = {}, exposeId = {}", E::Note},
    {"[Ad] Expose ad failed, path = {w}, body parse failed, errorCode = {n}, httpCode = {n}, {@}, adId = {}, exposeId "
     "= {}",
     E::Note},
    {"[Ad] Expose ad failed, path = {w}, code = {n}, {@}, adId = {}, exposeId = {}", E::Note},
    {"[Ad] Expose ad succeed, path = {w}, {@}, adId = {}, exposeId = {}", E::Note},
    {"[Ad] AdPush callback,receive cmd 20171, {@}, delay = {n}", E::Pushed},
    {"[Ad] AdStatusChangedPush callback,receive cmd 20145, {@}, offlineAdId = {}, delay = {n}", E::Withdrawn, kStepKept,
     "withdrawn", "{2}", "none", "The server took ad {2} offline."},
    {"[Ad] AdCheckPush callback,receive cmd 20170, {@}, adId = {}, delay = {n}", E::Pushed},
    {"[Ad] AdPush callback, {}", E::PushRefused, kStepAsked, "push", "{0}", "a complete push",
     "A push was refused: {0}."},
    {"[Ad] AdStatusChangedPush callback, {}", E::PushRefused, kStepAsked, "push", "{0}", "a complete push",
     "A push was refused: {0}."},
    {"[Ad] AdCheckPush callback, {}", E::PushRefused, kStepAsked, "push", "{0}", "a complete push",
     "A push was refused: {0}."},
    {"[Ad] Login out", E::LoggedOut},
    {"[Ad] Language changed", E::OtherLanguage},
};

const Row kRightsRows[] = {
    {"[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready", E::TimerReady},
    {"[Premium] Premium Data Handler Module Uninit Begin", E::TimerStopped},
    {"[Premium] User Login Received, Request All Premium Data From Server", E::ForLogin},
    {"[Premium] Hourly Timer Fired, Refresh All Premium Data", E::ForHour},
    {"[Premium] Language Changed, Refresh All Premium Data", E::ForLanguage},
    {"[Premium] Send Request For All Premium Access, Session = {s}, Server Push = {w}", E::Asked},
    {"[Premium] Send Request For Custom Premium Access, Count = {n}, Session = {s}, Server Push = {w}", E::Asked},
    {"[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = {s}", E::Refused, kStepAnswered,
     "a known request", "unknown session", "a known session", "The answer belongs to no request, and was ignored."},
    {"[Premium] Request Failed On Channel Error, Session = {s}, Error = {n}", E::Refused, kStepAnswered, "channel",
     "channel error {1}", "no error", "The channel failed with error {1}."},
    {"[Premium] Parse Response Failed, Invalid Protobuf Data", E::Refused, kStepKept, "readable", "bad bytes",
     "an answer", "The answer is not readable."},
    {"[Premium] Parse Response Failed, Missing Code Field", E::Refused, kStepKept, "a code", "no code", "a code",
     "The answer has no code."},
    {"[Premium] Server Returned Error Code = {n}", E::Refused, kStepKept, "code 0", "code {0}", "code 0",
     "The server refused the request with code {0}."},
    {"[Premium] Parse Response Success, Premium Data Updated And Saved", E::Good},
    {"[Premium] Premium Change Push Received, Need All Access = {w}, Custom Access Count = {n}, Will Refresh After {n} "
     "Ms",
     E::Pushed},
    {"[Premium] Premium Change Push Failed, Error = {n}, Data Empty = {w}", E::PushRefused},
    {"[Premium] Parse Push Failed, Invalid Protobuf Data", E::PushRefused},
    {"[Premium] Premium Change Push Received But No Delay Field, Ignored", E::PushRefused},
};

const Row kVipRows[] = {
    {"[Vip] Send Request For Vip Status From Server", E::Asked},
    {"[Vip] Vip Status Response Failed, Error = {n}, Cmd = {n}", E::Refused, kStepAnswered, "command of the answer",
     "wrong command {1}", "command 20831", "The answer has the wrong command, {1}."},
    {"[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data", E::Refused, kStepKept, "readable", "bad bytes",
     "an answer", "The answer is not readable."},
    {"[Vip] Vip Status Updated, Level = {n}, Vip State = {n}, Version = {n}, New Vip State = {n}, Sub State = {n}, "
     "Auto Renewal = {w}",
     E::Good},
    {"[Vip] Clear Vip Status, Reset To Default", E::Good},
    {"[Vip] Vip Status Change Push Received, Will Refresh After {n} Ms", E::Pushed},
    {"[Vip] Vip Status Push Failed, Error = {n}, Cmd = {n}", E::PushRefused},
    {"[Vip] Vip Status Push Parse Failed, Invalid Protobuf Data", E::PushRefused},
};

const Row kWidgetRows[] = {
    {"[Vip] Vip Icon Disabled, New Vip System, Premium Access = {s}", E::Refused, -1, "Icon", "newer system"},
    {"[Vip] Vip Icon Disabled, Activation Source Not Vip, Premium Access = {s}, Activation Source = {n}", E::Refused,
     -1, "Icon", "activation source"},
    {"[Vip] Vip Icon Disabled, Unknown Activation Type, Premium Access = {s}", E::Refused, -1, "Icon",
     "activation type"},
    {"[Vip] Vip Tag Disabled, Activation Source Not Vip, Premium Access = {s}, Activation Source = {n}", E::Refused, -1,
     "Tag", "activation source"},
    {"[Vip] Vip Tag Disabled, Activation Type Not Full, Premium Access = {s}", E::Refused, -1, "Tag",
     "activation type"},
    {"[Vip] Vip Banner Disabled, UI Type Mismatch, Premium Access = {s}, UI Type = {}", E::Refused, -1, "Banner",
     "UI type"},
    {"[Vip] Vip Banner Disabled, Activation Type Mismatch, Premium Access = {s}, Activation Type = {n}", E::Refused, -1,
     "Banner", "activation type"},
    {"[Vip] Vip Banner Disabled, Empty Premium Data, Premium Access = {s}, Data Type = {n}", E::Refused, -1, "Banner",
     "texts"},
    {"[Vip] Vip Locked Mask Disabled, UI Type Mismatch, Premium Access = {s}, UI Type = {}", E::Refused, -1,
     "Locked mask", "UI type"},
    {"[Vip] Vip Locked Mask Disabled, Activation Type Mismatch, Premium Access = {s}, Activation Type = {n}, Data Type "
     "= {n}",
     E::Refused, -1, "Locked mask", "activation type"},
    {"[Vip] Vip Locked Mask Disabled, Empty Premium Data, Premium Access = {s}, Data Type = {n}", E::Refused, -1,
     "Locked mask", "texts"},
    {"[Vip] Vip Exclusive Mask Disabled, UI Type Mismatch, Premium Access = {s}, UI Type = {}", E::Refused, -1,
     "Exclusive mask", "UI type"},
    {"[Vip] Vip Exclusive Mask Disabled, Activation Type Mismatch, Premium Access = {s}, Activation Type = {n}, Data "
     "Type = {n}",
     E::Refused, -1, "Exclusive mask", "activation type"},
    {"[Vip] Vip Exclusive Mask Disabled, Empty Premium Data, Premium Access = {s}, Data Type = {n}", E::Refused, -1,
     "Exclusive mask", "texts"},
};

const Row kActivationRows[] = {
    {"[Vip] Active vip, access = {s}, dataType = {n}, targetUrl = {}", E::Asked},
    {"[Vip] Click vip widget failed, btnUrlID = 0, access = {s}, dataType = {n}", E::Asked},
    {"[Vip] Click vip widget, access = {s}, dataType = {n}, btnUrlID = {n}, url = {}", E::Asked},
    {"[Vip] Open Vip Web Page failed, strUrl is empty", E::Note},
    {"[Vip] RequestActiveVip callback, receive cmd error, error = {n}, cmd = {n}", E::Note},
    {"[Vip] RequestActiveVip callback, receive cmd 20981, data parse failed", E::Note},
    {"[Vip] RequestActiveVip callback, active failed, code = {n}, message = {}", E::Note},
    {"[Vip] Show popup failed, parent is empty", E::Note},
    {"[Vip] Show popup failed, imageUrl is empty. Show success toast", E::Note},
    {"[Vip] Show popup start, imageUrl = {}", E::Note},
};

const Row kChatRows[] = {
    {"[AIChat] OnLogin, preload AI chat web page", E::Asked},
    {"[AIChat] RequestAIChatEnableStatus callback, receive cmd error, error = {n}, cmd = {n}", E::Refused,
     kStepAnswered, "answer", "error {0}, command {1}", "error 0, command 20982",
     "The request for the scenes failed with error {0}."},
    {"[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = {}", E::Answered},
    {"[AIChat] RequestAIChatEnableStatus callback, receive cmd 20832, data parse failed", E::Refused, kStepKept,
     "readable", "bad bytes", "an answer", "The answer about the scenes is not readable."},
    {"[AIChat] RequestAIChatEnableStatus success, scene = {s}, is_all_open = {w}", E::SceneAnswered},
    {"[AIChat] Is AI chat enable, entryScene = {s}, enable = {w}", E::Note},
};

const Row kChatOpenRows[] = {
    {"[AIChat] Last load is preload, clear web data", E::Cleaned},
    {"[AIChat] Create AI chat web dialog", E::Created},
    {"[AIChat] Load AI chat page start, pageScene = {s}, isPreload = {w}, hiddenButNotClosed = {w}, url = {}",
     E::Loaded},
    {"[AIChat] Load AI chat page end, httpCode = {n}, url = {}", E::LoadEnded},
};

QStringList MarksOf(const char* text) {
    static const QRegularExpression mark("\\{[a-z]?\\}"_q);
    QStringList marks;
    auto matches = mark.globalMatch(PatternOf(text));
    while (matches.hasNext()) {
        marks << matches.next().captured();
    }
    return marks;
}

struct Pattern {
    const Row* row;
    QString begin;  // up to the first placeholder; comparing it avoids most expressions
    QRegularExpression expression;
};

// Patterns with the longest literal begin are tried first.
std::vector<Pattern> Patterns() {
    std::vector<Pattern> patterns;
    for (const Row& row : All()) {
        const QString text = PatternOf(row.text);
        QString expression = QRegularExpression::escape(text);
        for (const char* number : {"n", "t", "p", "s"}) {
            expression.replace("\\{%1\\}"_q.arg(QLatin1String(number)), "(-?\\d+)"_q);
        }
        expression.replace("\\{w\\}"_q, "(\\S+)"_q).replace("\\{\\}"_q, "(.*)"_q);
        patterns.push_back({&row, text.left(text.indexOf(QLatin1Char('{'))),
                            QRegularExpression(QRegularExpression::anchoredPattern(expression),
                                               QRegularExpression::DotMatchesEverythingOption)});
    }
    std::stable_sort(patterns.begin(), patterns.end(),
                     [](const Pattern& left, const Pattern& right) { return left.begin.size() > right.begin.size(); });
    return patterns;
}

QString FormattedValue(const QString& value, QChar format, qint64 nowMs) {
    switch (format.toLatin1()) {
        case 't':
            return Clock(value.toLongLong() * 1'000, nowMs);
        case 's':
            return Duration(value.toLongLong());
        case 'a':
            return Area(value.toLongLong());
        case 'k':
            return AdKind(value.toLongLong());
        default:
            return value;
    }
}

}  // namespace

QString PatternOf(const char* text) {
    return QString::fromUtf8(text).replace("{@}"_q, "adType = {t}, adPosition = {p}"_q);
}

const std::vector<Row>& All() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> all;
        const auto add = [&all](const auto& group, EnKind kind) {
            for (Row row : group) {
                row.kind = kind;
                const QStringList marks = MarksOf(row.text);
                row.at = std::max(marks.indexOf("{t}"_q), marks.indexOf("{s}"_q));
                row.position = marks.indexOf("{p}"_q);
                all.push_back(row);
            }
        };
        add(kAdRows, EnKind::Ad);
        add(kRightsRows, EnKind::Rights);
        add(kVipRows, EnKind::Vip);
        add(kWidgetRows, EnKind::Widget);
        add(kActivationRows, EnKind::Activation);
        add(kChatRows, EnKind::Chat);
        add(kChatOpenRows, EnKind::ChatOpen);
        return all;
    }();
    return rows;
}

QStringList StepNames(EnKind kind) {
    static const std::map<EnKind, const char*> names{{EnKind::Ad, "asked answered kept conditions picture shown"},
                                                     {EnKind::Widget, "asked answered taken listed held"},
                                                     {EnKind::Vip, "asked answered taken member"},
                                                     {EnKind::Chat, "asked answered taken open"},
                                                     {EnKind::ChatOpen, "asked loaded arrived"},
                                                     {EnKind::Rights, "asked answered taken"}};
    return QString::fromUtf8(names.at(kind)).split(QLatin1Char(' '));
}

std::optional<ParsedLine> Read(const QString& text) {
    static const std::vector<Pattern> patterns = Patterns();
    for (const Pattern& pattern : patterns) {
        if (!text.startsWith(pattern.begin)) {
            continue;
        }
        const QRegularExpressionMatch match = pattern.expression.match(text);
        if (match.hasMatch()) {
            ParsedLine line{pattern.row, {}, text};
            const QStringList values = match.capturedTexts().mid(1);
            for (const QString& value : values) {
                line.values << readable::FromLatin1(value).value_or(value);
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
    static const QRegularExpression mark("\\{(\\d+)(?::(\\w))?\\}"_q);
    const QString pattern = QString::fromUtf8(text);
    QString filled;
    int done = 0;
    auto matches = mark.globalMatch(pattern);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString format = match.captured(2);
        filled += pattern.mid(done, match.capturedStart() - done) +
                  FormattedValue(line.values.value(match.captured(1).toInt()),
                                 format.isEmpty() ? QChar() : format.front(), nowMs);
        done = match.capturedEnd();
    }
    return filled + pattern.mid(done);
}

QString Clock(qint64 timeMs, qint64 nowMs) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(timeMs);
    const bool isToday = time.date() == QDateTime::fromMSecsSinceEpoch(nowMs).date();
    return time.toString(isToday ? "HH:mm:ss"_q : "yyyy-MM-dd HH:mm:ss"_q);
}

QString Duration(qint64 seconds) {
    static const std::array<std::pair<qint64, const char*>, 4> units{
        std::make_pair(86'400, "d"), std::make_pair(3'600, "h"), std::make_pair(60, "min"), std::make_pair(1, "s")};
    QStringList parts;
    for (const auto& [length, name] : units) {
        if (seconds >= length && parts.size() < 2) {
            parts << "%1 %2"_q.arg(seconds / length).arg(QLatin1String(name));
            seconds %= length;
        }
    }
    return parts.isEmpty() ? "0 s"_q : parts.join(QLatin1Char(' '));
}

QString Area(qint64 area) {
    const auto tab =
        std::find_if(kAdTabs.begin(), kAdTabs.end(), [area](const AdTab& one) { return one.area == area; });
    if (tab != kAdTabs.end()) {
        for (const TabPage& page : kTabPages) {
            if (page.tab == tab->tab) {
                return "%1 (area %2)"_q.arg(QString::fromUtf8(page.page.title)).arg(area);
            }
        }
    }
    return "no tab (area %1)"_q.arg(area);
}

QString AdKind(qint64 type) {
    return type == 2 ? "Popup"_q : type == 3 ? "Banner"_q : "Type %1"_q.arg(type);
}

}  // namespace log_table
