#include "workbench/rights/RefreshTracker.h"

#include <algorithm>

#include "PremiumNumbers.h"
#include "modules/ZRGrowthMessages.h"
#include "workbench/rights/ModuleLines.h"

namespace {

using module_lines::EnLine;

constexpr const char* kModuleTag = "ZRGrowth";
constexpr qint64 kHourMs = 3'600'000;
constexpr size_t kKept = 500;
// Related entries are written within one call. Their times can differ slightly, because the clock is read twice.
constexpr qint64 kSlackMs = 50;
constexpr qint64 kSameCallMs = 5'000;

bool IsTrue(const QString& word) {
    return word == QLatin1String("true");
}

/// The module passes its delay on as a signed number. A negative delay runs at once.
qint64 DelayOf(const QString& milliseconds) {
    return std::max(0, int(milliseconds.toUInt()));
}

}  // namespace

CRefreshTracker::CRefreshTracker(QObject* parent) : QObject(parent) {}

void CRefreshTracker::Take(const TraceEvent& seen) {
    if (seen.number != 0 && seen.number <= m_nLastSeen) {
        return;
    }
    m_nLastSeen = std::max(m_nLastSeen, seen.number);
    if (const auto* command = std::get_if<CommandTrace>(&seen.what)) {
        TakeCommand(*command, seen.timeMs);
    } else if (const auto* message = std::get_if<MessageTrace>(&seen.what)) {
        TakeMessage(*message);
    }
}

void CRefreshTracker::TakeCommand(const CommandTrace& command, qint64 timeMs) {
    const bool isVip = command.asked == kCommandVipStatus;
    if (command.kind == CommandTrace::EnKind::Pushed || (!isVip && command.asked != kCommandPremiumAccess)) {
        return;
    }
    const EnSubject subject = isVip ? EnSubject::Vip : EnSubject::Premium;
    Refresh& refresh = Of(subject, command.session);
    if (command.kind == CommandTrace::EnKind::Sent) {
        refresh.sentMs = timeMs;
        if (isVip) {
            m_vipUnexplained.push_back(command.session);
            PairVipReasons();
        }
        Q_EMIT Changed();
        return;
    }
    refresh.answeredMs = timeMs;
    m_last[subject] = command.session;
    if (isVip) {
        m_lastVipFailure.reset();
    }
    if (command.kind == CommandTrace::EnKind::Failed) {
        refresh.outcome = EnOutcome::ChannelError;
        refresh.number = command.error;
    } else {
        refresh.outcome = EnOutcome::Answered;
        if (isVip) {
            m_unpaired[subject].sessions.push_back(command.session);
            Pair(subject);
        }
    }
    Prune();
    Q_EMIT Changed();
}

void CRefreshTracker::TakeMessage(const MessageTrace& message) {
    switch (message.id) {
        case kMsgPremiumRequestAnswered: {
            const auto found = m_refreshes.find(message.p1);
            if (found == m_refreshes.end() || found->second.outcome == EnOutcome::ChannelError) {
                return;
            }
            if (message.p2 == 0) {
                found->second.outcome = EnOutcome::Good;
            } else if (found->second.outcome == EnOutcome::Answered) {
                found->second.outcome = EnOutcome::Failed;
                m_unpaired[EnSubject::Premium].sessions.push_back(found->first);
                Pair(EnSubject::Premium);
            }
            break;
        }
        case kMsgPremiumDataChanged: {
            Refresh* last = LastOf(EnSubject::Premium);
            if (!last || last->outcome != EnOutcome::Answered) {
                return;
            }
            last->outcome = EnOutcome::Good;
            break;
        }
        case kMsgVipStatusChanged:
            OnVipGood();
            break;
        default:
            return;
    }
    Q_EMIT Changed();
}

// The last answer is now known to be good. A failure line that was assigned to it belongs to a later answer.
void CRefreshTracker::OnVipGood() {
    Refresh* last = LastOf(EnSubject::Vip);
    if (!last || last->outcome == EnOutcome::ChannelError) {
        return;
    }
    Unpaired& unpaired = m_unpaired[EnSubject::Vip];
    if (m_lastVipFailure) {
        unpaired.lines.push_front(*m_lastVipFailure);
        m_lastVipFailure.reset();
    }
    unpaired.sessions.erase(std::remove(unpaired.sessions.begin(), unpaired.sessions.end(), last->session),
                            unpaired.sessions.end());
    last->outcome = EnOutcome::Good;
    last->number = 0;
}

