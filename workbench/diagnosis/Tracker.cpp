#include "workbench/diagnosis/Tracker.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>

#include "PremiumNumbers.h"
#include "core/login_status_data.h"
#include "framework/JsonText.h"
#include "modules/ZRGrowthMessages.h"

using log_table::EnEvent;
using log_table::EnKind;

namespace {

using EnReason = RefreshState::EnReason;

constexpr const char* kModuleTag = "ZRGrowth";
constexpr const char* kLoginTag = "Host.Login";
constexpr uint32_t kCommandChatScenes = 20982;
constexpr size_t kRequestsKept = 300;
constexpr size_t kRefreshesKept = 500;
constexpr size_t kOpensKept = 30;
constexpr size_t kLinesKept = 40;
constexpr qint64 kHourMs = 3'600'000;
constexpr qint64 kSecondMs = 1'000;
// Related entries are written within one call. Their times can differ slightly, because the clock is read twice.
constexpr qint64 kSlackMs = 50;
constexpr qint64 kSameCallMs = 5'000;
const QString kByPush = "push offline"_q;

template <class T>
bool Contains(const QStringList& list, const T* offer) {
    return offer && list.contains(offer->id);
}

Json::Value Parsed(const std::string& text) {
    std::string error;
    return host::ParseJson(text, error).value_or(Json::Value());
}

/// The module passes its delay on as a signed number of milliseconds. A negative delay runs at once.
qint64 DelayOf(const QString& milliseconds) {
    return std::max(0, int(milliseconds.toUInt()));
}

bool IsTrue(const QString& word) {
    return word == QLatin1String("true");
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

// Each answer that came is followed by one line with its outcome. Both are paired in order.
void Pair(RefreshState& state) {
    while (!state.unjudged.empty() && !state.outcomes.empty()) {
        RefreshState::Request& request = state.requests[state.unjudged.front()];
        const RefreshState::Outcome outcome = state.outcomes.front();
        if (outcome.timeMs < request.answeredMs - kSlackMs) {
            state.outcomes.pop_front();  // its answer was not recorded
            continue;
        }
        state.unjudged.pop_front();
        if (outcome.timeMs > request.answeredMs + kSameCallMs) {
            continue;  // its line was not recorded
        }
        state.outcomes.pop_front();
        request.isGood = !outcome.red;
        request.red = outcome.red;
    }
    while (!state.reasons.empty() && !state.unexplained.empty()) {
        state.requests[state.unexplained.front()].why = state.reasons.front();
        state.unexplained.pop_front();
        state.reasons.pop_front();
    }
}

bool TakeDue(RefreshState& state, int count, qint64 timeMs) {
    const auto due = std::find_if(state.pushes.begin(), state.pushes.end(), [&](const RefreshState::Push& push) {
        return push.count == count && push.dueMs <= timeMs + kSlackMs;
    });
    if (due == state.pushes.end()) {
        return false;
    }
    state.pushes.erase(due);
    return true;
}

}  // namespace

void History::Add(qint64 timeMs, const QString& text) {
    entries.push_back({timeMs, text});
    if (entries.size() > kLinesKept) {
        entries.pop_front();
    }
}

const RefreshState::Request* RefreshState::Find(unsigned long session) const {
    const auto found = requests.find(session);
    return found == requests.end() ? nullptr : &found->second;
}

CTracker::CTracker(ToServer toServer, QObject* parent) : QObject(parent), m_fnToServer(std::move(toServer)) {}

quint64 CTracker::User() const {
    return m_nUser != 0 ? m_nUser : core::login_status_data::Login_GetUserID();
}

qint64 CTracker::ServerNowMs() const {
    return m_fnToServer(QDateTime::currentMSecsSinceEpoch());
}

const AdState* CTracker::Find(const AdSlot& slot) const {
    const auto found = m_ads.find(slot);
    return found == m_ads.end() ? nullptr : &found->second;
}

const History* CTracker::LinesOf(EnKind kind, int number) const {
    const auto found = m_histories.find({kind, number});
    return found == m_histories.end() ? nullptr : &found->second;
}

std::optional<qint64> CTracker::NextHourlyMs(qint64 nowMs) const {
    if (!m_timerFrom) {
        return std::nullopt;
    }
    const qint64 hours = std::max<qint64>(0, nowMs - *m_timerFrom) / kHourMs;
    return *m_timerFrom + (hours + 1) * kHourMs;
}

// The hourly timer runs on through logins.
void CTracker::Reset(quint64 user) {
    m_nUser = user;
    m_bLoggedOut = false;
    m_ads.clear();
    m_requests.clear();
    m_clearReason = {};
    m_rights = {};
    m_vip = {};
    m_chat = {};
    m_nextWhy.reset();
    m_scenes.clear();
    m_opens.clear();
    m_histories.clear();
}

void CTracker::Take(const TraceEvent& seen) {
    if (seen.number != 0 && seen.number <= m_nLastSeen) {
        return;
    }
    m_nLastSeen = std::max(m_nLastSeen, seen.number);
    bool isKnown = true;
    if (const auto* call = std::get_if<HttpTrace>(&seen.what)) {
        TakeCall(*call, seen.timeMs);
    } else if (const auto* command = std::get_if<CommandTrace>(&seen.what)) {
        TakeCommand(*command, seen.timeMs);
    } else if (const auto* report = std::get_if<ReportTrace>(&seen.what)) {
        TakeReport(*report, seen.timeMs);
    } else if (const auto* store = std::get_if<StoreTrace>(&seen.what)) {
        OnLastShownStored(*store);
    } else if (const auto* message = std::get_if<MessageTrace>(&seen.what)) {
        if (message->id == kMsgAIChatPageSceneChanged) {
            ChatOpen& open = PendingOpen(seen.timeMs);
            open.scene = int(message->p2);
            open.reasons << "the scene changed from %1 to %2"_q.arg(message->p1).arg(message->p2);
        }
    } else {
        isKnown = false;
    }
    if (isKnown) {
        Q_EMIT Changed();
    }
}

void CTracker::TakeLine(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLastLine) {
        return;
    }
    m_nLastLine = std::max(m_nLastLine, entry.number);
    const qint64 time = entry.time.toMSecsSinceEpoch();
    if (entry.record.module == kLoginTag) {
        static const QRegularExpression login("^User (\\d+) logged (in|out)$"_q);
        const QRegularExpressionMatch match = login.match(entry.record.text);
        if (match.hasMatch()) {
            if (match.captured(2) == QLatin1String("in")) {
                Reset(match.captured(1).toULongLong());
            } else {
                m_bLoggedOut = true;
            }
            Q_EMIT Changed();
        }
        return;
    }
    const auto line = entry.record.module == kModuleTag ? log_table::Read(entry.record.text) : std::nullopt;
    if (!line) {
        return;
    }
    const int number = int(line->Number(line->row->at));
    switch (line->row->kind) {
        case EnKind::Ad:
            TakeAd(*line, time);
            break;
        case EnKind::Rights:
            m_rights.history.Add(time, entry.record.text);
            TakeRefresh(m_rights, *line, time);
            break;
        case EnKind::Vip:
            m_vip.history.Add(time, entry.record.text);
            TakeRefresh(m_vip, *line, time);
            break;
        case EnKind::Widget:
            m_histories[{EnKind::Widget, number}].Add(time, entry.record.text);
            break;
        case EnKind::Activation:
            m_nActivating = line->row->event == EnEvent::Asked ? number : m_nActivating;
            m_histories[{EnKind::Widget, m_nActivating}].Add(time, entry.record.text);
            break;
        case EnKind::Chat:
            if (line->row->at >= 0) {
                m_histories[{EnKind::Chat, number}].Add(time, entry.record.text);
            }
            TakeChat(*line, time);
            break;
        case EnKind::ChatOpen:
            TakeOpen(*line, time);
            break;
    }
    Q_EMIT Changed();
}

