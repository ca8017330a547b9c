#include "workbench/ads/AdWords.h"

#include <QDateTime>
#include <algorithm>

#include "AdTexts.h"
#include "ClientTexts.h"

namespace ad_words {
namespace {

using texts::Tr;

const QString kDot = QStringLiteral(" \u00B7 ");
constexpr qint64 kSecondMs = 1'000;

QString Milliseconds(qint64 duration) {
    return duration < 0 ? QString() : Tr(texts::kAdMilliseconds).arg(duration);
}

/// What is there of the parts, with a dot between.
QString Joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(kDot);
}

FieldNode Line(texts::EnText name, const QString& value) {
    return {Tr(name), value, {}, {}};
}

bool IsGone(EnAdFate fate) {
    return fate != EnAdFate::Kept && fate != EnAdFate::Cleared && fate != EnAdFate::Unknown;
}

void Add(Group& group, FieldNode line, std::optional<bool> good = std::nullopt) {
    group.lines.push_back(std::move(line));
    group.good.push_back(good);
}

QString Verdict(const AdRequest& request) {
    switch (request.verdict) {
        case EnAdVerdict::ForeignType:
        case EnAdVerdict::ForeignPosition:
            return Tr(texts::kAdVerdictType).arg(Slot(request.answerSlot));
        case EnAdVerdict::Empty:
            return Tr(texts::kAdVerdictEmpty);
        case EnAdVerdict::NoneValid:
            return Tr(texts::kAdVerdictNone);
        case EnAdVerdict::Unfit:
            return Tr(texts::kAdVerdictUnfit);
        case EnAdVerdict::None:
            break;
    }
    return QString();
}

void AddAds(Group& group, const AdRequest& request) {
    for (const AdFate& fate : request.Fates()) {
        FieldNode line{fate.ad.id, Fate(fate), {}, {}};
        if (fate.ad.startS && fate.ad.endS) {
            line.children.push_back(Line(
                texts::kAdWindow, ServerTime(*fate.ad.startS) + QStringLiteral(" – ") + ServerTime(*fate.ad.endS)));
        }
        if (fate.ad.expireS) {
            line.children.push_back(Line(texts::kAdExpires, ServerTime(*fate.ad.expireS)));
        }
        if (fate.nowS != 0) {
            line.children.push_back(Line(texts::kAdLookedAt, ServerTime(fate.nowS)));
        }
        if (!fate.pictureFailed.isEmpty()) {
            line.children.push_back(Line(texts::kAdPicture, fate.pictureFailed));
        }
        std::optional<bool> good;
        if (IsGone(fate.fate)) {
            good = false;
        } else if (fate.fate == EnAdFate::Kept) {
            good = true;
        }
        Add(group, std::move(line), good);
    }
}

QString Kind(const QString& path) {
    const bool isSearch = path.endsWith(QLatin1String("search"));
    return path.isEmpty() ? QString() : Tr(isSearch ? texts::kAdSearch : texts::kAdCheck);
}

Group RequestGroup(const AdSlotState& slot, const AdRequest& request) {
    Group group{Tr(texts::kAdLastRequest), {}, {}};
    Add(group, Line(texts::kAdRequestId, request.id));
    const QString task = request.task == 0 ? QString() : Tr(texts::kHttpTask) + QStringLiteral(" %1").arg(request.task);
    Add(group, Line(texts::kSeenWhat, Joined({Clock(request.sentMs), Kind(request.path), request.path, task})));
    if (!request.askedFor.isEmpty()) {
        Add(group, Line(texts::kAdAskedFor, request.askedFor.join(QStringLiteral(", "))));
    }
    const QString refused = slot.refusedCount == 0 ? QString() : Tr(texts::kAdRefusedSince).arg(slot.refusedCount);
    const QString next = ServerTime(CAdBoard::NextAllowedMs(slot) / kSecondMs);
    Add(group, Line(texts::kAdNextRequest, Joined({next, refused})));
    return group;
}

Group AnswerGroup(const AdSlotState& slot, const AdRequest& request) {
    Group group{Tr(texts::kAdLastAnswer), {}, {}};
    if (request.id != slot.lastRequest) {
        Add(group, Line(texts::kAdRequestId, request.id));
    }
    const QString status = request.status == 0 ? QString() : QStringLiteral("HTTP %1").arg(request.status);
    const bool isGood = request.outcome == EnAdOutcome::Good;
    Add(group,
        Line(texts::kResult,
             Joined({Clock(request.answeredMs), Outcome(&request), status, Milliseconds(request.durationMs)})),
        isGood || request.outcome == EnAdOutcome::Arrived ? std::nullopt : std::make_optional(false));
    if (!request.words.isEmpty()) {
        Add(group, Line(texts::kAdReason, request.words), false);
    }
    if (request.verdict != EnAdVerdict::None) {
        Add(group, Line(texts::kAdWholeList, Verdict(request)), false);
    }
    return group;
}

QString CallOutcome(const AdExposeCall& call) {
    switch (call.outcome) {
        case AdExposeCall::EnOutcome::InFlight:
            return Tr(texts::kAdOutcomeWaiting);
        case AdExposeCall::EnOutcome::NoTask:
            return Tr(texts::kAdOutcomeNoTask);
        case AdExposeCall::EnOutcome::Failed:
            return Tr(texts::kAdOutcomeExchange).arg(call.number);
        case AdExposeCall::EnOutcome::NoJson:
            return Tr(texts::kAdOutcomeNoJson);
        case AdExposeCall::EnOutcome::Refused:
            return Tr(texts::kAdOutcomeRefused).arg(call.number);
        case AdExposeCall::EnOutcome::Good:
            break;
    }
    return Tr(texts::kAdTold);
}

QString ClickReport(const AdClick& click) {
    switch (click.report) {
        case AdClick::EnReport::Refused:
            return Tr(texts::kAdReportRefused);
        case AdClick::EnReport::NoExposure:
            return Tr(texts::kAdNoExposure);
        case AdClick::EnReport::Taken:
            break;
    }
    return QString();
}

Group ScreenGroup(const AdSlotState& slot) {
    Group group{Tr(texts::kAdScreen), {}, {}};
    if (slot.exposure) {
        const AdExposure& exposure = *slot.exposure;
        const QString from = exposure.timeMs == 0 ? QString() : Clock(exposure.timeMs);
        const QString to = exposure.endMs == 0 ? Tr(texts::kAdRuns) : Clock(exposure.endMs);
        Add(group, Line(texts::kAdExposure, Joined({from, exposure.adId, to, Milliseconds(exposure.durationMs),
                                                    exposure.taken ? QString() : Tr(texts::kAdReportRefused)})));
    }
    if (slot.call) {
        const AdExposeCall& call = *slot.call;
        const bool isGood =
            call.outcome == AdExposeCall::EnOutcome::Good || call.outcome == AdExposeCall::EnOutcome::InFlight;
        Add(group,
            Line(texts::kAdExposeCall,
                 Joined({Clock(call.timeMs), call.adId, Milliseconds(call.durationMs), CallOutcome(call)})),
            isGood ? std::nullopt : std::make_optional(false));
    }
    if (slot.click) {
        const QString jump = Tr(slot.click->hasJumped ? texts::kAdJumped : texts::kAdNotJumped);
        const QString report = ClickReport(*slot.click);
        const bool isLost = slot.click->report == AdClick::EnReport::NoExposure;
        Add(group, Line(texts::kAdClick,
                        Joined({Clock(slot.click->timeMs), slot.click->adId, isLost ? QString() : jump, report})));
    }
    if (slot.closeButton) {
        Add(group, Line(texts::kAdCloseButton, Joined({Clock(slot.closeButton->timeMs), slot.closeButton->adId,
                                                       ClickReport(*slot.closeButton)})));
    }
    if (slot.closing) {
        Add(group, Line(texts::kAdClosed, Joined({Clock(slot.closing->timeMs), slot.closing->adId,
                                                  Tr(texts::kAdClosedBy).arg(slot.closing->why)})));
    }
    return group;
}

}  // namespace

