#include "workbench/diagnosis/Tracker.h"

#include <algorithm>
#include <utility>

#include "PremiumNumbers.h"
#include "core/login_status_data.h"
#include "framework/JsonText.h"
#include "workbench/ControlClient.h"

using namespace log_table;

namespace {

constexpr uint32_t kCommandChatScenes = 20982;
constexpr size_t kKept = 40;
// Related entries are written within one call. Their times can differ slightly, because the clock is read twice.
constexpr qint64 kSlackMs = 50;
constexpr qint64 kSameCallMs = 5'000;

template <class T>
T& Keep(std::deque<T>& all, T one) {
    all.push_back(std::move(one));
    if (all.size() > kKept) {
        all.pop_front();
    }
    return all.back();
}

bool IsTrue(const QString& word) {
    return word == QLatin1String("true");
}

// ---- ads

Json::Value Parsed(const std::string& body) {
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

AdOffer OfferOf(const Json::Value& ad) {
    const Json::Value& popup = json::Member(ad, "popup_ad");
    const Json::Value& card = popup.isObject() ? json::Member(popup, "bottom_popup") : json::Member(ad, "banner_ad");
    AdOffer offer{json::Text(json::Member(ad, "ad_id")),         json::Text(json::Member(card, "img")),
                  json::Number(json::Member(ad, "start_time")),  json::Number(json::Member(ad, "end_time")),
                  json::Number(json::Member(ad, "expire_time")), {}};
    for (const Json::Value& area : json::Items(json::Member(popup, "show_areas"))) {
        offer.areas.push_back(int(json::Number(area).value_or(0)));
    }
    return offer;
}

AdState::Request FindRequest(const TrackerState& state, const QString& id) {
    const auto found = std::find_if(state.adRequests.rbegin(), state.adRequests.rend(),
                                    [&id](const AdState::Request& request) { return request->id == id; });
    return found == state.adRequests.rend() ? nullptr : *found;
}

// The answer to a former user's request has none.
void On(TrackerState& state, const HttpTrace& call, qint64 timeMs) {
    const QString id = json::Text(json::Member(Parsed(call.requestBody), "request_id"));
    if (const AdState::Request request = FindRequest(state, id)) {
        request->answeredMs = timeMs;
        for (const Json::Value& ad : json::Items(json::Member(json::Member(Parsed(call.body), "data"), "ad"))) {
            request->ads.push_back(OfferOf(ad));
        }
    }
}

// The stored time of the last showing was changed from outside. The refusal by the interval is recomputed.
void On(TrackerState& state, const StoreTrace& store, qint64 /*timeMs*/) {
    std::optional<Refusal>& red = state.ads[kBottomPopup].red;
    if (store.isSave && store.succeeded && red && red->line.row->free == EnFree::AfterSum &&
        red->line.values.value(6).toStdString() == store.key) {
        red->line.values[1] = QString::fromStdString(store.value);
    }
}

void Put(AdState& ad, const Refusal& refusal) {
    const bool isLater = refusal.leavesRest && ad.red && !ad.red->leavesRest;
    ad.red = isLater ? ad.red : refusal;
    ad.after = isLater ? std::make_optional(refusal) : std::nullopt;
}

// The values of a refusal's texts that its line does not contain.
void AddWords(Refusal& refusal, const AdState& ad) {
    QStringList areas;
    for (const int area : ad.Offer(refusal.line.values.value(4)).areas) {
        areas << Area(area);
    }
    QStringList drops;
    for (const ParsedLine& drop : refusal.drops) {
        drops << "ad %1 %2"_q.arg(drop.values[4], Filled(drop.row->say, drop, drop.serverMs));
    }
    refusal.line.words["areas"_q] =
        areas.isEmpty() ? "another tab (the answer was not seen whole)"_q : areas.join(" or "_q);
    refusal.line.words["drops"_q] = drops.join(", "_q);
}

// The conditions are checked twice: for the list, and again when the picture has come.
void OnAdRefused(AdState& ad, const ParsedLine& line, const QString& reason) {
    const Row& row = *line.row;
    const bool isOwnList = row.step == kStepKept && ad.passed <= kStepKept;
    const bool isAgain = ad.isLoading && ad.passed >= kStepPicture;
    Refusal refusal{line, row.step, row.event != EnEvent::Refused};
    refusal.line.words["reason"_q] = reason;
    if (row.step == kStepConditions || (row.step == kStepKept && !isOwnList)) {
        refusal.step = isAgain ? kStepShown : kStepConditions;
    }
    if (row.free == EnFree::Sum) {
        ad.nextAskS = line.Number(1) + line.Number(2);
    } else if (row.event == EnEvent::Refused && row.step == kStepAnswered) {
        refusal.leavesRest = ad.standing != nullptr;
        if (ad.last) {
            ad.last->refusal = Filled(row.say, refusal.line, line.serverMs);
        }
    } else if (row.event == EnEvent::Refused && isOwnList) {
        const AdState::Request refused = std::exchange(ad.standing, ad.before);
        if (refused) {
            refusal.drops = refused->drops;
            refused->refusal = row.free == EnFree::Window ? QString() : QString::fromUtf8(row.check);
        }
        refusal.leavesRest = QLatin1String(row.check) == QLatin1String("a list") || ad.standing;
    }
    if (row.event == EnEvent::Refused) {
        ad.passed = ad.isLoading ? int(kStepPicture) : 0;
    }
    AddWords(refusal, ad);
    Put(ad, refusal);
}

// The module keeps a list that waits behind a withdrawn visible ad, although its log line reports that all was cleared.
void OnAdCleared(AdState& ad, ParsedLine line, const QString& reason) {
    const bool isSameCall = ad.red && line.timeMs <= ad.red->line.timeMs + kSameCallMs;
    const EnEvent before = isSameCall ? ad.red->line.row->event : EnEvent::Note;
    if (before == EnEvent::ClosedByPush && reason.isEmpty()) {
        return;
    }
    ad.standing.reset();
    if (before != EnEvent::Closed && before != EnEvent::ClosedByPush && ad.shownCount == 0) {
        line.words["reason"_q] = reason.isEmpty() ? "when it was cleared"_q : reason;
        Put(ad, {line, kStepKept});
    }
}

// The line names no position.
void OnPictureFailed(TrackerState& state, const ParsedLine& line) {
    AdState& popup = state.ads[kBottomPopup];
    state.failedPictures.insert(line.values[1]);
    if (line.Number(0) == kBottomPopup.type && popup.isLoading) {
        Keep(state.lines[{EnKind::Ad, kBottomPopup}], line);
        Put(popup, {line, kStepPicture});
    }
}

// The module withdraws ads from the popup, whatever position the push names. The list is deleted without its own line.
// The delay is computed in 32 bits, as in the module. A negative result means no delay.
void OnAdPush(TrackerState& state, const ParsedLine& line, const AdSlot& named) {
    AdState& ad = state.ads[kBottomPopup];
    const auto kept = ad.standing ? ad.standing->Kept() : std::vector<AdOffer>();
    if (line.row->event == EnEvent::Withdrawn && !kept.empty() &&
        line.values[2].split(QLatin1Char(',')).contains(kept.front().id)) {
        ad.standing.reset();
        Put(ad, {line, line.row->step});
    }
    if (named == kBottomPopup) {
        Keep(state.lines[{EnKind::Ad, named}], line);
        ad.pushesMs.insert(line.serverMs + std::max(0, int32_t(uint32_t(line.values.last().toLongLong()) * 1'000u)));
    }
}

void TakeAd(TrackerState& state, AdState& ad, const AdSlot& slot, const ParsedLine& line) {
    const EnEvent event = line.row->event;
    if (line.row->step >= 0 && *line.row->say == '\0') {
        ad.passed = line.row->step;  // progress of the attempt
    }
    if (event == EnEvent::Asked) {
        const AdRequest request{line.values[4], line.timeMs};
        ad.last = Keep(state.adRequests, std::make_shared<AdRequest>(request));
        state.adReason.clear();
    } else if (event == EnEvent::Good) {
        if (const AdState::Request request = FindRequest(state, line.values[3])) {
            ad.answered = request;
            request->answeredMs = std::max(request->answeredMs, line.timeMs);
        }
        ad.before = std::exchange(ad.standing, ad.answered);
    } else if (event == EnEvent::Retried) {
        ad.before.reset();  // a refused waiting list is deleted
        if (ad.standing) {
            ad.standing->drops.clear();
        }
    } else if (event == EnEvent::Dropped && ad.standing) {
        ad.standing->drops.push_back(line);
    } else if (event == EnEvent::Refused || event == EnEvent::Ignored) {
        OnAdRefused(ad, line, std::exchange(state.adReason, QString()));
    } else if (event == EnEvent::Loading) {
        ad.isLoading = true;
    } else if (event == EnEvent::Shown) {
        ad.isLoading = false;
        ad.red.reset();
        ad.after.reset();
        // The next banner is created before the current one is destroyed.
        ad.shownCount = slot.type == kTypeBanner ? ad.shownCount + 1 : 1;
        ++ad.shownTotal;
        ad.made = ad.standing;
        ad.shownAd = line.values.value(2);
        ad.shownMs = line.timeMs;
    } else if (event == EnEvent::Gone) {
        ad.isLoading = false;
        ad.shownCount = 0;
    } else if (event == EnEvent::Closed || event == EnEvent::ClosedByPush) {
        ad.shownCount = std::max(0, ad.shownCount - 1);
        if (ad.shownCount == 0) {
            ad.isLoading = false;
            Put(ad, {line, kStepShown});
        }
    } else if (event == EnEvent::Cleared) {
        OnAdCleared(ad, line, state.adReason);
    }
}

// Lines without type and position belong to the popup.
void TakeAd(TrackerState& state, const ParsedLine& line) {
    const Row& row = *line.row;
    const AdSlot slot = row.at < 0 ? kBottomPopup : AdSlot{int(line.Number(row.at)), int(line.Number(row.position))};
    if (row.event == EnEvent::Reason) {
        state.adReason = Filled(row.say, line, 0);
    } else if (row.event == EnEvent::PictureFailed) {
        OnPictureFailed(state, line);
    } else if (row.event == EnEvent::Pushed || row.event == EnEvent::Withdrawn) {
        OnAdPush(state, line, slot);
    } else {
        Keep(state.lines[{EnKind::Ad, slot}], line);
        TakeAd(state, state.ads[slot], slot, line);
    }
}

// ---- rights, VIP status and chat scenes

RefreshState::Request& RequestOf(RefreshState& refreshes, unsigned long session) {
    if (size_t(refreshes.requests.size()) >= kKept && !refreshes.requests.contains(session)) {
        refreshes.requests.erase(refreshes.requests.begin());
    }
    return refreshes.requests[session];
}

void On(TrackerState& state, const CommandTrace& command, qint64 timeMs) {
    RefreshState* refreshes = command.asked == kCommandPremiumAccess ? &state.rights
                              : command.asked == kCommandVipStatus   ? &state.vip
                              : command.asked == kCommandChatScenes  ? &state.chat
                                                                     : nullptr;
    if (!refreshes || command.kind == CommandTrace::EnKind::Pushed) {
        return;
    }
    RefreshState::Request& request = RequestOf(*refreshes, command.session);
    if (command.kind == CommandTrace::EnKind::Sent) {
        request.sentMs = timeMs;
        request.why = request.why.isEmpty() ? std::exchange(refreshes->nextWhy, QString()) : request.why;
    } else {
        request.answeredMs = timeMs;
        refreshes->answered = command.session;
    }
}

// A preceding line, if any, contains the reason of the request. Requests after a push have no such line.
QString WhyOf(RefreshState& state, const ParsedLine& line) {
    const auto push = state.pushes.begin();
    if (!state.nextWhy.isEmpty()) {
        return std::exchange(state.nextWhy, QString());
    }
    if (push == state.pushes.end() || push->first > line.timeMs + kSlackMs) {
        return "a caller"_q;
    }
    state.pushes.erase(push);
    return "push"_q;
}

// A line without a session is about the last answer. A login requests rights and VIP status, the rights first.
void TakeRefresh(TrackerState& state, RefreshState& refreshes, const ParsedLine& line) {
    const Row& row = *line.row;
    const EnEvent event = row.event;
    const auto session = row.at < 0 ? refreshes.answered : (unsigned long)(line.Number(row.at));
    if (event == EnEvent::TimerReady) {
        state.timerFrom = line.timeMs;
        refreshes.nextWhy = QString::fromUtf8(row.say);
    } else if (event == EnEvent::TimerStopped) {
        state.timerFrom.reset();
    } else if (event == EnEvent::Reason) {
        refreshes.nextWhy = QString::fromUtf8(row.say);
        state.vip.nextWhy = refreshes.nextWhy == QLatin1String("login") ? refreshes.nextWhy : state.vip.nextWhy;
    } else if (event == EnEvent::Asked) {
        QString& why = row.at < 0 ? refreshes.nextWhy : RequestOf(refreshes, session).why;
        why = why.isEmpty() ? WhyOf(refreshes, line) : why;
        if (row.at >= 0) {
            refreshes.requests[session].sentMs = line.timeMs;
        }
    } else if (event == EnEvent::Pushed) {
        // The module passes the delay on as a signed number. A negative delay runs at once.
        const bool isList = line.values.size() > 1 && !IsTrue(line.values[0]);
        const int delay = std::max(0, int(line.values.last().toUInt()));
        refreshes.pushes.emplace(line.timeMs + delay, isList ? int(line.Number(1)) : -1);
    } else if (event == EnEvent::SceneAnswered) {
        state.scenes.insert(int(line.Number(0)));
    } else if ((event == EnEvent::Good || event == EnEvent::Refused) && session != 0) {
        RefreshState::Request& request = RequestOf(refreshes, session);
        request.isGood = event == EnEvent::Good;
        request.red = request.isGood ? std::nullopt : std::make_optional(Refusal{line, row.step});
        request.answeredMs = std::max(request.answeredMs, line.timeMs);
        refreshes.answered = session;
        if (row.kind == EnKind::Chat && request.isGood) {
            state.scenes.clear();
        }
    }
}

// ---- opens of the AI chat

// Reports number the watchlist's page 3. The other pages have the number of their scene.
void On(TrackerState& state, const ReportTrace& report, qint64 timeMs) {
    if (report.event == "ClickAIChatEntrance") {
        const int source = json::Text(json::Member(Parsed(report.params), "entrance_source")).toInt();
        Keep(state.opens, {timeMs, source == 3 ? 1 : source});
    }
}

// A preload is not reported.
void TakeOpen(TrackerState& state, const ParsedLine& line) {
    ChatOpen* last = state.opens.empty() ? nullptr : &state.opens.back();
    if (line.row->event == EnEvent::Good && last && last->isLoaded) {
        last->httpCode = int(line.Number(0));
    }
    if (line.row->event == EnEvent::Good) {
        return;
    }
    const bool isPending = last && !last->isLoaded && line.timeMs <= last->timeMs + kSameCallMs;
    ChatOpen& open = isPending ? *last : Keep(state.opens, {line.timeMs});
    if (line.row->event == EnEvent::Reason) {
        open.reasons << QString::fromUtf8(line.row->say);
        return;
    }
    open.isLoaded = true;
    open.scene = int(line.Number(0));
    open.isPreload = IsTrue(line.values[1]);
    open.url = line.values[3];
    const bool isNewSession = open.url.contains(QLatin1String("needChangeSessionId=1"));
    const bool isNewUser = state.User() != std::exchange(state.loadUser, state.User());
    const int sceneBefore = std::exchange(state.loadScene, open.scene);
    const std::pair<bool, QString> reasons[] = {
        {open.scene != sceneBefore, "the scene changed from %1 to %2"_q.arg(sceneBefore).arg(open.scene)},
        {IsTrue(line.values[2]), "the user had closed the window"_q},
        {isNewSession, isNewUser ? "new session: the user changed"_q : "new session: the caller asked for it"_q},
    };
    for (const auto& [holds, reason] : reasons) {
        open.reasons << (holds ? QStringList(reason) : QStringList());
    }
    if (open.reasons.isEmpty()) {
        open.reasons << "parameters or address changed"_q;
    }
}

template <class Other>
void On(TrackerState& /*state*/, const Other& /*trace*/, qint64 /*timeMs*/) {}

void TakeModuleLine(TrackerState& state, const ParsedLine& line) {
    const EnKind kind = line.row->kind;
    const int number = int(line.Number(line.row->at));
    if (kind == EnKind::Ad) {
        TakeAd(state, line);
    } else if (kind == EnKind::ChatOpen) {
        TakeOpen(state, line);
    } else if (kind == EnKind::Widget) {
        // The later lines of an activation do not name the right.
        state.right = line.row->at >= 0 ? number : state.right;
        Keep(state.lines[{EnKind::Widget, {state.right}}], line);
    } else {
        Keep(state.lines[{kind, {kind == EnKind::Chat ? number : 0}}], line);
        TakeRefresh(state, kind == EnKind::Rights ? state.rights : kind == EnKind::Vip ? state.vip : state.chat, line);
    }
}

}  // namespace

// Two ads can have the same id; the time window identifies the ad.
const ParsedLine* AdRequest::DropOf(const AdOffer& ad) const {
    const auto drop = std::find_if(drops.begin(), drops.end(), [&ad](const ParsedLine& line) {
        const std::optional<qint64> limit = line.Number(1);
        return line.values.value(4) == ad.id && (limit == ad.startS || limit == ad.endS || limit == ad.expireS);
    });
    return drop == drops.end() ? nullptr : &*drop;
}

std::vector<AdOffer> AdRequest::Kept() const {
    std::vector<AdOffer> kept;
    std::copy_if(ads.begin(), ads.end(), std::back_inserter(kept),
                 [this](const AdOffer& ad) { return refusal.isEmpty() && !DropOf(ad); });
    return kept;
}

AdOffer AdState::Offer(const QString& id) const {
    for (const Request& list : {standing, answered}) {
        for (const AdOffer& offer : list ? list->ads : std::vector<AdOffer>()) {
            if (offer.id == id) {
                return offer;
            }
        }
    }
    return {};
}

quint64 TrackerState::User() const {
    return user != 0 ? user : core::login_status_data::Login_GetUserID();
}

CTracker::CTracker(ToServer toServer, QObject* parent) : QObject(parent), m_fnToServer(std::move(toServer)) {}

void CTracker::Take(const TraceEvent& seen) {
    if (seen.number != 0 && seen.number <= m_nLastSeen) {
        return;
    }
    m_nLastSeen = seen.number;
    std::visit([&](const auto& what) { On(m_state, what, seen.timeMs); }, seen.what);
    Q_EMIT Changed();
}

void CTracker::TakeLine(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLastLine) {
        return;
    }
    static const QRegularExpression login("^User (\\d+) logged (in|out)$"_q);
    const auto match = entry.record.module == "Host.Login" ? login.match(entry.record.text) : QRegularExpressionMatch();
    auto line = entry.record.module == "ZRGrowth" ? Read(entry.record.text) : std::nullopt;
    if (line) {
        line->timeMs = entry.time.toMSecsSinceEpoch();
        line->serverMs = m_fnToServer(line->timeMs);
        TakeModuleLine(m_state, *line);
    } else if (match.captured(2) == QLatin1String("in")) {
        TrackerState fresh;
        fresh.user = match.captured(1).toULongLong();
        std::tie(fresh.timerFrom, fresh.loadUser, fresh.loadScene) =
            std::tie(m_state.timerFrom, m_state.loadUser, m_state.loadScene);
        m_state = fresh;
    } else if (match.hasMatch()) {
        m_state.isLoggedOut = true;
    } else {
        return;
    }
    m_nLastLine = entry.number;
    Q_EMIT Changed();
}
