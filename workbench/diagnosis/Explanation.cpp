#include "workbench/diagnosis/Explanation.h"

#include <algorithm>

#include "AIChatEntries.h"
#include "PremiumRights.h"
#include "core/environment.h"
#include "framework/JsonText.h"
#include "workbench/ControlClient.h"
#include "workbench/diagnosis/WidgetRules.h"

using namespace log_table;
using EnState = StripStep::EnState;

namespace {

constexpr qint64 kSecondMs = 1'000;
/// The year 9999. Later times are treated as never.
constexpr qint64 kLastSecond = 253'402'300'799;

/// Steps before `passed` are done; `next` is the state of the step after them.
void Tell(Explanation& explained, EnKind kind, int passed, EnState next, const QString& state,
          const QString& sentence) {
    explained.strip.clear();
    for (const QString& name : StepNames(kind)) {
        const int place = int(explained.strip.size());
        explained.strip.push_back({name, place < passed ? EnState::Done : place == passed ? next : EnState::Open});
    }
    explained.state = state;
    explained.sentence = sentence;
}

/// A line of the details. A sign precedes a value that is good or bad.
QString Line(int depth, const QString& name, const QString& value, std::optional<bool> good = {}) {
    const QString sign = !good ? QString() : *good ? "\u2713 "_q : "\u2717 "_q;
    return QString(2 * depth, QLatin1Char(' ')) + sign + name + ": "_q + value;
}

QString Joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(" \u00B7 "_q);
}

QString YesNo(bool yes) {
    return yes ? "yes"_q : "no"_q;
}

QString ClockS(std::optional<qint64> second, qint64 nowMs) {
    return second ? Clock(*second * kSecondMs, nowMs) : "not said"_q;
}

QString In(qint64 timeMs, qint64 nowMs) {
    return "%1, in %2"_q.arg(Clock(timeMs, nowMs), Duration((timeMs - nowMs + kSecondMs - 1) / kSecondMs));
}

void AddHistory(Explanation& explained, const History& history, qint64 nowMs) {
    if (!history.empty()) {
        explained.details << "The module's lines:"_q;
    }
    for (auto line = history.rbegin(); line != history.rend(); ++line) {
        explained.details << Line(1, Clock(line->first, nowMs), line->second);
    }
}

// ---- ads

/// Everything that is needed to explain an ad position, with both clocks.
struct AdScene {
    const AdSlot& slot;
    const AdState& ad;
    qint64 localNowMs;
    qint64 serverNowMs;

    bool IsBanner() const { return slot.type == kTypeBanner; }
    /// The ads of the visible banner.
    std::vector<const AdOffer*> Strips() const {
        return IsBanner() && ad.made ? ad.made->Kept() : std::vector<const AdOffer*>();
    }
};

/// The ad that a refusal of a display condition is about.
const AdOffer* OfferOf(const AdState& ad, const QString& id) {
    const AdRequest* list = ad.standing ? ad.standing.get() : ad.answered.get();
    return list ? list->Find(id) : nullptr;
}

QString Told(const AdScene& scene, const char* text, const Refusal& refusal) {
    QStringList areas;
    if (const AdOffer* offer = OfferOf(scene.ad, refusal.line.values.value(4))) {
        std::transform(offer->areas.begin(), offer->areas.end(), std::back_inserter(areas), Area);
    }
    const QString where = areas.isEmpty() ? "another tab (the answer was not seen whole)"_q : areas.join(" or "_q);
    QStringList drops;
    for (const ParsedLine& drop : refusal.drops) {
        drops << "ad %1 %2"_q.arg(drop.values[4], Filled(drop.row->say, drop, scene.serverNowMs));
    }
    return Filled(text, refusal.line, scene.serverNowMs,
                  {{"areas"_q, where}, {"drops"_q, drops.join(", "_q)}, {"reason"_q, refusal.reason}});
}

/// The refusal that matters: one that changed nothing gives way to the one before it.
const Refusal* Primary(const AdState& ad) {
    return ad.red && ad.red->leavesRest && ad.earlier ? &*ad.earlier : ad.red ? &*ad.red : nullptr;
}

