#include "workbench/diagnosis/Tracker.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <utility>

#include "PremiumNumbers.h"
#include "core/login_status_data.h"

using namespace log_table;

namespace {

constexpr const char* kModuleTag = "ZRGrowth";
constexpr const char* kLoginTag = "Host.Login";
constexpr uint32_t kCommandChatScenes = 20982;
constexpr size_t kRequestsKept = 300;
constexpr size_t kOpensKept = 30;
constexpr size_t kLinesKept = 40;
constexpr qint64 kHourMs = 3'600'000;
constexpr qint64 kSecondMs = 1'000;
// Related entries are written within one call. Their times can differ slightly, because the clock is read twice.
constexpr qint64 kSlackMs = 50;
constexpr qint64 kSameCallMs = 5'000;

template <class T>
T& Keep(std::deque<T>& all, T one, size_t limit) {
    all.push_back(std::move(one));
    if (all.size() > limit) {
        all.pop_front();
    }
    return all.back();
}

/// The module passes its delay on as a signed number of milliseconds. A negative delay runs at once.
qint64 DelayOf(const QString& milliseconds) {
    return std::max(0, int(milliseconds.toUInt()));
}

bool IsTrue(const QString& word) {
    return word == QLatin1String("true");
}

bool HasPicture(const AdState::Request& request, const QString& url) {
    return request && std::any_of(request->ads.begin(), request->ads.end(),
                                  [&url](const AdOffer& offer) { return offer.image == url; });
}

// A refusal that leaves the previous state is put before it.
void Put(AdState& ad, Refusal refusal) {
    if (!refusal.leavesRest) {
        ad.earlier.reset();
    } else if (ad.red && !ad.red->leavesRest) {
        ad.earlier = ad.red;
    }
    ad.red = std::move(refusal);
}

// The reasons of lines without a session belong to the requests in order.
void GiveReasons(RefreshState& state) {
    for (RefreshState::Request& request : state.requests) {
        if (request.why.isEmpty() && !state.reasons.empty()) {
            request.why = state.reasons.front();
            state.reasons.pop_front();
        }
    }
}

}  // namespace

const RefreshState::Request* RefreshState::Find(unsigned long session) const {
    const auto found = std::find_if(requests.rbegin(), requests.rend(),
                                    [session](const Request& request) { return request.session == session; });
    return found == requests.rend() ? nullptr : &*found;
}

RefreshState::Request& RefreshState::Of(unsigned long session) {
    const auto found = std::find_if(requests.begin(), requests.end(),
                                    [session](const Request& request) { return request.session == session; });
    return found != requests.end() ? *found : Keep(requests, Request{session}, kRequestsKept);
}

CTracker::CTracker(ToServer toServer, QObject* parent) : QObject(parent), m_fnToServer(std::move(toServer)) {}

quint64 CTracker::User() const {
    return m_nUser != 0 ? m_nUser : core::login_status_data::Login_GetUserID();
}

const History& CTracker::LinesOf(EnKind kind, int number, int position) const {
    static const History none;
    const auto found = m_histories.find({kind, {number, position}});
    return found == m_histories.end() ? none : found->second;
}

void CTracker::AddLine(EnKind kind, const AdSlot& subject, const Line& line, qint64 timeMs) {
    Keep(m_histories[{kind, subject}], {timeMs, line.text}, kLinesKept);
}

std::optional<qint64> CTracker::NextHourlyMs(qint64 nowMs) const {
    if (!m_timerFrom) {
        return std::nullopt;
    }
    return *m_timerFrom + (std::max<qint64>(0, nowMs - *m_timerFrom) / kHourMs + 1) * kHourMs;
}

// The hourly timer runs on through logins.
void CTracker::Reset(quint64 user) {
    m_nUser = user;
    m_bLoggedOut = false;
    m_ads.clear();
    m_requests.clear();
    m_strReason.clear();
    m_rights = m_vip = m_chat = {};
    m_scenes.clear();
    m_opens.clear();
    m_histories.clear();
}

void CTracker::Take(const TraceEvent& seen) {
    if (seen.number != 0 && seen.number <= m_nLastSeen) {
        return;
    }
    m_nLastSeen = std::max(m_nLastSeen, seen.number);
    std::visit([&](const auto& what) { On(what, seen.timeMs); }, seen.what);
    Q_EMIT Changed();
}