// ---- ads

AdState& CTracker::Of(const AdSlot& slot) {
    AdState& ad = m_ads[slot];
    ad.slot = slot;
    return ad;
}

// The oldest request that no position holds is dropped.
AdState::Request CTracker::RequestOf(const AdRequest& read, qint64 timeMs) {
    AdState::Request& request = m_requests[read.id];
    if (!request) {
        request = std::make_shared<AdRequest>(read);
        request->sentMs = timeMs;
        AdState& ad = Of(read.slot);
        if (!ad.last || ad.last->sentMs <= timeMs) {
            ad.last = request;
        }
    }
    const AdState::Request result = request;
    if (m_requests.size() > kRequestsKept) {
        auto oldest = m_requests.end();
        for (auto it = m_requests.begin(); it != m_requests.end(); ++it) {
            const bool isOlder = oldest == m_requests.end() || it->second->sentMs < oldest->second->sentMs;
            oldest = it->second.use_count() == 1 && isOlder ? it : oldest;
        }
        if (oldest != m_requests.end()) {
            m_requests.erase(oldest);
        }
    }
    return result;
}

void CTracker::TakeCall(const HttpTrace& call, qint64 timeMs) {
    const bool isEnd = call.kind != HttpTrace::EnKind::Sent;
    const auto read = ReadAdRequest(call.url, isEnd ? call.requestBody : call.body);
    if (!read) {
        return;
    }
    if (!isEnd) {
        RequestOf(*read, timeMs)->askedFor = read->askedFor;
        return;
    }
    const auto found = m_requests.find(read->id);
    if (found == m_requests.end()) {
        return;  // of a former user
    }
    AdRequest& request = *found->second;
    request.answeredMs = timeMs;
    request.status = call.status;
    request.durationMs = call.durationMs;
    if (call.kind == HttpTrace::EnKind::Answered) {
        ReadAdAnswer(call.body, request);
    }
}