QString Occasion(const AdScene& scene) {
    const auto push = scene.ad.pushesMs.upper_bound(scene.serverNowMs);
    return push != scene.ad.pushesMs.end() ? "A push makes it ask again at %1."_q.arg(In(*push, scene.serverNowMs))
           : scene.IsBanner()
               ? "Its page asks again when it is opened, and after a login or a change of the language."_q
           : scene.ad.standing ? "It is tried again at a change of the tab."_q
                               : "A new list comes with a login, a change of the language or a push."_q;
}

/// The time until which to wait, and the next occasion.
QString Wait(const AdScene& scene, const Refusal& refusal) {
    const auto free = explanation::FreeFromS(scene.ad, refusal);
    if (free && *free * kSecondMs > scene.serverNowMs) {
        return "Wait until %1. "_q.arg(In(*free * kSecondMs, scene.serverNowMs)) + Occasion(scene);
    }
    const bool isUseless = !free && refusal.line.row->free == EnFree::AfterSum;
    return (free        ? "This no longer refuses it. "_q
            : isUseless ? "Its own window ends before, so waiting does not help. "_q
                        : QString()) +
           Occasion(scene);
}

bool WasShown(const Refusal& refusal) {
    return refusal.line.row->event == EnEvent::Closed || refusal.line.row->event == EnEvent::ClosedByPush;
}

/// The sentence about a refusal, or about the end of an ad or of its list.
QString Sentence(const AdScene& scene, const Refusal& refusal) {
    const Row& row = *refusal.line.row;
    if (*row.check != '\0') {
        return Told(scene, row.say, refusal) + QLatin1Char(' ') + Wait(scene, refusal);
    }
    const QString end =
        scene.ad.standing ? "The last ad ended at %1 %2. "_q : "Nothing is waiting: the last list ended at %1 %2. "_q;
    return end.arg(Clock(refusal.timeMs, scene.localNowMs),
                   refusal.reason.isEmpty() ? Told(scene, row.say, refusal) : refusal.reason) +
           Occasion(scene);
}