void CTracker::TakeLine(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLastLine) {
        return;
    }
    m_nLastLine = std::max(m_nLastLine, entry.number);
    static const QRegularExpression login("^User (\\d+) logged (in|out)$"_q);
    const QRegularExpressionMatch match =
        entry.record.module == kLoginTag ? login.match(entry.record.text) : QRegularExpressionMatch();
    const auto line = entry.record.module == kModuleTag ? Read(entry.record.text) : std::nullopt;
    if (match.hasMatch() && match.captured(2) == QLatin1String("in")) {
        Reset(match.captured(1).toULongLong());
    } else if (match.hasMatch()) {
        m_bLoggedOut = true;
    } else if (line) {
        TakeModuleLine(*line, entry.time.toMSecsSinceEpoch());
    } else {
        return;
    }
    Q_EMIT Changed();
}

void CTracker::TakeModuleLine(const Line& line, qint64 timeMs) {
    const EnKind kind = line.row->kind;
    const int number = int(line.Number(line.row->at));
    if (kind == EnKind::Ad) {
        TakeAd(line, timeMs);
    } else if (kind == EnKind::ChatOpen) {
        TakeOpen(line, timeMs);
    } else if (kind == EnKind::Widget || kind == EnKind::Activation) {
        // The later lines of an activation do not name the right.
        m_nRight = kind == EnKind::Widget || line.row->event == EnEvent::Asked ? number : m_nRight;
        AddLine(EnKind::Widget, {m_nRight, 0}, line, timeMs);
    } else {
        AddLine(kind, {kind == EnKind::Chat ? number : 0, 0}, line, timeMs);
        TakeRefresh(kind == EnKind::Rights ? m_rights : kind == EnKind::Vip ? m_vip : m_chat, line, timeMs);
    }
}

// ---- ads

AdState::Request CTracker::FindRequest(const QString& id) const {
    const auto found = std::find_if(m_requests.rbegin(), m_requests.rend(),
                                    [&id](const AdState::Request& request) { return request->id == id; });
    return found == m_requests.rend() ? nullptr : *found;
}

AdState::Request CTracker::RequestOf(const AdRequest& read, qint64 timeMs) {
    AdState::Request request = FindRequest(read.id);
    if (!request) {
        request = Keep(m_requests, std::make_shared<AdRequest>(read), kRequestsKept);
        request->sentMs = timeMs;
        m_ads[read.slot].last = request;
    }
    return request;
}

void CTracker::On(const HttpTrace& call, qint64 timeMs) {
    const bool isEnd = call.kind != HttpTrace::EnKind::Sent;
    const auto read = ReadAdRequest(call.url, isEnd ? call.requestBody : call.body);
    if (read && !isEnd) {
        RequestOf(*read, timeMs)->askedFor = read->askedFor;
    }
    // The answer to a former user's request has none.
    const AdState::Request request = read && isEnd ? FindRequest(read->id) : nullptr;
    if (request) {
        request->answeredMs = timeMs;
        request->status = call.status;
        request->durationMs = call.durationMs;
        ReadAdAnswer(call.body, *request);
    }
}

// The stored time of the last showing was changed from outside. The refusal by the interval is recomputed.
void CTracker::On(const StoreTrace& store, qint64 /*timeMs*/) {
    for (auto& [slot, ad] : m_ads) {
        for (std::optional<Refusal>* red : {&ad.red, &ad.earlier}) {
            if (store.isSave && store.succeeded && *red && (*red)->line.row->free == EnFree::AfterSum &&
                (*red)->line.values.value(6).toStdString() == store.key) {
                (*red)->line.values[1] = QString::fromStdString(store.value);
            }
        }
    }
}

// Lines without type and position belong to the popup.
void CTracker::TakeAd(const Line& line, qint64 timeMs) {
    const Row& row = *line.row;
    switch (row.event) {
        case EnEvent::Reason:
            m_strReason = Filled(row.say, line, 0);
            return;
        case EnEvent::PictureFailed:
            OnPictureFailed(line, timeMs);
            return;
        case EnEvent::Pushed:
        case EnEvent::Withdrawn:
            OnAdPush(line, timeMs);
            return;
        default:
            break;
    }
    const AdSlot slot = row.at < 0 ? kBottomPopup : AdSlot{int(line.Number(row.at)), int(line.Number(row.position))};
    AddLine(EnKind::Ad, slot, line, timeMs);
    TakeAd(m_ads[slot], line, timeMs);
}