QString Clock(qint64 timeMs) {
    return QDateTime::fromMSecsSinceEpoch(timeMs).toString(QStringLiteral("HH:mm:ss"));
}

QString ServerTime(qint64 seconds) {
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"));
}

QString Until(qint64 leftMs) {
    return leftMs <= 0 ? Tr(texts::kAdNow) : Tr(texts::kAdInSeconds).arg((leftMs + kSecondMs - 1) / kSecondMs);
}

QString Slot(const AdSlot& slot) {
    switch (slot.type) {
        case kTypePopup:
            return Tr(texts::kAdPopup).arg(slot.position);
        case kTypeBanner:
            return Tr(texts::kAdBanner).arg(slot.position);
        default:
            return Tr(texts::kAdOtherType).arg(slot.type).arg(slot.position);
    }
}

QString Next(const AdSlotState& slot, qint64 serverNowMs) {
    return Until(CAdBoard::NextAllowedMs(slot) - serverNowMs);
}

QString Outcome(const AdRequest* request) {
    if (!request) {
        return QString();
    }
    switch (request->outcome) {
        case EnAdOutcome::InFlight:
            return Tr(texts::kAdOutcomeWaiting);
        case EnAdOutcome::Arrived:
            return Tr(texts::kAdOutcomeArrived);
        case EnAdOutcome::NoTask:
            return Tr(texts::kAdOutcomeNoTask);
        case EnAdOutcome::Superseded:
            return Tr(texts::kAdOutcomeSuperseded);
        case EnAdOutcome::ExchangeFailed:
            return Tr(texts::kAdOutcomeExchange).arg(request->number);
        case EnAdOutcome::NoJson:
            return Tr(texts::kAdOutcomeNoJson);
        case EnAdOutcome::NotDecoded:
            return Tr(texts::kAdOutcomeNotDecoded);
        case EnAdOutcome::Refused:
            return Tr(texts::kAdOutcomeRefused).arg(request->number);
        case EnAdOutcome::Good:
            break;
    }
    return Tr(texts::kAdOutcomeGood).arg(request->Fates().size());
}

