#include "workbench/diagnosis/LogTable.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <utility>

#include "workbench/ReadableBytes.h"
#include "workbench/ads/AdTabs.h"

namespace log_table {
namespace {

// One refusal of a condition or of the list is a line for each place that the module checks it.
std::vector<Row> AdRows() {
    using E = EnEvent;
    using F = EnFree;
    constexpr EnKind kAd = EnKind::Ad;
    return {
        {"[Ad] Request ad limited. currentTimeStamp = {n}, lastRequestTimeStamp = {n}, requestInterval = {n}, "
         "adType = {n}, adPosition = {n}",
         kAd, E::Refused, 3, 4, kStepAsked, "pause between requests", "{0:t}", "{2:s} after the last request, {1:t}",
         "It asked again less than {2:s} after its last request.", F::Sum},
        {"[Ad] Request ad start, path = {w}, adType = {n}, adPosition = {n}, adIdList = {}, requestId = {}", kAd,
         E::Asked, 1, 2},
        {"[Ad] Request ad failed, requestTaskId = 0, path = {w}, adType = {n}, adPosition = {n}, requestId = {}", kAd,
         E::Refused, 1, 2, kStepAnswered, "sent", "not sent", "sent", "The request could not be sent."},
        {"[Ad] Request ad callback, requestTaskId unmatched, path = {w}, adType = {n}, adPosition = {n}, "
         "requestId = {}, currentTaskId = {n}, callbackTaskId = {n}",
         kAd, E::Refused, 1, 2, kStepAnswered, "answer to the latest request", "task {5}", "task {4}",
         "The answer belongs to an older request and was ignored.", F::Never, true},
        {"[Ad] Request ad failed, path = {w}, result = {n}, adType = {n}, adPosition = {n}, requestId = {}", kAd,
         E::Refused, 2, 3, kStepAnswered, "exchange", "result {1}", "result 0",
         "The exchange with the ad server failed with result {1}."},
        {"[Ad] Request ad failed, path = {w}, body parse failed, adType = {n}, adPosition = {n}, requestId = {}", kAd,
         E::Refused, 1, 2, kStepAnswered, "JSON", "not JSON", "JSON", "The server's answer is not JSON."},
        {"[Ad] Request ad failed, path = {w}, response model decode failed, adType = {n}, adPosition = {n}, "
         "requestId = {}",
         kAd, E::Refused, 1, 2, kStepAnswered, "decoded", "unfit{reason}", "complete",
         "The server's answer cannot be decoded{reason}."},
        {"[Ad] Request ad failed, path = {w}, code = {n}, message= {}, adType = {n}, adPosition = {n}, "
         "requestId = {}",
         kAd, E::Refused, 3, 4, kStepAnswered, "code 0", "code {1}: {2}", "code 0",
         "The server refused the request with code {1}: {2}."},
        {"[Ad] Request ad succeed, path = {w}, adType = {n}, adPosition = {n}, requestId = {}", kAd, E::Answered, 1, 2},
        {"[Ad] {w} decode failed, {} is unvalid", kAd, E::Undecodable},
        {"[Ad] adModelList is null, m_adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept, "a list",
         "none", "a list", "No list is waiting.", F::Never, true},
        {"[Ad] Ad type unmatch, adType_local = {n}, adType_svr = {n}, adPosition_local = {n}, adPosition_svr = {n}",
         kAd, E::Refused, 0, 2, kStepKept, "type", "{1:k} {3}", "{0:k} {2}",
         "The server answered with a list for {1:k} {3}."},
        {"[Ad] Ad position unmatch, adType = {n}, adPosition_svr = {n}, adPosition_local = {n}", kAd, E::Refused, 0, 2,
         kStepKept, "position", "{0:k} {1}", "{0:k} {2}", "The server answered with a list for {0:k} {1}."},
        {"[Ad] Ad list is empty, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept, "ads in it", "0",
         "\u2265 1", "The server has no ad for this user here.", F::Never, true},
        {"[Ad] CurrentTime < startTime, currentTime = {n}, startTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}",
         kAd, E::Dropped, 2, 3, kStepKept, "starts", "{0:t}", "{1:t}", "starts {1:t}", F::Never, true},
        {"[Ad] CurrentTime > endTime, currentTime = {n}, endTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}",
         kAd, E::Dropped, 2, 3, kStepKept, "ended", "{0:t}", "{1:t}", "ended {1:t}", F::Never, true},
        {"[Ad] CurrentTime > expireTime, currentTime = {n}, expireTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}",
         kAd, E::Dropped, 2, 3, kStepKept, "expired", "{0:t}", "{1:t}", "expired {1:t}", F::Never, true},
        {"[Ad] Ad list has no valid ad. adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept,
         "an ad that is due", "{drops}", "in its window", "No ad of the list is due: {drops}.", F::Window, true},
        {"[Ad] Banner position is null, adType = {n}, m_adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept, "layout",
         "missing", "a layout", "The list has no layout for a banner."},
        {"[Ad] Banner complete callback is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept,
         "a page waits for it", "none", "a page", "No page waits for the banner any more."},
        {"[Ad] AdPopupModel is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept, "a popup first",
         "missing", "a popup", "The first ad of the list is no popup."},
        {"[Ad] AdId is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepKept, "ad id", "missing",
         "an id", "The first ad of the list has no id."},
        {"[Ad] ShowAreas is null, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Refused, 0, 1, kStepKept, "areas",
         "missing", "at least one", "Ad {2} names no area in which to show it."},
        {"[Ad] Ad popup data is OK, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Passed, 0, 1, kStepKept},
        {"[Ad] Try show ad popup, adType = {n}, adPosition = {n}", kAd, E::Retried, 0, 1},
        {"[Ad] Cannot show ad popup, adModelList is null, m_adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1,
         kStepConditions, "a list", "none", "a list", "Its list was taken away meanwhile."},
        {"[Ad] ShowAreas donot contain currentTab, currentTab = {n}, tabFrameKey = {n}, adType = {n}, adPosition = "
         "{n}, adId = {}",
         kAd, E::Refused, 2, 3, kStepConditions, "current tab", "{0:a}, key {1}", "{areas}",
         "Ad {4} is not for the current tab, {0:a}. Open {areas}."},
        {"[Ad] CurrentTime donot exceed showInterval. currentTime = {n}, lastShowTime = {n}, showInterval = {n}, "
         "adType = {n}, adPosition = {n}, adId = {}, key = {w}",
         kAd, E::Refused, 3, 4, kStepConditions, "interval since the last showing", "{0:t}",
         "more than {2:s} after the last showing, {1:t}",
         "A popup was shown at {1:t}, and ad {5} needs {2:s} between two showings.", F::AfterSum},
        {"[Ad] Popup isnot allowed to show by uniform resource slot, adType = {n}, adPosition = {n}, adId = {}", kAd,
         E::Refused, 0, 1, kStepConditions, "shared slot", "taken", "free",
         "Another interruption holds the shared slot for popups. Wait until it ends, or remove the override."},
        {"[Ad] Main frame isnot focus in, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Refused, 0, 1,
         kStepConditions, "focus", "the main window has no focus", "it has the focus",
         "The main window has no focus. Click into it."},
        {"[Ad] Show ad popup Failed, adModelList is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1,
         kStepPicture, "a list", "none", "a list", "Its list was taken away meanwhile."},
        {"[Ad] Show ad popup start. adType = {n}, adPosition = {n}", kAd, E::Passed, 0, 1, kStepConditions},
        {"[Ad] Show ad popup failed, adPosition from svr is unknown, adType = {n}, adPosition = {n}, adPositionSvr = "
         "{n}",
         kAd, E::Refused, 0, 1, kStepPicture, "position", "{0:k} {2}", "{0:k} {1}", "The list is for {0:k} {2}."},
        {"[Ad] Show ad popup failed, data error, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepPicture,
         "a popup first", "missing", "a popup", "The first ad of the list is no popup."},
        {"[Ad] AddAdBottomPopupView, adPopupModel is null, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Refused,
         0, 1, kStepPicture, "a popup first", "missing", "a popup", "The first ad of the list is no popup."},
        {"[Ad] AddAdBottomPopupView, adBottomPopupModel is null, adType = {n}, adPosition = {n}, adId = {}", kAd,
         E::Refused, 0, 1, kStepPicture, "picture and link", "missing", "both", "Ad {2} has no picture and link."},
        {"[Ad] AddAdBottomPopupView, spMainFrameInterface is null, adType = {n}, adPosition = {n}, adId = {}", kAd,
         E::Refused, 0, 1, kStepPicture, "interface of the main window", "missing", "offered",
         "The main window offers no interface to the module."},
        {"[Ad] AddAdBottomPopupView, MainFrame is null, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Refused, 0,
         1, kStepPicture, "main window", "missing", "open", "There is no main window to show it in."},
        {"[Ad] Create CZRAdBottomPopupView, adType = {n}, adPosition = {n}, adId = {}, pushId = {}, enableClose = {w}, "
         "showDuration = {n}s",
         kAd, E::Loading, 0, 1},
        {"[Ad] Show ad banner Failed, adModelList is null, adType = {n}, m_adPosition = {n}", kAd, E::Refused, 0, 1,
         kStepPicture, "a list", "none", "a list", "Its list was taken away meanwhile."},
        {"[Ad] Show ad banner Failed, ad List is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1,
         kStepPicture, "ads in it", "0", "\u2265 1", "The list has no ad."},
        {"[Ad] Ad banner type is unknown, adType = {n}, adPosition = {n}, bannerType = {n}", kAd, E::Refused, 0, 1,
         kStepPicture, "banner type", "{2}", "\u2260 0", "The list has an unknown type of banner, {2}."},
        {"[Ad] OnImageLoadFailed, adType = {n}, imageUrl = {}, loadCount = {n}, time = {n}", kAd, E::PictureFailed, 0,
         -1, kStepPicture, "picture loaded", "failed at try {2}: {1}", "loaded",
         "The picture could not be loaded in {2} tries: {1}."},
        {"[Ad] OnImageLoadSucceeded, adId is null, adType = {n}, adPosition = {n}", kAd, E::Refused, 0, 1, kStepShown,
         "ad id", "missing", "an id", "The ad has no id."},
        {"[Ad] Show ad popup failed, adPopupView is null. adType = {n}, adPosition = {n}, adId = {}", kAd, E::Refused,
         0, 1, kStepShown, "view still there", "gone", "there",
         "The card of ad {2} was removed before its picture came."},
        {"[Ad] Show ad popup success. adType = {n}, adPosition = {n}, adId = {}, pushId = {}", kAd, E::Shown, 0, 1},
        {"[Ad] Create ad banner, adType = {n}, adPosition = {n}", kAd, E::Shown, 0, 1},
        {"[Ad] Delete AdPopupView, adType = {n}, adPosition = {n}, adId = {}", kAd, E::Gone, 0, 1},
        {"[Ad] Closed ad by {}. adType = {n}, adPosition = {n}, adId = {}", kAd, E::Closed, 1, 2},
        {"[Ad] Clear ad data. adType = {n}, adPosition = {n}, adId = {}", kAd, E::Cleared, 0, 1},
        {"[Ad] Expose ad start, path = {w}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}, "
         "exposeDuration = {n}, pushId = {}",
         kAd, E::Note, 1, 2, -1, "", "", "", "", F::Never, true},
        {"[Ad] Expose ad failed, path = {w}, ExposeTaskID  = 0, adType = {n}, adPosition = {n}, adId = {}, "
         "exposeId = {}",
         kAd, E::Note, 1, 2},
        {"[Ad] Expose ad failed, path = {w}, result = {n}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}",
         kAd, E::Note, 2, 3},
        {"[Ad] Expose ad failed, path = {w}, body parse failed, errorCode = {n}, httpCode = {n}, adType = {n}, "
         "adPosition = {n}, adId = {}, exposeId = {}",
         kAd, E::Note, 3, 4},
        {"[Ad] Expose ad failed, path = {w}, code = {n}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}", kAd,
         E::Note, 2, 3},
        {"[Ad] Expose ad succeed, path = {w}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}", kAd, E::Note,
         1, 2},
        {"[Ad] AdPush callback,receive cmd 20171, adType = {n}, adPosition = {n}, delay = {n}", kAd, E::Pushed, 0, 1},
        {"[Ad] AdStatusChangedPush callback,receive cmd 20145, adType = {n}, adPosition = {n}, offlineAdId = {}, delay "
         "= {n}",
         kAd, E::Withdrawn, 0, 1, kStepKept, "withdrawn", "{2}", "none", "The server took ad {2} offline."},
        {"[Ad] AdCheckPush callback,receive cmd 20170, adType = {n}, adPosition = {n}, adId = {}, delay = {n}", kAd,
         E::Pushed, 0, 1},
        // Lines of well-formed pushes have no blank there.
        {"[Ad] AdPush callback, {}", kAd, E::PushRefused, -1, -1, kStepAsked, "push", "{0}", "a complete push",
         "A push was refused: {0}."},
        {"[Ad] AdStatusChangedPush callback, {}", kAd, E::PushRefused, -1, -1, kStepAsked, "push", "{0}",
         "a complete push", "A push was refused: {0}."},
        {"[Ad] AdCheckPush callback, {}", kAd, E::PushRefused, -1, -1, kStepAsked, "push", "{0}", "a complete push",
         "A push was refused: {0}."},
        {"[Ad] Login out", kAd, E::LoggedOut},
        {"[Ad] Language changed", kAd, E::OtherLanguage},
    };
}

std::vector<Row> RightsRows() {
    using E = EnEvent;
    constexpr EnKind kRights = EnKind::Rights;
    constexpr EnKind kVip = EnKind::Vip;
    constexpr EnKind kWidget = EnKind::Widget;
    return {
        {"[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready", kRights, E::TimerReady},
        {"[Premium] Premium Data Handler Module Uninit Begin", kRights, E::TimerStopped},
        {"[Premium] User Login Received, Request All Premium Data From Server", kRights, E::ForLogin},
        {"[Premium] Hourly Timer Fired, Refresh All Premium Data", kRights, E::ForHour},
        {"[Premium] Language Changed, Refresh All Premium Data", kRights, E::ForLanguage},
        {"[Premium] Send Request For All Premium Access, Session = {n}, Server Push = {w}", kRights, E::Asked, 0},
        {"[Premium] Send Request For Custom Premium Access, Count = {n}, Session = {n}, Server Push = {w}", kRights,
         E::Asked, 1},
        {"[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = {n}", kRights, E::Refused, 0, -1,
         kStepAnswered, "a known request", "unknown session", "a known session",
         "The answer belongs to no request, and was ignored."},
        {"[Premium] Request Failed On Channel Error, Session = {n}, Error = {n}", kRights, E::Refused, 0, -1,
         kStepAnswered, "channel", "channel error {1}", "no error", "The channel failed with error {1}."},
        {"[Premium] Parse Response Failed, Invalid Protobuf Data", kRights, E::Refused, -1, -1, kStepKept, "readable",
         "bad bytes", "an answer", "The answer is not readable."},
        {"[Premium] Parse Response Failed, Missing Code Field", kRights, E::Refused, -1, -1, kStepKept, "a code",
         "no code", "a code", "The answer has no code."},
        {"[Premium] Server Returned Error Code = {n}", kRights, E::Refused, -1, -1, kStepKept, "code 0", "code {0}",
         "code 0", "The server refused the request with code {0}."},
        {"[Premium] Parse Response Success, Premium Data Updated And Saved", kRights, E::Good},
        {"[Premium] Premium Change Push Received, Need All Access = {w}, Custom Access Count = {n}, "
         "Will Refresh After {n} Ms",
         kRights, E::Pushed},
        {"[Premium] Premium Change Push Failed, Error = {n}, Data Empty = {w}", kRights, E::PushRefused},
        {"[Premium] Parse Push Failed, Invalid Protobuf Data", kRights, E::PushRefused},
        {"[Premium] Premium Change Push Received But No Delay Field, Ignored", kRights, E::PushRefused},
        {"[Vip] Send Request For Vip Status From Server", kVip, E::Asked},
        {"[Vip] Vip Status Response Failed, Error = {n}, Cmd = {n}", kVip, E::Refused, -1, -1, kStepAnswered,
         "command of the answer", "wrong command {1}", "command 20831", "The answer has the wrong command, {1}."},
        {"[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data", kVip, E::Refused, -1, -1, kStepKept,
         "readable", "bad bytes", "an answer", "The answer is not readable."},
        {"[Vip] Vip Status Updated, Level = {n}, Vip State = {n}, Version = {n}, New Vip State = {n}, Sub State = {n}, "
         "Auto Renewal = {w}",
         kVip, E::Good},
        {"[Vip] Clear Vip Status, Reset To Default", kVip, E::Good},
        {"[Vip] Vip Status Change Push Received, Will Refresh After {n} Ms", kVip, E::Pushed},
        {"[Vip] Vip Status Push Failed, Error = {n}, Cmd = {n}", kVip, E::PushRefused},
        {"[Vip] Vip Status Push Parse Failed, Invalid Protobuf Data", kVip, E::PushRefused},
        {"[Vip] Vip Icon Disabled, New Vip System, Premium Access = {n}", kWidget, E::Refused, 0, -1, -1, "Icon",
         "newer system"},
        {"[Vip] Vip Icon Disabled, Activation Source Not Vip, Premium Access = {n}, Activation Source = {n}", kWidget,
         E::Refused, 0, -1, -1, "Icon", "activation source"},
        {"[Vip] Vip Icon Disabled, Unknown Activation Type, Premium Access = {n}", kWidget, E::Refused, 0, -1, -1,
         "Icon", "activation type"},
        {"[Vip] Vip Tag Disabled, Activation Source Not Vip, Premium Access = {n}, Activation Source = {n}", kWidget,
         E::Refused, 0, -1, -1, "Tag", "activation source"},
        {"[Vip] Vip Tag Disabled, Activation Type Not Full, Premium Access = {n}", kWidget, E::Refused, 0, -1, -1,
         "Tag", "activation type"},
        {"[Vip] Vip Banner Disabled, UI Type Mismatch, Premium Access = {n}, UI Type = {}", kWidget, E::Refused, 0, -1,
         -1, "Banner", "UI type"},
        {"[Vip] Vip Banner Disabled, Activation Type Mismatch, Premium Access = {n}, Activation Type = {n}", kWidget,
         E::Refused, 0, -1, -1, "Banner", "activation type"},
        {"[Vip] Vip Banner Disabled, Empty Premium Data, Premium Access = {n}, Data Type = {n}", kWidget, E::Refused, 0,
         -1, -1, "Banner", "texts"},
        {"[Vip] Vip Locked Mask Disabled, UI Type Mismatch, Premium Access = {n}, UI Type = {}", kWidget, E::Refused, 0,
         -1, -1, "Locked mask", "UI type"},
        {"[Vip] Vip Locked Mask Disabled, Activation Type Mismatch, Premium Access = {n}, Activation Type = {n}, "
         "Data Type = {n}",
         kWidget, E::Refused, 0, -1, -1, "Locked mask", "activation type"},
        {"[Vip] Vip Locked Mask Disabled, Empty Premium Data, Premium Access = {n}, Data Type = {n}", kWidget,
         E::Refused, 0, -1, -1, "Locked mask", "texts"},
        {"[Vip] Vip Exclusive Mask Disabled, UI Type Mismatch, Premium Access = {n}, UI Type = {}", kWidget, E::Refused,
         0, -1, -1, "Exclusive mask", "UI type"},
        {"[Vip] Vip Exclusive Mask Disabled, Activation Type Mismatch, Premium Access = {n}, Activation Type = {n}, "
         "Data Type = {n}",
         kWidget, E::Refused, 0, -1, -1, "Exclusive mask", "activation type"},
        {"[Vip] Vip Exclusive Mask Disabled, Empty Premium Data, Premium Access = {n}, Data Type = {n}", kWidget,
         E::Refused, 0, -1, -1, "Exclusive mask", "texts"},
    };
}

std::vector<Row> ActivationRows() {
    using E = EnEvent;
    constexpr EnKind kOf = EnKind::Activation;
    return {
        {"[Vip] Active vip, access = {n}, dataType = {n}, targetUrl = {}", kOf, E::Asked, 0},
        {"[Vip] Click vip widget failed, btnUrlID = 0, access = {n}, dataType = {n}", kOf, E::Asked, 0},
        {"[Vip] Click vip widget, access = {n}, dataType = {n}, btnUrlID = {n}, url = {}", kOf, E::Asked, 0},
        {"[Vip] Open Vip Web Page failed, strUrl is empty", kOf, E::Note},
        {"[Vip] RequestActiveVip callback, receive cmd error, error = {n}, cmd = {n}", kOf, E::Note},
        {"[Vip] RequestActiveVip callback, receive cmd 20981, data parse failed", kOf, E::Note},
        {"[Vip] RequestActiveVip callback, active failed, code = {n}, message = {}", kOf, E::Note},
        {"[Vip] Show popup failed, parent is empty", kOf, E::Note},
        {"[Vip] Show popup failed, imageUrl is empty. Show success toast", kOf, E::Note},
        {"[Vip] Show popup start, imageUrl = {}", kOf, E::Note},
    };
}

std::vector<Row> ChatRows() {
    using E = EnEvent;
    constexpr EnKind kChat = EnKind::Chat;
    constexpr EnKind kOpen = EnKind::ChatOpen;
    return {
        {"[AIChat] OnLogin, preload AI chat web page", kChat, E::Asked},
        {"[AIChat] RequestAIChatEnableStatus callback, receive cmd error, error = {n}, cmd = {n}", kChat, E::Refused,
         -1, -1, kStepAnswered, "answer", "error {0}, command {1}", "error 0, command 20982",
         "The request for the scenes failed with error {0}."},
        {"[AIChat] RequestAIChatEnableStatus callback, stRspData.m_strData = {}", kChat, E::Answered},
        {"[AIChat] RequestAIChatEnableStatus callback, receive cmd 20832, data parse failed", kChat, E::Refused, -1, -1,
         kStepKept, "readable", "bad bytes", "an answer", "The answer about the scenes is not readable."},
        {"[AIChat] RequestAIChatEnableStatus success, scene = {n}, is_all_open = {w}", kChat, E::SceneAnswered, 0},
        {"[AIChat] Is AI chat enable, entryScene = {n}, enable = {w}", kChat, E::Note, 0},
        {"[AIChat] Last load is preload, clear web data", kOpen, E::Cleaned},
        {"[AIChat] Create AI chat web dialog", kOpen, E::Created},
        {"[AIChat] Load AI chat page start, pageScene = {n}, isPreload = {w}, hiddenButNotClosed = {w}, url = {}",
         kOpen, E::Loaded, 0},
        {"[AIChat] Load AI chat page end, httpCode = {n}, url = {}", kOpen, E::LoadEnded},
    };
}

struct Pattern {
    const Row* row;
    QString begin;  // up to the first placeholder; comparing it avoids most expressions
    QRegularExpression expression;
};

// Patterns with the longest literal begin are tried first.
std::vector<Pattern> Patterns() {
    // The keys are the table's placeholders after escaping.
    static const std::array<std::pair<QString, QString>, 3> marks{
        std::make_pair(QStringLiteral("\\{n\\}"), QStringLiteral("(-?\\d+)")),
        std::make_pair(QStringLiteral("\\{w\\}"), QStringLiteral("(\\S+)")),
        std::make_pair(QStringLiteral("\\{\\}"), QStringLiteral("(.*)"))};
    std::vector<Pattern> patterns;
    for (const Row& row : All()) {
        const QString text = QString::fromUtf8(row.text);
        QString expression = QRegularExpression::escape(text);
        for (const auto& [mark, group] : marks) {
            expression.replace(mark, group);
        }
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

const std::vector<Row>& All() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> all = AdRows();
        for (const std::vector<Row>& more : {RightsRows(), ActivationRows(), ChatRows()}) {
            all.insert(all.end(), more.begin(), more.end());
        }
        return all;
    }();
    return rows;
}

const std::vector<const char*>& StepNames(EnKind kind) {
    static const std::vector<const char*> ad{"asked", "answered", "kept", "conditions", "picture", "shown"};
    static const std::vector<const char*> right{"asked", "answered", "taken", "listed", "held"};
    static const std::vector<const char*> vip{"asked", "answered", "taken", "member"};
    static const std::vector<const char*> refresh{"asked", "answered", "taken"};
    static const std::vector<const char*> chat{"asked", "answered", "taken", "open"};
    static const std::vector<const char*> open{"asked", "loaded", "arrived"};
    switch (kind) {
        case EnKind::Ad:
            return ad;
        case EnKind::Widget:
            return right;
        case EnKind::Vip:
            return vip;
        case EnKind::Chat:
            return chat;
        case EnKind::ChatOpen:
            return open;
        default:
            return refresh;
    }
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
            for (const QString& value : match.capturedTexts().mid(1)) {
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
    static const QRegularExpression mark(QStringLiteral("\\{(\\d+)(?::(\\w))?\\}"));
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
    return time.toString(isToday ? QStringLiteral("HH:mm:ss") : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString Duration(qint64 seconds) {
    static const std::array<std::pair<qint64, const char*>, 4> units{
        std::make_pair(86'400, "d"), std::make_pair(3'600, "h"), std::make_pair(60, "min"), std::make_pair(1, "s")};
    QStringList parts;
    for (const auto& [length, name] : units) {
        if (seconds >= length && parts.size() < 2) {
            parts << QStringLiteral("%1 %2").arg(seconds / length).arg(QLatin1String(name));
            seconds %= length;
        }
    }
    return parts.isEmpty() ? QStringLiteral("0 s") : parts.join(QLatin1Char(' '));
}

QString Area(qint64 area) {
    const auto tab =
        std::find_if(kAdTabs.begin(), kAdTabs.end(), [area](const AdTab& one) { return one.area == area; });
    if (tab != kAdTabs.end()) {
        for (const TabPage& page : kTabPages) {
            if (page.tab == tab->tab) {
                return QStringLiteral("%1 (area %2)").arg(QString::fromUtf8(page.page.title)).arg(area);
            }
        }
    }
    return QStringLiteral("no tab (area %1)").arg(area);
}

QString AdKind(qint64 type) {
    return type == 2   ? QStringLiteral("Popup")
           : type == 3 ? QStringLiteral("Banner")
                       : QStringLiteral("Type %1").arg(type);
}

}  // namespace log_table
