#include "workbench/rights/RefreshText.h"

#include <QDateTime>

#include "PremiumNumbers.h"

namespace refresh_text {
namespace {

using EnOutcome = CRefreshTracker::EnOutcome;
using EnSubject = CRefreshTracker::EnSubject;
using EnRefreshReason = CRefreshTracker::EnRefreshReason;

const QString kDot = QStringLiteral(" \u00B7 ");
constexpr size_t kShown = 4;

QString Clock(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs).toString(QStringLiteral("HH:mm:ss"));
}

/// Joins the first items of a list, each as `inWords`, and adds the number of the others.
template <class Item, class AsText>
QString FirstOf(const std::vector<Item>& items, const AsText& inWords) {
    if (items.empty()) {
        return QStringLiteral("none");
    }
    QStringList words;
    for (size_t index = 0; index < items.size() && index < kShown; ++index) {
        words << inWords(items[index]);
    }
    if (items.size() > kShown) {
        words << QStringLiteral("and %1 more").arg(items.size() - kShown);
    }
    return words.join(QLatin1Char('\n'));
}

uint32_t CommandOf(EnSubject subject) {
    return subject == EnSubject::Vip ? kCommandVipStatus : kCommandPremiumAccess;
}

QString Session(unsigned long session) {
    return QStringLiteral("session %1").arg(session);
}

}  // namespace

QString Why(EnRefreshReason why) {
    switch (why) {
        case EnRefreshReason::Login:
            return QStringLiteral("login");
        case EnRefreshReason::Hourly:
            return QStringLiteral("hourly");
        case EnRefreshReason::Language:
            return QStringLiteral("language");
        case EnRefreshReason::Push:
            return QStringLiteral("push");
        case EnRefreshReason::Caller:
            return QStringLiteral("a caller");
        case EnRefreshReason::Unknown:
            break;
    }
    return QStringLiteral("reason unknown");
}

QString Outcome(const CRefreshTracker::Refresh& refresh) {
    switch (refresh.outcome) {
        case EnOutcome::InFlight:
            return QStringLiteral("in flight");
        case EnOutcome::Answered:
            return QStringLiteral("answered");
        case EnOutcome::Good:
            return QStringLiteral("good");
        case EnOutcome::ChannelError:
            return QStringLiteral("channel error %1").arg(refresh.number);
        case EnOutcome::OtherCommand:
            return QStringLiteral("wrong command %1").arg(refresh.number);
        case EnOutcome::BadBytes:
            return QStringLiteral("bad bytes");
        case EnOutcome::NoCode:
            return QStringLiteral("no code");
        case EnOutcome::OtherCode:
            return QStringLiteral("code %1").arg(refresh.number);
        case EnOutcome::UnknownSession:
            return QStringLiteral("unknown session");
        case EnOutcome::Failed:
            break;
    }
    return QStringLiteral("failed");
}

QString Refresh(const CRefreshTracker::Refresh& refresh) {
    return QStringList{Clock(refresh.answeredMs), Why(refresh.why), Outcome(refresh), Session(refresh.session)}.join(
        kDot);
}

QString InFlight(const std::vector<CRefreshTracker::Refresh>& inFlight) {
    return FirstOf(inFlight, [](const CRefreshTracker::Refresh& refresh) {
        return QStringList{QString::number(CommandOf(refresh.subject)), Clock(refresh.sentMs), Why(refresh.why),
                           Session(refresh.session)}
            .join(kDot);
    });
}

QString Waiting(const std::vector<CRefreshTracker::Waiting>& waiting) {
    return FirstOf(waiting, [](const CRefreshTracker::Waiting& push) {
        QStringList words{QString::number(CommandOf(push.subject)), Clock(push.dueMs)};
        if (push.subject == EnSubject::Premium) {
            words << (push.needAll ? QStringLiteral("all rights")
                                   : QStringLiteral("rights listed: %1").arg(push.count));
        }
        return words.join(kDot);
    });
}

QString NextHourly(std::optional<qint64> nextMs, qint64 nowMs) {
    if (!nextMs) {
        return QStringLiteral("the timer does not run");
    }
    const qint64 seconds = (*nextMs - nowMs) / 1000;
    const QString left = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return QStringLiteral("%1, in %2").arg(Clock(*nextMs), left);
}

}  // namespace refresh_text