// The stored time of the last showing was changed from outside. The refusal by the interval is recomputed.
void CTracker::OnLastShownStored(const StoreTrace& store) {
    if (!store.isSave || !store.succeeded) {
        return;
    }
    for (auto& [slot, ad] : m_ads) {
        for (std::optional<Refusal>* red : {&ad.red, &ad.earlier}) {
            if (*red && (*red)->line.row->free == log_table::EnFree::AfterSum &&
                (*red)->line.values.value(6).toStdString() == store.key) {
                (*red)->line.values[1] = QString::fromStdString(store.value);
            }
        }
    }
}

// Lines without type and position belong to the popup.
void CTracker::TakeAd(const Line& line, qint64 timeMs) {
    const log_table::Row& row = *line.row;
    const AdSlot slot{row.at < 0 ? kBottomPopup.type : int(line.Number(row.at)),
                      row.position < 0 ? kBottomPopup.position : int(line.Number(row.position))};
    switch (row.event) {
        case EnEvent::PictureFailed:
            OnPictureFailed(line, timeMs);
            return;
        case EnEvent::Undecodable:
            m_strUndecodable = "%1: %2"_q.arg(line.values.value(0), line.values.value(1));
            return;
        case EnEvent::LoggedOut:
        case EnEvent::OtherLanguage:
            m_clearReason = line;
            return;
        case EnEvent::Withdrawn:
            Withdraw(line, timeMs);
            OnAdPush(line, timeMs);
            return;
        case EnEvent::Pushed:
            OnAdPush(line, timeMs);
            return;
        default:
            break;
    }
    AdState& ad = Of(slot);
    ad.history.Add(timeMs, line.text);
    TakeAd(ad, line, timeMs);
}