void CRefreshTracker::TakeLine(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLastLine) {
        return;
    }
    m_nLastLine = std::max(m_nLastLine, entry.number);
    if (entry.record.module != kModuleTag) {
        return;
    }
    const auto said = module_lines::Read(entry.record.text);
    if (!said) {
        return;
    }
    const qint64 time = entry.time.toMSecsSinceEpoch();
    const QStringList& values = said->values;
    switch (said->line) {
        case EnLine::TimerReady:
            m_timerFrom = time;
            break;
        case EnLine::TimerStops:
            m_timerFrom.reset();
            break;
        case EnLine::ForLogin:
            m_nextWhy = EnRefreshReason::Login;
            m_bVipLogin = true;
            break;
        case EnLine::ForHour:
            m_nextWhy = EnRefreshReason::Hourly;
            m_timerFrom = time;
            break;
        case EnLine::ForLanguage:
            m_nextWhy = EnRefreshReason::Language;
            break;
        case EnLine::SentAll:
        case EnLine::SentList:
            OnSent(values, time);
            break;
        case EnLine::UnknownSession:
        case EnLine::ChannelError: {
            const bool isError = said->line == EnLine::ChannelError;
            Refresh& refresh = Of(EnSubject::Premium, values[0].toULong());
            refresh.outcome = isError ? EnOutcome::ChannelError : EnOutcome::UnknownSession;
            refresh.number = isError ? values[1].toLongLong() : 0;
            break;
        }
        case EnLine::BadBytes:
            Explain(EnSubject::Premium, {time, EnOutcome::BadBytes, 0});
            break;
        case EnLine::NoCode:
            Explain(EnSubject::Premium, {time, EnOutcome::NoCode, 0});
            break;
        case EnLine::OtherCode:
            Explain(EnSubject::Premium, {time, EnOutcome::OtherCode, values[0].toLongLong()});
            break;
        case EnLine::PushTaken: {
            const qint64 due = time + DelayOf(values[2]);
            m_waiting.emplace(due, Waiting{EnSubject::Premium, due, IsTrue(values[0]), values[1].toInt()});
            break;
        }
        case EnLine::VipSent:
            OnVipSent(time);
            break;
        case EnLine::VipRefused:
            // A channel error is recorded in the traffic, with its session.
            if (values[0].toInt() == 0) {
                Explain(EnSubject::Vip, {time, EnOutcome::OtherCommand, values[1].toLongLong()});
            }
            break;
        case EnLine::VipBadBytes:
            Explain(EnSubject::Vip, {time, EnOutcome::BadBytes, 0});
            break;
        case EnLine::VipPushTaken: {
            const qint64 due = time + DelayOf(values[0]);
            m_waiting.emplace(due, Waiting{EnSubject::Vip, due, true, 0});
            break;
        }
    }
    Q_EMIT Changed();
}

// A preceding line, if any, contains the reason of the request. Requests after a push have no such line.
void CRefreshTracker::OnSent(const QStringList& values, qint64 timeMs) {
    const bool isAll = values.size() == 2;
    const int count = isAll ? 0 : values.front().toInt();
    const bool serverPush = IsTrue(values.back());
    Refresh& refresh = Of(EnSubject::Premium, values[values.size() - 2].toULong());
    if (m_nextWhy) {
        refresh.why = *m_nextWhy;
        m_nextWhy.reset();
    } else {
        const bool isPush = serverPush && TakeDue(EnSubject::Premium, isAll, count, timeMs);
        refresh.why = isPush ? EnRefreshReason::Push : EnRefreshReason::Caller;
    }
}

// The line has no session and no reason. A login requests both, the rights first.
void CRefreshTracker::OnVipSent(qint64 timeMs) {
    EnRefreshReason why = EnRefreshReason::Caller;
    if (m_bVipLogin) {
        why = EnRefreshReason::Login;
        m_bVipLogin = false;
    } else if (TakeDue(EnSubject::Vip, true, 0, timeMs)) {
        why = EnRefreshReason::Push;
    }
    m_vipWhys.push_back(why);
    PairVipReasons();
}