QString Kept(const AdRequest* request) {
    const std::vector<AdFate> fates = request ? request->Fates() : std::vector<AdFate>();
    if (fates.empty()) {
        return QString();
    }
    const auto kept =
        std::count_if(fates.begin(), fates.end(), [](const AdFate& fate) { return fate.fate == EnAdFate::Kept; });
    return QStringLiteral("%1 / %2").arg(kept).arg(fates.size());
}

QString Fate(const AdFate& fate) {
    switch (fate.fate) {
        case EnAdFate::Unknown:
            return Tr(texts::kAdFateUnknown);
        case EnAdFate::Kept:
            return Tr(texts::kAdFateKept);
        case EnAdFate::Cleared:
            return Tr(texts::kAdFateCleared);
        case EnAdFate::Filtered:
            return Tr(texts::kAdFateFiltered).arg(fate.reasons.join(QStringLiteral(", ")));
        case EnAdFate::TooEarly:
            return Tr(texts::kAdFateTooEarly).arg(ServerTime(fate.limitS));
        case EnAdFate::Over:
            return Tr(texts::kAdFateOver).arg(ServerTime(fate.limitS));
        case EnAdFate::Expired:
            return Tr(texts::kAdFateExpired).arg(ServerTime(fate.limitS));
        case EnAdFate::ForeignType:
            return Tr(texts::kAdFateForeignType);
        case EnAdFate::ForeignPosition:
            return Tr(texts::kAdFateForeignPosition);
        case EnAdFate::NotDecoded:
            return Tr(texts::kAdFateNotDecoded);
        case EnAdFate::Refused:
            return Tr(texts::kAdFateRefused);
        case EnAdFate::Unshowable:
            return Tr(texts::kAdFateUnshowable);
        case EnAdFate::Unfit:
            return Tr(texts::kAdFateUnfit);
        case EnAdFate::Superseded:
            break;
    }
    return Tr(texts::kAdFateSuperseded);
}

QString LastEvent(const AdSlotState& slot) {
    qint64 last = 0;
    QString words;
    const auto consider = [&](qint64 timeMs, texts::EnText name) {
        if (timeMs >= last && timeMs != 0) {
            last = timeMs;
            words = Clock(timeMs) + QLatin1Char(' ') + Tr(name);
        }
    };
    if (slot.exposure) {
        consider(std::max(slot.exposure->timeMs, slot.exposure->endMs), texts::kAdExposure);
    }
    if (slot.click) {
        consider(slot.click->timeMs, texts::kAdClick);
    }
    if (slot.closeButton) {
        consider(slot.closeButton->timeMs, texts::kAdCloseButton);
    }
    if (slot.closing) {
        consider(slot.closing->timeMs, texts::kAdClosed);
    }
    return words;
}

std::vector<Group> Groups(const CAdBoard& board, const AdSlotState& slot) {
    std::vector<Group> groups;
    if (const AdRequest* request = board.Request(slot.lastRequest)) {
        groups.push_back(RequestGroup(slot, *request));
    }
    if (const AdRequest* answered = board.Request(slot.lastAnswered)) {
        groups.push_back(AnswerGroup(slot, *answered));
        Group ads{Tr(texts::kAdAds), {}, {}};
        AddAds(ads, *answered);
        groups.push_back(std::move(ads));
    }
    if (slot.standing != slot.lastAnswered) {
        if (const AdRequest* standing = board.Request(slot.standing)) {
            Group ads{Tr(texts::kAdStanding).arg(standing->id), {}, {}};
            AddAds(ads, *standing);
            groups.push_back(std::move(ads));
        }
    }
    groups.push_back(ScreenGroup(slot));
    groups.erase(std::remove_if(groups.begin(), groups.end(), [](const Group& group) { return group.lines.empty(); }),
                 groups.end());
    return groups;
}

}  // namespace ad_words