void CTracker::TakeAd(AdState& ad, const Line& line, qint64 timeMs) {
    const bool isBanner = line.Number(line.row->at) == kTypeBanner;
    if (line.row->step >= 0 && *line.row->say == '\0') {
        ad.passed = line.row->step;  // progress of the attempt
    }
    switch (line.row->event) {
        case EnEvent::Asked: {
            AdRequest read;
            read.id = line.values[4];
            read.slot = {int(line.Number(1)), int(line.Number(2))};
            read.path = line.values[0];
            ad.last = RequestOf(read, timeMs);
            m_strReason.clear();
            return;
        }
        case EnEvent::Answered:
            if (const AdState::Request request = FindRequest(line.values[3])) {
                ad.answered = request;
                request->answeredMs = request->answeredMs != 0 ? request->answeredMs : timeMs;
            }
            ad.before = std::exchange(ad.standing, ad.answered);
            return;
        case EnEvent::Retried:
            ad.before.reset();  // a refused waiting list is deleted
            if (ad.standing) {
                ad.standing->drops.clear();
            }
            return;
        case EnEvent::Dropped:
            if (ad.standing) {
                ad.standing->drops.push_back(line);
            }
            return;
        case EnEvent::Refused:
        case EnEvent::Ignored:
        case EnEvent::PushRefused:
            OnAdRefused(ad, line, timeMs);
            return;
        case EnEvent::Loading:
            ad.isLoading = true;
            return;
        case EnEvent::Shown:
            ad.isLoading = false;
            ad.red.reset();
            ad.earlier.reset();
            // The next banner is created before the current one is destroyed.
            ad.shownCount = isBanner ? ad.shownCount + 1 : 1;
            ++ad.shownTotal;
            ad.made = ad.standing;
            ad.shownAd = line.values.value(2);
            ad.shownMs = timeMs;
            return;
        case EnEvent::Gone:
            ad.isLoading = false;
            ad.shownCount = 0;
            return;
        case EnEvent::Closed:
        case EnEvent::ClosedByPush:
            ad.shownCount = std::max(0, ad.shownCount - 1);
            if (ad.shownCount == 0) {
                ad.isLoading = false;
                Put(ad, {line, kStepShown, timeMs});
            }
            return;
        case EnEvent::Cleared:
            OnAdCleared(ad, line, timeMs);
            return;
        default:
            return;
    }
}

// The conditions are checked twice: for the list, and again when the picture has come.
void CTracker::OnAdRefused(AdState& ad, const Line& line, qint64 timeMs) {
    const Row& row = *line.row;
    const bool isOwnList = row.step == kStepKept && ad.passed <= kStepKept;
    const bool isAgain = ad.isLoading && ad.passed >= kStepPicture;
    const bool isOfBoth = row.step == kStepConditions || (row.step == kStepKept && !isOwnList);
    Refusal refusal{line, isOfBoth ? isAgain ? int(kStepShown) : int(kStepConditions) : row.step, timeMs};
    if (row.event != EnEvent::Refused) {
        refusal.leavesRest = true;
        ad.nextAskS = row.free == EnFree::Sum ? line.Number(1) + line.Number(2) : ad.nextAskS;
        Put(ad, std::move(refusal));
        return;
    }
    refusal.reason = std::exchange(m_strReason, QString());
    if (row.step == kStepAnswered) {
        refusal.leavesRest = ad.standing != nullptr;
        if (ad.last) {
            ad.last->refusal = Filled(row.say, line, m_fnToServer(timeMs), {{"reason"_q, refusal.reason}});
        }
    } else if (isOwnList) {
        const AdState::Request refused = std::exchange(ad.standing, ad.before);
        if (refused) {
            refusal.drops = refused->drops;
            refused->refusal = row.free == EnFree::Window ? QString() : QString::fromUtf8(row.check);
        }
        refusal.leavesRest = QLatin1String(row.check) == QLatin1String("a list") || ad.standing;
    }
    ad.passed = ad.isLoading ? int(kStepPicture) : 0;
    Put(ad, std::move(refusal));
}