void CTracker::TakeAd(AdState& ad, const Line& line, qint64 timeMs) {
    using namespace log_table;
    const bool isBanner = ad.slot.type == kTypeBanner;
    switch (line.row->event) {
        case EnEvent::Asked: {
            AdRequest read;
            read.id = line.values[4];
            read.slot = ad.slot;
            read.path = line.values[0];
            ad.last = RequestOf(read, timeMs);
            ad.isAsking = true;
            m_clearReason = {};
            m_strUndecodable.clear();
            return;
        }
        case EnEvent::Answered: {
            ad.isAsking = false;
            ad.isNewAttempt = true;
            ad.isRetry = false;
            ad.passed = kStepKept;
            const auto found = m_requests.find(line.values[3]);
            if (found != m_requests.end()) {
                ad.answered = found->second;
            }
            ad.before = ad.standing;
            ad.standing = ad.answered;
            return;
        }
        case EnEvent::Retried:
            ad.isNewAttempt = true;
            ad.isRetry = true;
            ad.passed = kStepKept;
            if (ad.standing) {
                ad.standing->drops.clear();
            }
            return;
        case EnEvent::Passed:
            ad.passed = line.row->step + 1;
            return;
        case EnEvent::Dropped:
            if (ad.standing) {
                ad.standing->drops.push_back({line.values[4], Filled(line.row->say, line, m_fnToServer(timeMs)),
                                              line.Number(1),
                                              QLatin1String(line.row->check) == QLatin1String("starts")});
            }
            return;
        case EnEvent::Refused:
            OnAdRefused(ad, line, timeMs);
            return;
        case EnEvent::Loading:
            ad.isLoading = true;
            ad.isNewAttempt = false;
            return;
        case EnEvent::Shown:
            ad.isLoading = false;
            ad.red.reset();
            ad.earlier.reset();
            // The next banner is created before the current one is destroyed.
            ad.shownCount = isBanner ? ad.shownCount + 1 : 1;
            ++ad.shownTotal;
            ad.made = ad.standing;
            ad.shownAd = isBanner ? QString() : line.values[2];
            ad.shownMs = timeMs;
            return;
        case EnEvent::Gone:
            ad.isLoading = false;
            ad.shownCount = 0;
            return;
        case EnEvent::Closed:
            OnAdClosed(ad, line, timeMs);
            return;
        case EnEvent::Cleared:
            OnAdCleared(ad, line, timeMs);
            return;
        case EnEvent::PushRefused:
            Put(ad, {line, line.row->step, timeMs, true, {}, {}});
            return;
        default:
            return;
    }
}

// The conditions are checked twice: for the list, and again when the picture has come.
void CTracker::OnAdRefused(AdState& ad, const Line& line, qint64 timeMs) {
    using namespace log_table;
    Refusal refusal{line, line.row->step, timeMs, false, {}, {}};
    const bool isOwnList = refusal.step == kStepKept && ad.passed <= kStepKept && (ad.isNewAttempt || !ad.isLoading);
    if (refusal.step == kStepKept || refusal.step == kStepConditions) {
        const bool isAgain = ad.isLoading && !ad.isNewAttempt;
        refusal.step = isAgain ? kStepShown : isOwnList ? int(kStepKept) : int(kStepConditions);
    }
    const bool isLimit = line.row->free == EnFree::Sum;
    const bool isOld = QLatin1String(line.row->check) == QLatin1String("answer to the latest request");
    if (isLimit) {
        ad.nextAskS = line.Number(1) + line.Number(2);
    }
    if (refusal.step <= kStepAnswered) {
        ad.isAsking = ad.isAsking && (isLimit || isOld);
        refusal.leavesRest = isLimit || isOld || ad.standing != nullptr;
        refusal.reason = m_strUndecodable;
        if (ad.last && !isLimit && !isOld) {
            ad.last->refusal = Filled(line.row->say, line, m_fnToServer(timeMs));
        }
    } else if (isOwnList) {
        const bool isNothing = QLatin1String(line.row->check) == QLatin1String("a list");
        AdState::Request refused = ad.standing;
        if (refused) {
            refusal.drops = refused->drops;
        }
        if (ad.isRetry) {
            ad.standing.reset();  // a refused waiting list is deleted
        } else if (ad.isNewAttempt) {
            if (refused && line.row->free != EnFree::Window) {
                refused->refusal = QString::fromUtf8(line.row->check);
            }
            ad.standing = ad.before;  // a refused answer leaves the previous list
        }
        refusal.leavesRest = isNothing || (!ad.isRetry && ad.standing != nullptr);
    }
    ad.isNewAttempt = false;
    Put(ad, std::move(refusal));
}

