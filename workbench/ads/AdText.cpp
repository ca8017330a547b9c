#include "workbench/ads/AdText.h"

#include <QDateTime>
#include <algorithm>

namespace ad_text {
namespace {

const QString kDot = QStringLiteral(" \u00B7 ");
constexpr qint64 kSecondMs = 1'000;

QString Milliseconds(qint64 duration) {
    return duration < 0 ? QString() : QStringLiteral("%1 ms").arg(duration);
}

/// Joins the non-empty parts with a dot between them.
QString Joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(kDot);
}

FieldNode Line(const QString& name, const QString& value) {
    return {name, value, {}, {}};
}

bool IsGone(EnAdResult fate) {
    return fate != EnAdResult::Kept && fate != EnAdResult::Cleared && fate != EnAdResult::Unknown;
}

void Add(Group& group, FieldNode line, std::optional<bool> good = std::nullopt) {
    group.lines.push_back(std::move(line));
    group.good.push_back(good);
}

QString Verdict(const AdRequest& request) {
    switch (request.verdict) {
        case EnAdVerdict::ForeignType:
        case EnAdVerdict::ForeignPosition:
            return QStringLiteral("dropped: it is for %1").arg(Slot(request.answerSlot));
        case EnAdVerdict::Empty:
            return QStringLiteral("dropped: no ads");
        case EnAdVerdict::NoneValid:
            return QStringLiteral("dropped: no ad is due");
        case EnAdVerdict::Unfit:
            return QStringLiteral("dropped: it lacks something");
        case EnAdVerdict::None:
            break;
    }
    return QString();
}

void AddAds(Group& group, const AdRequest& request) {
    for (const AdFate& fate : request.Results()) {
        FieldNode line{fate.ad.id, Fate(fate), {}, {}};
        if (fate.ad.startS && fate.ad.endS) {
            line.children.push_back(Line(QStringLiteral("Window"), ServerTime(*fate.ad.startS) + QStringLiteral(" – ") +
                                                                       ServerTime(*fate.ad.endS)));
        }
        if (fate.ad.expireS) {
            line.children.push_back(Line(QStringLiteral("Expires"), ServerTime(*fate.ad.expireS)));
        }
        if (fate.nowS != 0) {
            line.children.push_back(Line(QStringLiteral("Looked at"), ServerTime(fate.nowS)));
        }
        if (!fate.pictureFailed.isEmpty()) {
            line.children.push_back(Line(QStringLiteral("Picture failed"), fate.pictureFailed));
        }
        std::optional<bool> good;
        if (IsGone(fate.fate)) {
            good = false;
        } else if (fate.fate == EnAdResult::Kept) {
            good = true;
        }
        Add(group, std::move(line), good);
    }
}

QString Kind(const QString& path) {
    const bool isSearch = path.endsWith(QLatin1String("search"));
    return path.isEmpty() ? QString() : isSearch ? QStringLiteral("search") : QStringLiteral("check");
}

Group RequestGroup(const AdSlotState& slot, const AdRequest& request) {
    Group group{QStringLiteral("Last request"), {}, {}};
    Add(group, Line(QStringLiteral("Request id"), request.id));
    const QString task = request.task == 0 ? QString() : QStringLiteral("Task %1").arg(request.task);
    Add(group, Line(QStringLiteral("What"), Joined({Clock(request.sentMs), Kind(request.path), request.path, task})));
    if (!request.askedFor.isEmpty()) {
        Add(group, Line(QStringLiteral("Asked for"), request.askedFor.join(QStringLiteral(", "))));
    }
    const QString refused =
        slot.refusedCount == 0 ? QString() : QStringLiteral("refused for coming too early: %1").arg(slot.refusedCount);
    const QString next = ServerTime(CAdTracker::NextAllowedMs(slot) / kSecondMs);
    Add(group, Line(QStringLiteral("Next request"), Joined({next, refused})));
    return group;
}

Group AnswerGroup(const AdSlotState& slot, const AdRequest& request) {
    Group group{QStringLiteral("Last answer"), {}, {}};
    if (request.id != slot.lastRequest) {
        Add(group, Line(QStringLiteral("Request id"), request.id));
    }
    const QString status = request.status == 0 ? QString() : QStringLiteral("HTTP %1").arg(request.status);
    const bool isGood = request.outcome == EnAdOutcome::Good;
    Add(group,
        Line(QStringLiteral("Result"),
             Joined({Clock(request.answeredMs), Outcome(&request), status, Milliseconds(request.durationMs)})),
        isGood || request.outcome == EnAdOutcome::Arrived ? std::nullopt : std::make_optional(false));
    if (!request.words.isEmpty()) {
        Add(group, Line(QStringLiteral("Reason"), request.words), false);
    }
    if (request.verdict != EnAdVerdict::None) {
        Add(group, Line(QStringLiteral("Whole list"), Verdict(request)), false);
    }
    return group;
}

QString CallOutcome(const AdExposeCall& call) {
    switch (call.outcome) {
        case AdExposeCall::EnOutcome::InFlight:
            return QStringLiteral("no answer yet");
        case AdExposeCall::EnOutcome::NoTask:
            return QStringLiteral("not sent: no task");
        case AdExposeCall::EnOutcome::Failed:
            return QStringLiteral("failed, result %1").arg(call.number);
        case AdExposeCall::EnOutcome::NoJson:
            return QStringLiteral("not JSON");
        case AdExposeCall::EnOutcome::Refused:
            return QStringLiteral("code %1").arg(call.number);
        case AdExposeCall::EnOutcome::Good:
            break;
    }
    return QStringLiteral("accepted");
}

QString ClickReport(const AdClick& click) {
    switch (click.report) {
        case AdClick::EnReport::Refused:
            return QStringLiteral("report refused");
        case AdClick::EnReport::NoExposure:
            return QStringLiteral("not reported: no exposure");
        case AdClick::EnReport::Taken:
            break;
    }
    return QString();
}

Group ScreenGroup(const AdSlotState& slot) {
    Group group{QStringLiteral("On the screen"), {}, {}};
    if (slot.exposure) {
        const AdExposure& exposure = *slot.exposure;
        const QString from = exposure.timeMs == 0 ? QString() : Clock(exposure.timeMs);
        const QString to = exposure.endMs == 0 ? QStringLiteral("still shown") : Clock(exposure.endMs);
        Add(group,
            Line(QStringLiteral("Exposure"), Joined({from, exposure.adId, to, Milliseconds(exposure.durationMs),
                                                     exposure.taken ? QString() : QStringLiteral("report refused")})));
    }
    if (slot.call) {
        const AdExposeCall& call = *slot.call;
        const bool isGood =
            call.outcome == AdExposeCall::EnOutcome::Good || call.outcome == AdExposeCall::EnOutcome::InFlight;
        Add(group,
            Line(QStringLiteral("Exposure told"),
                 Joined({Clock(call.timeMs), call.adId, Milliseconds(call.durationMs), CallOutcome(call)})),
            isGood ? std::nullopt : std::make_optional(false));
    }
    if (slot.click) {
        const QString jump = slot.click->hasJumped ? QStringLiteral("link opened") : QStringLiteral("link not opened");
        const QString report = ClickReport(*slot.click);
        const bool isLost = slot.click->report == AdClick::EnReport::NoExposure;
        Add(group, Line(QStringLiteral("Click"),
                        Joined({Clock(slot.click->timeMs), slot.click->adId, isLost ? QString() : jump, report})));
    }
    if (slot.closeButton) {
        Add(group, Line(QStringLiteral("Close button"), Joined({Clock(slot.closeButton->timeMs), slot.closeButton->adId,
                                                                ClickReport(*slot.closeButton)})));
    }
    if (slot.closing) {
        Add(group, Line(QStringLiteral("Closed"), Joined({Clock(slot.closing->timeMs), slot.closing->adId,
                                                          QStringLiteral("by %1").arg(slot.closing->why)})));
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
    return leftMs <= 0 ? QStringLiteral("now") : QStringLiteral("in %1 s").arg((leftMs + kSecondMs - 1) / kSecondMs);
}

QString Slot(const AdSlot& slot) {
    switch (slot.type) {
        case kTypePopup:
            return QStringLiteral("Popup %1").arg(slot.position);
        case kTypeBanner:
            return QStringLiteral("Banner %1").arg(slot.position);
        default:
            return QStringLiteral("Type %1, %2").arg(slot.type).arg(slot.position);
    }
}

QString Next(const AdSlotState& slot, qint64 serverNowMs) {
    return Until(CAdTracker::NextAllowedMs(slot) - serverNowMs);
}

QString Outcome(const AdRequest* request) {
    if (!request) {
        return QString();
    }
    switch (request->outcome) {
        case EnAdOutcome::InFlight:
            return QStringLiteral("no answer yet");
        case EnAdOutcome::Arrived:
            return QStringLiteral("arrived");
        case EnAdOutcome::NoTask:
            return QStringLiteral("not sent: no task");
        case EnAdOutcome::Superseded:
            return QStringLiteral("superseded by a later request");
        case EnAdOutcome::ExchangeFailed:
            return QStringLiteral("failed, result %1").arg(request->number);
        case EnAdOutcome::NoJson:
            return QStringLiteral("not JSON");
        case EnAdOutcome::NotDecoded:
            return QStringLiteral("not decoded");
        case EnAdOutcome::Refused:
            return QStringLiteral("code %1").arg(request->number);
        case EnAdOutcome::Good:
            break;
    }
    return QStringLiteral("code 0, ads: %1").arg(request->Results().size());
}

QString Kept(const AdRequest* request) {
    const std::vector<AdFate> fates = request ? request->Results() : std::vector<AdFate>();
    if (fates.empty()) {
        return QString();
    }
    const auto kept =
        std::count_if(fates.begin(), fates.end(), [](const AdFate& fate) { return fate.fate == EnAdResult::Kept; });
    return QStringLiteral("%1 / %2").arg(kept).arg(fates.size());
}

QString Fate(const AdFate& fate) {
    switch (fate.fate) {
        case EnAdResult::Unknown:
            return QStringLiteral("not yet judged");
        case EnAdResult::Kept:
            return QStringLiteral("kept");
        case EnAdResult::Cleared:
            return QStringLiteral("kept, cleared since");
        case EnAdResult::Filtered:
            return QStringLiteral("held back, filter %1").arg(fate.reasons.join(QStringLiteral(", ")));
        case EnAdResult::TooEarly:
            return QStringLiteral("dropped: starts %1").arg(ServerTime(fate.limitS));
        case EnAdResult::Over:
            return QStringLiteral("dropped: ended %1").arg(ServerTime(fate.limitS));
        case EnAdResult::Expired:
            return QStringLiteral("dropped: expired %1").arg(ServerTime(fate.limitS));
        case EnAdResult::ForeignType:
            return QStringLiteral("dropped: the list is of another type");
        case EnAdResult::ForeignPosition:
            return QStringLiteral("dropped: the list is of another position");
        case EnAdResult::NotDecoded:
            return QStringLiteral("dropped: the answer is not decoded");
        case EnAdResult::Refused:
            return QStringLiteral("dropped: the answer has another code than 0");
        case EnAdResult::Unshowable:
            return QStringLiteral("dropped: of a type that is not shown");
        case EnAdResult::Unfit:
            return QStringLiteral("dropped: the list lacks something");
        case EnAdResult::Superseded:
            break;
    }
    return QStringLiteral("dropped: the answer came too late");
}

QString LastEvent(const AdSlotState& slot) {
    qint64 last = 0;
    QString words;
    const auto consider = [&](qint64 timeMs, const QString& name) {
        if (timeMs >= last && timeMs != 0) {
            last = timeMs;
            words = Clock(timeMs) + QLatin1Char(' ') + name;
        }
    };
    if (slot.exposure) {
        consider(std::max(slot.exposure->timeMs, slot.exposure->endMs), QStringLiteral("Exposure"));
    }
    if (slot.click) {
        consider(slot.click->timeMs, QStringLiteral("Click"));
    }
    if (slot.closeButton) {
        consider(slot.closeButton->timeMs, QStringLiteral("Close button"));
    }
    if (slot.closing) {
        consider(slot.closing->timeMs, QStringLiteral("Closed"));
    }
    return words;
}

std::vector<Group> Groups(const CAdTracker& board, const AdSlotState& slot) {
    std::vector<Group> groups;
    if (const AdRequest* request = board.Request(slot.lastRequest)) {
        groups.push_back(RequestGroup(slot, *request));
    }
    if (const AdRequest* answered = board.Request(slot.lastAnswered)) {
        groups.push_back(AnswerGroup(slot, *answered));
        Group ads{QStringLiteral("Ads of this answer"), {}, {}};
        AddAds(ads, *answered);
        groups.push_back(std::move(ads));
    }
    if (slot.standing != slot.lastAnswered) {
        if (const AdRequest* standing = board.Request(slot.standing)) {
            Group ads{QStringLiteral("Still current, of request %1").arg(standing->id), {}, {}};
            AddAds(ads, *standing);
            groups.push_back(std::move(ads));
        }
    }
    groups.push_back(ScreenGroup(slot));
    groups.erase(std::remove_if(groups.begin(), groups.end(), [](const Group& group) { return group.lines.empty(); }),
                 groups.end());
    return groups;
}

}  // namespace ad_text