// The module keeps a list that waits behind a withdrawn visible ad, although its log line reports that all was cleared.
void CTracker::OnAdCleared(AdState& ad, const Line& line, qint64 timeMs) {
    const EnEvent before = ad.red && timeMs <= ad.red->timeMs + kSameCallMs ? ad.red->line.row->event : EnEvent::Note;
    if (before == EnEvent::ClosedByPush && m_strReason.isEmpty()) {
        return;
    }
    ad.standing.reset();
    if (before != EnEvent::Closed && before != EnEvent::ClosedByPush && ad.shownCount == 0) {
        Put(ad, {line, kStepKept, timeMs, m_strReason});
    }
}

// The line names no position. A failed picture of a banner is known by its URL.
void CTracker::OnPictureFailed(const Line& line, qint64 timeMs) {
    const QString& url = line.values[1];
    for (auto& [slot, ad] : m_ads) {
        const bool isBanner = slot.type == kTypeBanner;
        const bool isOf = isBanner ? HasPicture(ad.made, url) || HasPicture(ad.standing, url) : ad.isLoading;
        if (slot.type != int(line.Number(0)) || !isOf) {
            continue;
        }
        ad.failedPictures.insert(url);
        AddLine(EnKind::Ad, slot, line, timeMs);
        if (!isBanner) {
            Put(ad, {line, kStepPicture, timeMs});
        }
    }
}

// The module withdraws ads from the popup, whatever position the push names. The list is deleted without its own line.
// The delay is computed in 32 bits, as in the module. A negative result means no delay.
void CTracker::OnAdPush(const Line& line, qint64 timeMs) {
    AdState& ad = m_ads[kBottomPopup];
    const auto kept = ad.standing ? ad.standing->Kept() : std::vector<const AdOffer*>();
    if (line.row->event == EnEvent::Withdrawn && !kept.empty() &&
        line.values[2].split(QLatin1Char(',')).contains(kept.front()->id)) {
        ad.standing.reset();
        Put(ad, {line, line.row->step, timeMs});
    }
    if (!(AdSlot{int(line.Number(0)), int(line.Number(1))} == kBottomPopup)) {
        return;
    }
    AddLine(EnKind::Ad, kBottomPopup, line, timeMs);
    const auto delay = int32_t(uint32_t(line.values.last().toLongLong()) * uint32_t(kSecondMs));
    ad.pushesMs.insert(m_fnToServer(timeMs) + std::max(0, delay));
}

// ---- rights, VIP status and chat scenes

void CTracker::On(const CommandTrace& command, qint64 timeMs) {
    RefreshState* state = command.asked == kCommandPremiumAccess ? &m_rights
                          : command.asked == kCommandVipStatus   ? &m_vip
                          : command.asked == kCommandChatScenes  ? &m_chat
                                                                 : nullptr;
    if (!state || command.kind == CommandTrace::EnKind::Pushed) {
        return;
    }
    RefreshState::Request& request = state->Of(command.session);
    if (command.kind == CommandTrace::EnKind::Sent) {
        request.sentMs = timeMs;
        GiveReasons(*state);
    } else {
        request.answeredMs = timeMs;
        state->answered = command.session;
    }
}

// A line without a session is about the last answer.
void CTracker::TakeRefresh(RefreshState& state, const Line& line, qint64 timeMs) {
    const Row& row = *line.row;
    const QString say = QString::fromUtf8(row.say);
    const auto session = row.at < 0 ? state.answered : (unsigned long)(line.Number(row.at));
    switch (row.event) {
        case EnEvent::TimerReady:
            m_timerFrom = timeMs;
            m_rights.nextWhy = say;
            return;
        case EnEvent::TimerStopped:
            m_timerFrom.reset();
            return;
        case EnEvent::Reason:
            m_rights.nextWhy = say;
            m_vip.nextWhy = say == QLatin1String("login") ? say : m_vip.nextWhy;
            return;
        case EnEvent::Asked:
            OnAsked(state, line, timeMs);
            return;
        case EnEvent::Pushed: {
            const bool isList = line.values.size() > 1 && !IsTrue(line.values[0]);
            state.pushes.emplace(timeMs + DelayOf(line.values.last()), isList ? int(line.Number(1)) : -1);
            return;
        }
        case EnEvent::SceneAnswered:
            m_scenes[int(line.Number(0))] = IsTrue(line.values[1]);
            return;
        case EnEvent::Good:
        case EnEvent::Refused:
            break;
        default:
            return;
    }
    if (session == 0) {
        return;  // its answer was not recorded
    }
    RefreshState::Request& request = state.Of(session);
    request.isGood = row.event == EnEvent::Good;
    request.red = request.isGood ? std::nullopt : std::make_optional(Refusal{line, row.step, timeMs});
    request.answeredMs = request.answeredMs != 0 ? request.answeredMs : timeMs;
    state.answered = session;
    if (&state == &m_chat && request.isGood) {
        m_scenes.clear();
    }
}