void CTracker::OnAdClosed(AdState& ad, const Line& line, qint64 timeMs) {
    ad.shownCount = std::max(0, ad.shownCount - 1);
    if (ad.shownCount == 0) {
        ad.isLoading = false;
        Put(ad, {line, log_table::kStepShown, timeMs, false, {}, {}});
    }
}

// The module keeps a list that waits behind a withdrawn visible ad, although its log line reports that all was cleared.
void CTracker::OnAdCleared(AdState& ad, const Line& line, qint64 timeMs) {
    const bool isClosed =
        ad.red && ad.red->line.row->event == EnEvent::Closed && timeMs <= ad.red->timeMs + kSameCallMs;
    const bool isByPush = isClosed && ad.red->line.values.value(0) == kByPush && ad.red->timeMs >= ad.withdrawnMs;
    if (isByPush && !ad.withdrawn.isEmpty() &&
        !Contains(ad.withdrawn, ad.standing ? ad.standing->FirstKept() : nullptr)) {
        ad.withdrawn.clear();
        return;
    }
    ad.standing.reset();
    if (!isClosed && ad.shownCount == 0) {
        Refusal refusal{line, log_table::kStepKept, timeMs, false, {}, {}};
        refusal.reason = m_clearReason.text;
        Put(ad, std::move(refusal));
    }
}

// The line names no position. A failed picture of a banner is known by its URL.
void CTracker::OnPictureFailed(const Line& line, qint64 timeMs) {
    for (auto& [slot, ad] : m_ads) {
        if (slot.type != int(line.Number(0))) {
            continue;
        }
        const QString url = line.values[1];
        const auto isOf = [&url](const AdState::Request& request) {
            return request && std::any_of(request->ads.begin(), request->ads.end(),
                                          [&url](const AdOffer& offer) { return offer.image == url; });
        };
        if (slot.type == kTypeBanner ? isOf(ad.made) || isOf(ad.standing) : ad.isLoading) {
            ad.failedPictures.insert(url);
            ad.history.Add(timeMs, line.text);
            if (slot.type == kTypePopup) {
                Put(ad, {line, log_table::kStepPicture, timeMs, false, {}, {}});
            }
        }
    }
}

// The delay is computed in 32 bits, as in the module. A negative result means no delay.
void CTracker::OnAdPush(const Line& line, qint64 timeMs) {
    const AdSlot named{int(line.Number(0)), int(line.Number(1))};
    if (!(named == kBottomPopup)) {
        return;
    }
    AdState& ad = Of(kBottomPopup);
    ad.history.Add(timeMs, line.text);
    const qint64 now = m_fnToServer(timeMs);
    const auto delay = int32_t(uint32_t(line.values.last().toLongLong()) * uint32_t(kSecondMs));
    ad.pushesMs.erase(std::remove_if(ad.pushesMs.begin(), ad.pushesMs.end(), [now](qint64 due) { return due <= now; }),
                      ad.pushesMs.end());
    ad.pushesMs.push_back(now + std::max(0, delay));
}

// The module withdraws ads from the popup, whatever position the push names. The list is deleted without its own line.
void CTracker::Withdraw(const Line& line, qint64 timeMs) {
    AdState& ad = Of(kBottomPopup);
    ad.withdrawn = line.values[2].split(QLatin1Char(','));
    ad.withdrawnMs = timeMs;
    if (ad.standing && Contains(ad.withdrawn, ad.standing->FirstKept())) {
        ad.standing.reset();
        Put(ad, {line, line.row->step, timeMs, false, {}, {}});
    }
}