void CRefreshTracker::PairVipReasons() {
    while (!m_vipWhys.empty() && !m_vipUnexplained.empty()) {
        Of(EnSubject::Vip, m_vipUnexplained.front()).why = m_vipWhys.front();
        m_vipUnexplained.pop_front();
        m_vipWhys.pop_front();
    }
}

void CRefreshTracker::Explain(EnSubject subject, const Failure& failure) {
    m_unpaired[subject].lines.push_back(failure);
    Pair(subject);
}

void CRefreshTracker::Pair(EnSubject subject) {
    Unpaired& unpaired = m_unpaired[subject];
    while (!unpaired.sessions.empty() && !unpaired.lines.empty()) {
        const Failure failure = unpaired.lines.front();
        const auto found = m_refreshes.find(unpaired.sessions.front());
        if (found != m_refreshes.end() && failure.timeMs < found->second.answeredMs - kSlackMs) {
            unpaired.lines.pop_front();  // its answer was not recorded
            continue;
        }
        unpaired.sessions.pop_front();
        if (found == m_refreshes.end() || failure.timeMs > found->second.answeredMs + kSameCallMs) {
            continue;  // its line was not recorded
        }
        unpaired.lines.pop_front();
        found->second.outcome = failure.outcome;
        found->second.number = failure.number;
        if (subject == EnSubject::Vip) {
            m_lastVipFailure = failure;
        }
    }
}

bool CRefreshTracker::TakeDue(EnSubject subject, bool needAll, int count, qint64 timeMs) {
    for (auto it = m_waiting.begin(); it != m_waiting.end() && it->first <= timeMs + kSlackMs; ++it) {
        const Waiting& waiting = it->second;
        if (waiting.subject == subject && waiting.needAll == needAll && (needAll || waiting.count == count)) {
            m_waiting.erase(it);
            return true;
        }
    }
    return false;
}

CRefreshTracker::Refresh& CRefreshTracker::Of(EnSubject subject, unsigned long session) {
    Refresh& refresh = m_refreshes[session];
    refresh.subject = subject;
    refresh.session = session;
    return refresh;
}

CRefreshTracker::Refresh* CRefreshTracker::LastOf(EnSubject subject) {
    const auto last = m_last.find(subject);
    const auto found = last == m_last.end() ? m_refreshes.end() : m_refreshes.find(last->second);
    return found == m_refreshes.end() ? nullptr : &found->second;
}

void CRefreshTracker::Prune() {
    for (auto it = m_refreshes.begin(); it != m_refreshes.end() && m_refreshes.size() > kKept;) {
        const bool isLast =
            std::any_of(m_last.begin(), m_last.end(), [&it](const auto& last) { return last.second == it->first; });
        it = it->second.answeredMs != 0 && !isLast ? m_refreshes.erase(it) : std::next(it);
    }
}

std::vector<CRefreshTracker::Refresh> CRefreshTracker::InFlight() const {
    std::vector<Refresh> inFlight;
    for (const auto& [session, refresh] : m_refreshes) {
        if (refresh.sentMs != 0 && refresh.answeredMs == 0) {
            inFlight.push_back(refresh);
        }
    }
    return inFlight;
}

std::optional<CRefreshTracker::Refresh> CRefreshTracker::Last(EnSubject subject) const {
    const auto last = m_last.find(subject);
    return last == m_last.end() ? std::nullopt : Find(last->second);
}

std::optional<CRefreshTracker::Refresh> CRefreshTracker::Find(unsigned long session) const {
    const auto found = m_refreshes.find(session);
    return found == m_refreshes.end() ? std::nullopt : std::make_optional(found->second);
}

std::vector<CRefreshTracker::Waiting> CRefreshTracker::WaitingPushes() const {
    std::vector<Waiting> waiting;
    for (const auto& [due, push] : m_waiting) {
        waiting.push_back(push);
    }
    return waiting;
}

std::optional<qint64> CRefreshTracker::NextHourly(qint64 nowMs) const {
    if (!m_timerFrom) {
        return std::nullopt;
    }
    const qint64 hours = std::max<qint64>(0, nowMs - *m_timerFrom) / kHourMs;
    return *m_timerFrom + (hours + 1) * kHourMs;
}