void TellAd(Explanation& explained, const AdScene& scene) {
    const AdState& ad = scene.ad;
    const auto tell = [&explained](int passed, EnState next, const QString& state, const QString& sentence) {
        Tell(explained, EnKind::Ad, passed, next, state, sentence);
    };
    const auto strips = scene.Strips();
    QStringList ids(ad.shownAd);
    for (const AdOffer* strip : strips) {
        ids << strip->id;
    }
    ids.removeAll(QString());
    const QString ads =
        ids.isEmpty() ? QString() : (scene.IsBanner() ? ": ads %1"_q : ": ad %1"_q).arg(ids.join(", "_q));
    const bool isBare = !strips.empty() && std::all_of(strips.begin(), strips.end(), [&ad](const AdOffer* strip) {
        return ad.failedPictures.count(strip->image) != 0;
    });
    const QString shown = Clock(ad.shownMs, scene.localNowMs);
    const Refusal* red = Primary(ad);
    if (ad.shownCount > 0 && isBare) {
        tell(kStepPicture, EnState::Stopped, "shown, without pictures"_q,
             "It is there since %1, but none of its pictures came%2. Check their addresses on the server."_q.arg(shown,
                                                                                                                 ads));
    } else if (ad.shownCount > 0) {
        tell(kStepShown + 1, EnState::Open, "shown"_q, "Shown since %1%2."_q.arg(shown, ads));
    } else if (!ad.last && (!red || (red->leavesRest && red->step == kStepKept))) {
        tell(0, EnState::Open, "not asked"_q,
             "Nothing was asked for yet. "_q +
                 (scene.IsBanner() ? "A page that shows this banner asks when it is opened."_q : Occasion(scene)));
    } else if (ad.isLoading) {
        tell(kStepPicture, EnState::Waiting, "loading its picture"_q,
             "Its picture is loading. It is shown when the picture is there."_q);
    } else if (ad.last && ad.last->answeredMs == 0 && ad.last->refusal.isEmpty()) {
        tell(kStepAnswered, EnState::Waiting, "no answer yet"_q,
             "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(ad.last->sentMs, scene.localNowMs)));
    } else if (red) {
        const QString check = QString::fromUtf8(red->line.row->check);
        tell(WasShown(*red) ? kStepShown + 1 : red->step, EnState::Stopped,
             WasShown(*red)    ? "was shown, ended"_q
             : check.isEmpty() ? "list taken away"_q
                               : "refused: "_q + check,
             Sentence(scene, *red));
    } else {
        tell(kStepKept, EnState::Waiting, "answered"_q, "The answer came, and is being checked."_q);
    }
}

/// The checks of a step in the module's order.
QStringList ChecksOf(int step, bool isBanner) {
    static const QRegularExpression ofBanner("anner"_q);
    static const QRegularExpression ofPopup("opup|ShowAreas|AdId is null"_q);
    QStringList checks;
    for (const Row& row : All()) {
        if (row.kind == EnKind::Ad && (row.event == EnEvent::Refused || row.event == EnEvent::Ignored) &&
            row.step == step && !QString::fromUtf8(row.text).contains(isBanner ? ofPopup : ofBanner)) {
            checks << QString::fromUtf8(row.check);
        }
    }
    checks.removeDuplicates();
    return checks;
}

void AddRefusal(Explanation& explained, const AdScene& scene, const Refusal& refusal, const QString& title) {
    const Row& row = *refusal.line.row;
    const QString refused = QString::fromUtf8(row.check);
    if (refused.isEmpty()) {
        explained.details << Line(0, title, Sentence(scene, refusal));
        return;
    }
    explained.details << Line(0, title, Joined({Clock(refusal.timeMs, scene.localNowMs), refused}), false)
                      << Line(1, "Found"_q, Told(scene, row.actual, refusal))
                      << Line(1, "Needed"_q, Told(scene, row.expected, refusal));
    QStringList checks = ChecksOf(refusal.step == kStepShown ? int(kStepConditions) : refusal.step, scene.IsBanner());
    if (!checks.contains(refused)) {
        checks << refused;
    }
    const int place = checks.indexOf(refused);
    for (int index = 0; index < checks.size(); ++index) {
        explained.details << (index > place   ? Line(1, checks[index], "not reached"_q)
                              : index < place ? Line(1, checks[index], "passed"_q, true)
                                              : Line(1, checks[index], "refused"_q, false));
    }
}

void AddRequest(Explanation& explained, const AdScene& scene, const AdRequest& request, const QString& title) {
    QStringList& lines = explained.details;
    lines << Line(0, title, Clock(request.sentMs, scene.localNowMs)) << Line(1, "Request id"_q, request.id)
          << Line(1, "Path"_q, request.path);
    if (!request.askedFor.isEmpty()) {
        lines << Line(1, "Asked for"_q, request.askedFor.join(", "_q));
    }
    if (request.answeredMs != 0) {
        lines << Line(
            1, "Answer"_q,
            Joined({Clock(request.answeredMs, scene.localNowMs),
                    request.status != 0 ? "HTTP %1"_q.arg(request.status) : QString(),
                    request.code ? "code %1"_q.arg(*request.code) : QString(),
                    request.durationMs >= 0 ? "%1 ms"_q.arg(request.durationMs) : QString(), request.refusal}));
    }
    for (const AdOffer& ad : request.ads) {
        const ParsedLine* drop = request.DropOf(ad);
        const QString why = drop ? Filled(drop->row->say, *drop, scene.serverNowMs) : request.refusal;
        lines << Line(1, "Ad %1"_q.arg(ad.id), why.isEmpty() ? "kept"_q : "not kept: "_q + why, why.isEmpty())
              << Line(2, "Window"_q,
                      "%1 \u2013 %2"_q.arg(ClockS(ad.startS, scene.serverNowMs), ClockS(ad.endS, scene.serverNowMs)))
              << Line(2, "Expires"_q, ClockS(ad.expireS, scene.serverNowMs));
        if (scene.ad.failedPictures.count(ad.image) != 0) {
            lines << Line(2, "Picture failed"_q, ad.image, false);
        }
    }
}

std::optional<qint64> Sum(qint64 left, qint64 right) {
    const auto isNear = [](qint64 second) { return -kLastSecond <= second && second <= kLastSecond; };
    return isNear(left) && isNear(right) && isNear(left + right) ? std::make_optional(left + right) : std::nullopt;
}

// ---- rights, VIP status and chat

QString RequestText(const RefreshState::Request& request, qint64 nowMs) {
    return Joined({Clock(request.answeredMs != 0 ? request.answeredMs : request.sentMs, nowMs),
                   explanation::OutcomeOf(request), "session %1"_q.arg(request.session)});
}

/// Tells the steps up to "taken". Returns true if all are done, so that the answer explains the subject.
bool TellRequests(Explanation& explained, const CTracker& tracker, const RefreshState& state, EnKind kind,
                  qint64 nowMs) {
    if (tracker.IsLoggedOut() || tracker.User() == 0) {
        Tell(explained, kind, 0, EnState::Open, "nobody is logged in"_q,
             "Nobody is logged in. This is asked for at login."_q);
        return false;
    }
    const RefreshState::Request* answered = state.Find(state.answered);
    if (answered) {
        explained.details << Line(0, "Last answer"_q, RequestText(*answered, nowMs));
    }
    for (const RefreshState::Request& request : state.requests) {
        if (request.answeredMs == 0) {
            explained.details << Line(0, "Without an answer"_q, RequestText(request, nowMs));
        }
    }
    for (auto push = state.pushes.upper_bound(nowMs); push != state.pushes.end(); ++push) {
        const QString count = push->second < 0 ? "all"_q : "rights: %1"_q.arg(push->second);
        explained.details << Line(0, "Push, due"_q, Joined({Clock(push->first, nowMs), count}));
    }
    const bool isTaken = answered && answered->isGood;
    if (answered && answered->red) {
        Tell(explained, kind, answered->red->step, EnState::Stopped, explanation::OutcomeOf(*answered),
             Filled(answered->red->line.row->say, answered->red->line, nowMs) +
                 " The values from before remain. Ask again, or log in again."_q);
    } else if (isTaken) {
        Tell(explained, kind, kStepKept + 1, EnState::Open, explanation::OutcomeOf(*answered),
             "The last answer was taken at %1."_q.arg(Clock(answered->answeredMs, nowMs)));
    } else if (!state.requests.empty()) {
        Tell(explained, kind, kStepAnswered, EnState::Waiting, "no answer yet"_q,
             "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(state.requests.back().sentMs, nowMs)));
    } else {
        Tell(explained, kind, 0, EnState::Open, "not asked"_q,
             "Nothing was asked for yet. This is asked for at login."_q);
    }
    return isTaken;
}

/// Tells a step after "taken": all before it are done.
void TellAfter(Explanation& explained, EnKind kind, int step, bool isGood, const QString& sentence) {
    Tell(explained, kind, isGood ? step + 1 : step, isGood ? EnState::Open : EnState::Stopped, explained.state,
         sentence);
}

void AddWidget(Explanation& explained, const widget_rules::Widget& widget) {
    const widget_rules::Rule* refusing = widget.Refusing();
    explained.details << Line(0, widget.texts.isEmpty() ? widget.kind : widget.kind + ", "_q + widget.texts,
                              refusing ? "hidden: "_q + refusing->name : "may be shown"_q, !refusing);
    bool isReached = true;
    for (const widget_rules::Rule& rule : widget.rules) {
        const QString values = "%1, needed: %2"_q.arg(rule.actual, rule.expected);
        explained.details << (isReached ? Line(1, rule.name, values, rule.passes)
                                        : Line(1, rule.name, "not reached: "_q + values));
        isReached = isReached && rule.passes;
    }
}

/// Both halves of a right, with the names in the contract.
void AddRecord(Explanation& explained, const CPremiumUIAccessData& record) {
    const auto number = [](int value) { return QString::number(value); };
    const std::pair<const char*, QString> fields[] = {{"enAccess", number(record.enAccess)},
                                                      {"bHasPermission", YesNo(record.bHasPermission)},
                                                      {"nDaysLeft", number(record.nDaysLeft)},
                                                      {"enUIAccess", number(record.enUIAccess)},
                                                      {"strUIType", record.strUIType},
                                                      {"strMainTitle", record.strMainTitle},
                                                      {"strMainBtn", record.strMainBtn},
                                                      {"strDetailTitle", record.strDetailTitle},
                                                      {"strDetailSubTitle", record.strDetailSubTitle},
                                                      {"strDetailBtn", record.strDetailBtn},
                                                      {"strDetailSubBtn", record.strDetailSubBtn},
                                                      {"nMainBtnUrlID", number(record.nMainBtnUrlID)},
                                                      {"nDetailBtnUrlID", number(record.nDetailBtnUrlID)},
                                                      {"nDetailSubBtnUrlID", number(record.nDetailSubBtnUrlID)}};
    explained.details << "Record:"_q;
    for (const auto& [name, value] : fields) {
        explained.details << Line(1, QLatin1String(name), value);
    }
    std::string error;
    const auto info = host::ParseJson(record.strOtherInfo.toStdString(), error);
    explained.details << Line(1, "strOtherInfo"_q, info ? json::Indented(*info) : record.strOtherInfo);
}

}  // namespace

namespace explanation {

std::optional<qint64> FreeFromS(const AdState& ad, const Refusal& refusal) {
    const ParsedLine& line = refusal.line;
    std::optional<qint64> free;
    if (line.row->free == EnFree::Sum || line.row->free == EnFree::AfterSum) {
        free = Sum(line.Number(1), line.Number(2));
    }
    if (free && line.row->free == EnFree::AfterSum) {
        const AdOffer* offer = OfferOf(ad, line.values.value(5));
        free = offer && !offer->LastsUntil(*free + 1) ? std::nullopt : Sum(*free, 1);
    }
    for (const ParsedLine& drop : refusal.drops) {
        const qint64 start = std::max(drop.Number(1), ad.nextAskS);
        const AdOffer* offer = ad.answered ? ad.answered->Find(drop.values[4]) : nullptr;
        if (drop.row->free == EnFree::Start && drop.Number(1) <= kLastSecond && (!offer || offer->LastsUntil(start))) {
            free = std::min(free.value_or(start), start);
        }
    }
    return free;
}

Explanation OfAd(const CTracker& tracker, const AdSlot& slot, qint64 localNowMs) {
    static const AdState unknown;
    const auto found = tracker.Ads().find(slot);
    const AdState& ad = found == tracker.Ads().end() ? unknown : found->second;
    const AdScene scene{slot, ad, localNowMs, tracker.ToServerMs(localNowMs)};
    const bool isShown = ad.shownCount > 0;
    Explanation explained;
    TellAd(explained, scene);
    const Refusal* primary = Primary(ad);
    if (primary && !isShown) {
        AddRefusal(explained, scene, *primary, "Last refusal"_q);
    }
    if (ad.red && (isShown || primary != &*ad.red)) {
        AddRefusal(explained, scene, *ad.red, isShown ? "After it was shown"_q : "After that"_q);
    }
    std::set<const AdRequest*> added{nullptr};
    for (const auto& [request, title] : {std::pair(ad.last.get(), "Last request"_q),
                                         {ad.answered.get(), "Last answered request"_q},
                                         {ad.standing.get(), "Waiting list"_q}}) {
        if (added.insert(request).second) {
            AddRequest(explained, scene, *request, title);
        }
    }
    AddHistory(explained, tracker.LinesOf(EnKind::Ad, slot.type, slot.position), localNowMs);
    if (const AdRequest* list = ad.answered ? ad.answered.get() : ad.last.get(); list && !list->ads.empty()) {
        const auto kept = list->Kept();
        explained.counts = "kept %1 of %2, shown %3"_q.arg(kept.size()).arg(list->ads.size()).arg(ad.shownTotal);
        explained.image = kept.empty() ? list->ads.front().image : kept.front()->image;
    }
    return explained;
}

QString OutcomeOf(const RefreshState::Request& request) {
    const auto& red = request.red;
    return Joined({request.why, red                       ? Filled(red->line.row->actual, red->line, request.answeredMs)
                                : request.isGood          ? "good"_q
                                : request.answeredMs != 0 ? "answered"_q
                                                          : "in flight"_q});
}

Explanation OfRefresh(const CTracker& tracker, qint64 localNowMs) {
    Explanation explained;
    TellRequests(explained, tracker, tracker.Rights(), EnKind::Rights, localNowMs);
    const auto next = tracker.NextHourlyMs(localNowMs);
    explained.details << Line(0, "Next hourly"_q, next ? In(*next, localNowMs) : "the timer does not run"_q);
    AddHistory(explained, tracker.LinesOf(EnKind::Rights, 0), localNowMs);
    return explained;
}

Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs) {
    using widget_rules::Worded;
    const VipStatus& vip = rights.Vip();
    const bool isMember = (vip.isNewSystem ? vip.newState : vip.state) == kVipStateMember;
    const bool isKestrel = !vip.isNewSystem && !core::environment::IsVelora();
    Explanation explained;
    explained.details << Line(0, "On the newer system"_q, isKestrel ? "no: edition Kestrel"_q : YesNo(vip.isNewSystem))
                      << Line(0, "State in the older system"_q, Worded(vip.state, {"no member", "member"}))
                      << Line(0, "State in the newer system"_q,
                              Worded(vip.newState, {"no member", "member", "expired"}))
                      << Line(0, "Engine status"_q,
                              Worded(vip.engine,
                                     {"undetermined", "on trial", "member", "asset protection", "expired", "no member",
                                      "member, renewal off"},
                                     kVipEngineUndetermined))
                      << Line(0, "Grade"_q, QString::number(vip.grade))
                      << Line(0, "Qualified for VIP"_q, YesNo(vip.qualification));
    if (TellRequests(explained, tracker, tracker.Vip(), EnKind::Vip, localNowMs)) {
        const QString sentence = isMember ? "The user is a member in the %1 system."_q
                                          : "The server answers that the user is no member in the %1 system. Change "
                                            "the user's VIP status on the server."_q;
        TellAfter(explained, EnKind::Vip, kStepConditions, isMember,
                  sentence.arg(vip.isNewSystem ? "newer"_q : "older"_q));
    }
    AddHistory(explained, tracker.LinesOf(EnKind::Vip, 0), localNowMs);
    return explained;
}

Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs) {
    const CPremiumUIAccessData record = CPremiumRights::Record(right);
    const QString activation = widget_rules::Activation(record.nActivationType).section(" \u00B7 "_q, -1);
    const bool isHeld = record.bHasPermission;
    Explanation explained;
    const bool isTaken = TellRequests(explained, tracker, tracker.Rights(), EnKind::Widget, localNowMs);
    QStringList shown;
    for (const widget_rules::Widget& widget : widget_rules::Of(record, rights.Vip().isNewSystem)) {
        AddWidget(explained, widget);
        if (!widget.Refusing()) {
            shown << (widget.texts.isEmpty() ? widget.kind : "%1 (%2)"_q.arg(widget.kind, widget.texts)).toLower();
        }
    }
    AddRecord(explained, record);
    if (!CPremiumRights::HasModule()) {
        Tell(explained, EnKind::Widget, 0, EnState::Open, explained.state,
             "The module is not there, so nothing is known about rights."_q);
    } else if (isTaken && !rights.Table().contains(right)) {
        explained.state = "not in the answer"_q;
        TellAfter(explained, EnKind::Widget, kStepConditions, false,
                  "The server's answer does not name right %1. Add it to the user's rights on the server, then "
                  "refresh."_q.arg(right));
    } else if (isTaken) {
        const QString sentence = isHeld ? "The user holds it: %1. Widgets: %2."_q
                                        : "The server answers that the user does not hold it: %1. Grant it on the "
                                          "server, or activate it. Widgets: %2."_q;
        TellAfter(explained, EnKind::Widget, kStepPicture, isHeld,
                  sentence.arg(activation, shown.isEmpty() ? "none"_q : shown.join(", "_q)));
    }
    if (rights.Table().contains(right)) {
        explained.state = Joined({isHeld ? "held"_q : "not held"_q, activation, "%1 days"_q.arg(record.nDaysLeft)});
    }
    AddHistory(explained, tracker.LinesOf(EnKind::Widget, right), localNowMs);
    return explained;
}