// ---- rights and VIP status

void CTracker::TakeCommand(const CommandTrace& command, qint64 timeMs) {
    RefreshState* state = command.asked == kCommandPremiumAccess ? &m_rights
                          : command.asked == kCommandVipStatus   ? &m_vip
                          : command.asked == kCommandChatScenes  ? &m_chat
                                                                 : nullptr;
    if (!state || command.kind == CommandTrace::EnKind::Pushed) {
        return;
    }
    RefreshState::Request& request = state->requests[command.session];
    request.session = command.session;
    if (command.kind == CommandTrace::EnKind::Sent) {
        request.sentMs = timeMs;
        state->last = command.session;
        if (state == &m_vip) {
            state->unexplained.push_back(command.session);
        }
    } else {
        request.answeredMs = timeMs;
        state->answered = command.session;
        if (command.kind == CommandTrace::EnKind::Failed) {
            static const log_table::Row failed{"",
                                               EnEvent::Refused,
                                               log_table::kStepAnswered,
                                               "channel",
                                               "channel error {0}",
                                               "no error",
                                               "The channel failed with error {0}."};
            request.red = Refusal{{&failed, {QString::number(command.error)}, {}}, failed.step, timeMs, false, {}, {}};
        } else if (state != &m_chat) {
            state->unjudged.push_back(command.session);
        }
    }
    Pair(*state);
    for (auto it = state->requests.begin(); it != state->requests.end() && state->requests.size() > kRefreshesKept;) {
        const bool isOld = it->second.answeredMs != 0 && it->first != state->last && it->first != state->answered;
        it = isOld ? state->requests.erase(it) : std::next(it);
    }
}

void CTracker::TakeRefresh(RefreshState& state, const Line& line, qint64 timeMs) {
    const bool isVip = &state == &m_vip;
    switch (line.row->event) {
        case EnEvent::TimerReady:
            m_timerFrom = timeMs;
            break;
        case EnEvent::TimerStopped:
            m_timerFrom.reset();
            break;
        case EnEvent::ForLogin:
            m_bLoggedOut = false;
            m_nextWhy = EnReason::Login;
            m_bVipLogin = true;
            break;
        case EnEvent::ForHour:
            m_nextWhy = EnReason::Hourly;
            m_timerFrom = timeMs;
            break;
        case EnEvent::ForLanguage:
            m_nextWhy = EnReason::Language;
            break;
        case EnEvent::Asked:
            OnAsked(state, line, timeMs);
            break;
        case EnEvent::Good:
            if (!m_bLoggedOut) {
                state.outcomes.push_back({timeMs, std::nullopt});
            }
            break;
        case EnEvent::Refused: {
            Refusal red{line, line.row->step, timeMs, false, {}, {}};
            if (line.row->at >= 0) {
                RefreshState::Request& request = state.requests[(unsigned long)(line.Number(0))];
                request.session = (unsigned long)(line.Number(0));
                request.red = red;
                request.answeredMs = request.answeredMs != 0 ? request.answeredMs : timeMs;
                state.answered = request.session;
            } else if (!isVip || line.row->step != log_table::kStepAnswered || line.Number(0) == 0) {
                // A channel error is recorded in the traffic, with its session.
                state.outcomes.push_back({timeMs, red});
            }
            break;
        }
        case EnEvent::Pushed:
            OnRefreshPush(state, line, timeMs);
            break;
        default:
            break;
    }
    Pair(state);
}

