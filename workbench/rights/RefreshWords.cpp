#include "workbench/rights/RefreshWords.h"

#include <QDateTime>

#include "ClientTexts.h"
#include "PremiumNumbers.h"

namespace refresh_words {
namespace {

using texts::Tr;
using EnOutcome = CRefreshBoard::EnOutcome;
using EnSubject = CRefreshBoard::EnSubject;
using EnWhy = CRefreshBoard::EnWhy;

const QString kDot = QStringLiteral(" \u00B7 ");
constexpr size_t kShown = 4;

QString Clock(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs).toString(QStringLiteral("HH:mm:ss"));
}

/// The first few of a list, each by `inWords`, and how many more there are.
template <class Item, class InWords>
QString FirstOf(const std::vector<Item>& items, const InWords& inWords) {
    if (items.empty()) {
        return Tr(texts::kNothing);
    }
    QStringList words;
    for (size_t index = 0; index < items.size() && index < kShown; ++index) {
        words << inWords(items[index]);
    }
    if (items.size() > kShown) {
        words << Tr(texts::kAndMore).arg(items.size() - kShown);
    }
    return words.join(QLatin1Char('\n'));
}

uint32_t CommandOf(EnSubject subject) {
    return subject == EnSubject::Vip ? kCommandVipStatus : kCommandPremiumAccess;
}

QString Session(unsigned long session) {
    return Tr(texts::kSessionNumber).arg(session);
}

}  // namespace

QString Why(EnWhy why) {
    switch (why) {
        case EnWhy::Login:
            return Tr(texts::kWhyLogin);
        case EnWhy::Hourly:
            return Tr(texts::kWhyHourly);
        case EnWhy::Language:
            return Tr(texts::kWhyLanguage);
        case EnWhy::Push:
            return Tr(texts::kWhyPush);
        case EnWhy::Caller:
            return Tr(texts::kWhyCaller);
        case EnWhy::Unknown:
            break;
    }
    return Tr(texts::kWhyUnknown);
}

QString Outcome(const CRefreshBoard::Refresh& refresh) {
    switch (refresh.outcome) {
        case EnOutcome::InFlight:
            return Tr(texts::kOutcomeInFlight);
        case EnOutcome::Answered:
            return Tr(texts::kOutcomeAnswered);
        case EnOutcome::Good:
            return Tr(texts::kOutcomeGood);
        case EnOutcome::ChannelError:
            return Tr(texts::kOutcomeChannel).arg(refresh.number);
        case EnOutcome::OtherCommand:
            return Tr(texts::kOutcomeCommand).arg(refresh.number);
        case EnOutcome::BadBytes:
            return Tr(texts::kOutcomeBytes);
        case EnOutcome::NoCode:
            return Tr(texts::kOutcomeNoCode);
        case EnOutcome::OtherCode:
            return Tr(texts::kOutcomeCode).arg(refresh.number);
        case EnOutcome::UnknownSession:
            return Tr(texts::kOutcomeSession);
        case EnOutcome::Failed:
            break;
    }
    return Tr(texts::kOutcomeFailed);
}

QString Refresh(const CRefreshBoard::Refresh& refresh) {
    return QStringList{Clock(refresh.answeredMs), Why(refresh.why), Outcome(refresh), Session(refresh.session)}.join(
        kDot);
}

QString InFlight(const std::vector<CRefreshBoard::Refresh>& inFlight) {
    return FirstOf(inFlight, [](const CRefreshBoard::Refresh& refresh) {
        return QStringList{QString::number(CommandOf(refresh.subject)), Clock(refresh.sentMs), Why(refresh.why),
                           Session(refresh.session)}
            .join(kDot);
    });
}

QString Waiting(const std::vector<CRefreshBoard::Waiting>& waiting) {
    return FirstOf(waiting, [](const CRefreshBoard::Waiting& push) {
        QStringList words{QString::number(CommandOf(push.subject)), Clock(push.dueMs)};
        if (push.subject == EnSubject::Premium) {
            words << (push.needAll ? Tr(texts::kWaitingAll) : Tr(texts::kWaitingCount).arg(push.count));
        }
        return words.join(kDot);
    });
}

QString NextHourly(std::optional<qint64> nextMs, qint64 nowMs) {
    if (!nextMs) {
        return Tr(texts::kNoTimer);
    }
    const qint64 seconds = (*nextMs - nowMs) / 1000;
    const QString left = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return Tr(texts::kInTime).arg(Clock(*nextMs), left);
}

}  // namespace refresh_words