Explanation OfScene(const CTracker& tracker, const CAIChatEntries& entries, ZRAIChatEntryScene scene,
                    qint64 localNowMs) {
    static constexpr std::tuple<EnEntryState, const char*, const char*> kRows[] = {
        {EnEntryState::Open, "open", "The server opened scene %1 to this user."},
        {EnEntryState::ForcedOpen, "forced open",
         "The override opens all scenes. Remove it to see the server's answer."},
        {EnEntryState::ForcedClosed, "forced closed",
         "The override closes all scenes. Remove it to see the server's answer."},
        {EnEntryState::NoModule, "no module", "The module is not there, so no entry is open."},
        {EnEntryState::ClosedByServer, "closed", "%2 Open it on the server, then log in again."},
    };
    Explanation explained;
    const bool isTaken = TellRequests(explained, tracker, tracker.Chat(), EnKind::Chat, localNowMs);
    const EnEntryState entry = entries.State(scene);
    const QString closed = tracker.Scenes().count(scene) != 0
                               ? "The server answered that scene %1 is not open to this user."_q
                               : "The server's answer does not name scene %1."_q;
    for (const auto& [state, word, sentence] : kRows) {
        if (state == entry && (isTaken || entry != EnEntryState::ClosedByServer)) {
            explained.state = QString::fromUtf8(word);
            TellAfter(explained, EnKind::Chat, kStepConditions, CAIChatEntries::IsOpen(entry),
                      QString::fromUtf8(sentence).replace("%2"_q, closed).replace("%1"_q, QString::number(scene)));
        }
    }
    for (const auto& [number, isOpen] : tracker.Scenes()) {
        const QString name = "Scene %1 in the answer"_q.arg(number);
        explained.details << Line(0, name, isOpen ? "open"_q : "not open to all"_q, isOpen);
    }
    AddHistory(explained, tracker.LinesOf(EnKind::Chat, scene), localNowMs);
    return explained;
}