// A preceding line, if any, contains the reason of the request. Requests after a push have no such line. A login
// requests rights and VIP status, the rights first.
void CTracker::OnAsked(RefreshState& state, const Line& line, qint64 timeMs) {
    if (&state == &m_vip) {
        const bool isPush = !m_bVipLogin && TakeDue(state, -1, timeMs);
        state.reasons.push_back(m_bVipLogin ? EnReason::Login : isPush ? EnReason::Push : EnReason::Caller);
        m_bVipLogin = false;
        return;
    }
    const auto session = (unsigned long)(line.Number(line.row->at));
    RefreshState::Request& request = state.requests[session];
    request.session = session;
    request.sentMs = request.sentMs != 0 ? request.sentMs : timeMs;
    state.last = session;
    if (m_nextWhy) {
        request.why = *m_nextWhy;
        m_nextWhy.reset();
        return;
    }
    const int count = line.row->at == 0 ? -1 : int(line.Number(0));
    const bool isPush = IsTrue(line.values.last()) && TakeDue(state, count, timeMs);
    request.why = isPush ? EnReason::Push : EnReason::Caller;
}

void CTracker::OnRefreshPush(RefreshState& state, const Line& line, qint64 timeMs) {
    const bool isList = &state == &m_rights && !IsTrue(line.values[0]);
    state.pushes.push_back({timeMs + DelayOf(line.values.last()), isList ? int(line.Number(1)) : -1});
    std::sort(state.pushes.begin(), state.pushes.end(),
              [](const RefreshState::Push& left, const RefreshState::Push& right) { return left.dueMs < right.dueMs; });
}

// ---- AI chat

void CTracker::TakeChat(const Line& line, qint64 timeMs) {
    RefreshState::Request& request = m_chat.requests[m_chat.answered];
    switch (line.row->event) {
        case EnEvent::Answered:
            m_scenes.clear();
            request.answeredMs = timeMs;
            request.isGood = true;
            request.red.reset();
            break;
        case EnEvent::SceneAnswered:
            m_scenes[int(line.Number(0))] = IsTrue(line.values[1]);
            break;
        case EnEvent::Refused:
            request.isGood = false;
            request.red = Refusal{line, line.row->step, timeMs, false, {}, {}};
            break;
        default:
            break;
    }
}

void CTracker::TakeReport(const ReportTrace& report, qint64 timeMs) {
    if (report.event != "ClickAIChatEntrance") {
        return;
    }
    // The scenes of pages by their numbers in reports.
    static const std::map<std::string, int> scenes{{"3", 1}, {"4", 4}, {"5", 5}, {"12", 12}, {"42", 42}};
    const Json::Value params = Parsed(report.params);
    const Json::Value source = params.isObject() ? params.get("entrance_source", Json::Value()) : Json::Value();
    ChatOpen open;
    open.timeMs = timeMs;
    open.user = User();
    const auto scene = scenes.find(source.isString() ? source.asString() : std::string());
    open.scene = scene == scenes.end() ? 0 : scene->second;
    m_opens.push_back(open);
    if (m_opens.size() > kOpensKept) {
        m_opens.pop_front();
    }
}

/// The open that the module is about to decide. A preload is not reported.
ChatOpen& CTracker::PendingOpen(qint64 timeMs) {
    const bool isPending =
        !m_opens.empty() && !m_opens.back().isLoaded && timeMs <= m_opens.back().timeMs + kSameCallMs;
    if (!isPending) {
        ChatOpen open;
        open.timeMs = timeMs;
        open.user = User();
        m_opens.push_back(open);
    }
    return m_opens.back();
}

void CTracker::TakeOpen(const Line& line, qint64 timeMs) {
    if (line.row->event == EnEvent::LoadEnded) {
        if (!m_opens.empty() && m_opens.back().isLoaded) {
            m_opens.back().httpCode = int(line.Number(0));
        }
        return;
    }
    ChatOpen& open = PendingOpen(timeMs);
    switch (line.row->event) {
        case EnEvent::Cleaned:
            open.reasons << "the last load was the preload"_q;
            return;
        case EnEvent::Created:
            open.reasons << "there was no window"_q;
            return;
        default:
            break;
    }
    open.isLoaded = true;
    open.scene = int(line.Number(0));
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
}