// A preceding line, if any, contains the reason of the request. Requests after a push have no such line. A login
// requests rights and VIP status, the rights first.
void CTracker::OnAsked(RefreshState& state, const Line& line, qint64 timeMs) {
    const bool isVip = line.row->at < 0;
    const int count = line.row->at == 1 ? int(line.Number(0)) : -1;
    QString why = std::exchange(state.nextWhy, QString());
    if (why.isEmpty()) {
        const auto due = std::find_if(state.pushes.begin(), state.pushes.end(), [&](const auto& push) {
            return push.second == count && push.first <= timeMs + kSlackMs && (isVip || IsTrue(line.values.last()));
        });
        why = due == state.pushes.end() ? "a caller"_q : "push"_q;
        if (due != state.pushes.end()) {
            state.pushes.erase(due);
        }
    }
    if (isVip) {
        state.reasons.push_back(why);
        GiveReasons(state);
        return;
    }
    RefreshState::Request& request = state.Of((unsigned long)(line.Number(line.row->at)));
    request.why = why;
    request.sentMs = request.sentMs != 0 ? request.sentMs : timeMs;
}

// ---- opens of the AI chat

// Reports number the watchlist's page 3. The other pages have the number of their scene.
void CTracker::On(const ReportTrace& report, qint64 timeMs) {
    if (report.event == "ClickAIChatEntrance") {
        const QJsonObject params = QJsonDocument::fromJson(QByteArray::fromStdString(report.params)).object();
        const int source = params["entrance_source"_q].toString().toInt();
        Keep(m_opens, {timeMs, User(), source == 3 ? 1 : source}, kOpensKept);
    }
}

/// The open that the module is about to decide. A preload is not reported.
ChatOpen& CTracker::PendingOpen(qint64 timeMs) {
    const bool isPending =
        !m_opens.empty() && !m_opens.back().isLoaded && timeMs <= m_opens.back().timeMs + kSameCallMs;
    return isPending ? m_opens.back() : Keep(m_opens, {timeMs, User()}, kOpensKept);
}

void CTracker::TakeOpen(const Line& line, qint64 timeMs) {
    if (line.row->event == EnEvent::LoadEnded) {
        if (!m_opens.empty() && m_opens.back().isLoaded) {
            m_opens.back().httpCode = int(line.Number(0));
        }
        return;
    }
    ChatOpen& open = PendingOpen(timeMs);
    if (line.row->event == EnEvent::Reason) {
        open.reasons << QString::fromUtf8(line.row->say);
        return;
    }
    open.isLoaded = true;
    open.scene = int(line.Number(0));
    if (open.scene != m_nLoadScene) {
        open.reasons << "the scene changed from %1 to %2"_q.arg(m_nLoadScene).arg(open.scene);
    }
    open.isPreload = IsTrue(line.values[1]);
    open.url = line.values[3];
    if (IsTrue(line.values[2])) {
        open.reasons << "the user had closed the window"_q;
    }
    if (open.reasons.isEmpty()) {
        open.reasons << "parameters or address changed"_q;
    }
    if (open.url.contains(QLatin1String("needChangeSessionId=1"))) {
        open.reasons << (m_nLoadUser != User() ? "new session: the user changed"_q
                                               : "new session: the caller asked for it"_q);
    }
    m_nLoadUser = User();
    m_nLoadScene = open.scene;
}