Explanation OfOpen(const ChatOpen& open) {
    Explanation explained;
    if (!open.isLoaded) {
        Tell(explained, EnKind::ChatOpen, 1, EnState::Open, "no new load"_q,
             "The page was kept: scene, parameters and user are those of the last load, and the window was not "
             "closed."_q);
        return explained;
    }
    const int code = open.httpCode.value_or(0);
    const bool isGood = code >= 200 && code < 400;
    const QString end = isGood          ? QString()
                        : open.httpCode ? " The load ended with code %1. Check the page's address."_q.arg(code)
                                        : " It has not ended yet."_q;
    const bool isNewSession = open.url.contains(QLatin1String("needChangeSessionId=1"));
    Tell(explained, EnKind::ChatOpen, isGood ? 3 : 2, open.httpCode ? EnState::Stopped : EnState::Waiting,
         open.isPreload ? "preload"_q : "new load"_q,
         "The page was loaded anew: %1."_q.arg(open.reasons.join(", "_q)) + end);
    explained.details << Line(0, "Address"_q, open.url)
                      << Line(0, "Flag needChangeSessionId"_q, isNewSession ? "1"_q : "0"_q);
    return explained;
}

}  // namespace explanation

QString StripStep::Text() const {
    static const char* const kSigns[] = {"\u2713 ", "\u2026 ", "\u2717 ", "\u2013 "};
    return QString::fromUtf8(kSigns[int(state)]) + name;
}

QStringList Explanation::Steps() const {
    QStringList steps;
    for (const StripStep& step : strip) {
        steps << step.Text();
    }
    return steps;
}
