#include "workbench/diagnosis/Explanation.h"

#include <QJsonArray>
#include <algorithm>

#include "AIChatEntries.h"
#include "PremiumRights.h"
#include "core/environment.h"
#include "workbench/diagnosis/RightText.h"
#include "workbench/diagnosis/WidgetRules.h"

namespace explanation {
namespace {

using log_table::Clock;
using log_table::Duration;
using log_table::EnEvent;
using log_table::EnFree;
using log_table::EnKind;
using EnState = StripStep::EnState;

constexpr qint64 kSecondMs = 1'000;
/// The year 9999. Later times are treated as never.
constexpr qint64 kLastSecond = 253'402'300'799;
const QString kDot = " \u00B7 "_q;

/// Steps before `passed` are done; `next` is the state of the step after them.
std::vector<StripStep> Strip(EnKind kind, int passed, EnState next = EnState::Open) {
    std::vector<StripStep> strip;
    const QStringList names = log_table::StepNames(kind);
    for (const QString& name : names) {
        const int place = int(strip.size());
        strip.push_back({name, place < passed ? EnState::Done : place == passed ? next : EnState::Open});
    }
    return strip;
}

QString Joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(kDot);
}

Detail Lines(const History& history, qint64 nowMs) {
    Detail group{"The module's lines"_q, QString()};
    for (auto entry = history.entries.rbegin(); entry != history.entries.rend(); ++entry) {
        group.children.push_back({Clock(entry->timeMs, nowMs), entry->text});
    }
    return group;
}

void AddLines(Explanation& explained, const History* history, qint64 nowMs) {
    if (history && !history->entries.empty()) {
        explained.details.push_back(Lines(*history, nowMs));
    }
}

// ---- ads

/// Everything that is needed to explain an ad position, with both clocks.
struct AdScene {
    const CTracker& tracker;
    const AdState& ad;
    qint64 localNowMs;
    qint64 serverNowMs;

    bool IsBanner() const { return ad.slot.type == kTypeBanner; }
};

/// The list that a refusal of a display condition is about.
const AdRequest* ListOf(const AdState& ad) {
    return ad.standing ? ad.standing.get() : ad.answered.get();
}

QString AreasOf(const AdState& ad, const QString& id) {
    const AdRequest* list = ListOf(ad);
    const AdOffer* offer = list ? list->Find(id) : nullptr;
    QStringList areas;
    for (const int area : offer ? offer->areas : std::vector<int>()) {
        areas << log_table::Area(area);
    }
    return areas.isEmpty() ? "another tab (the answer was not seen whole)"_q : areas.join(" or "_q);
}

QString DropsOf(const Refusal& refusal) {
    QStringList drops;
    for (const AdRequest::Drop& drop : refusal.drops) {
        drops << "ad %1 %2"_q.arg(drop.id, drop.why);
    }
    return drops.join(", "_q);
}

QString Filled(const AdScene& scene, const char* text, const Refusal& refusal) {
    QString filled = log_table::Filled(text, refusal.line, scene.serverNowMs);
    if (filled.contains(QLatin1String("{areas}"))) {
        filled.replace(QLatin1String("{areas}"), AreasOf(scene.ad, refusal.line.values.value(4)));
    }
    filled.replace(QLatin1String("{drops}"), DropsOf(refusal));
    filled.replace(QLatin1String("{reason}"), refusal.reason.isEmpty() ? QString() : ": "_q + refusal.reason);
    return filled.replace(QLatin1String(": ."), QLatin1String("."));
}

bool IsEnd(const Refusal& refusal) {
    const EnEvent event = refusal.line.row->event;
    return event == EnEvent::Closed || event == EnEvent::Cleared || event == EnEvent::Withdrawn;
}

/// The refusal that matters: one that changed nothing gives way to the one before it.
const Refusal* Primary(const AdState& ad) {
    return ad.red && ad.red->leavesRest && ad.earlier ? &*ad.earlier : ad.red ? &*ad.red : nullptr;
}

QString EndPhrase(const Refusal& end) {
    static const std::pair<const char*, const char*> kPhrases[] = {
        {"tab switched", "when the tab changed"},
        {"timeout", "when its display time was over"},
        {"ad clicked", "with a click on it"},
        {"close button clicked", "with its close button"},
        {"language changed", "with a change of the language"},
        {"login", "when its page removed it"},
        {"logout", "with the logout"},
        {"push offline", "when the server took it offline"},
    };
    for (const auto& [reason, phrase] : kPhrases) {
        if (end.line.values.value(0) == QLatin1String(reason)) {
            return QString::fromUtf8(phrase);
        }
    }
    return "by %1"_q.arg(end.line.values.value(0));
}

std::optional<qint64> NextPushMs(const AdScene& scene) {
    std::optional<qint64> next;
    for (const qint64 due : scene.ad.pushesMs) {
        if (due > scene.serverNowMs) {
            next = std::min(next.value_or(due), due);
        }
    }
    return next;
}

QString At(const AdScene& scene, qint64 serverMs) {
    return "%1, in %2"_q.arg(Clock(serverMs, scene.serverNowMs),
                             Duration((serverMs - scene.serverNowMs + kSecondMs - 1) / kSecondMs));
}

QString Occasion(const AdScene& scene) {
    if (const auto push = NextPushMs(scene)) {
        return "A push makes it ask again at %1."_q.arg(At(scene, *push));
    }
    if (scene.IsBanner()) {
        return "Its page asks again when it is opened, and after a login or a change of the language."_q;
    }
    return scene.ad.standing ? "It is tried again at a change of the tab."_q
                             : "A new list comes with a login, a change of the language or a push."_q;
}

/// The time until which to wait, and the next occasion.
QString Wait(const AdScene& scene, const Refusal& refusal) {
    const auto free = FreeFromS(scene.ad, refusal);
    if (free && *free * kSecondMs > scene.serverNowMs) {
        return "Wait until %1. "_q.arg(At(scene, *free * kSecondMs)) + Occasion(scene);
    }
    if (free) {
        return "This no longer refuses it. "_q + Occasion(scene);
    }
    return (refusal.line.row->free == EnFree::AfterSum ? "Its own window ends before, so waiting does not help. "_q
                                                       : QString()) +
           Occasion(scene);
}

QString EndSentence(const AdScene& scene, const Refusal& end) {
    const QString at = Clock(end.timeMs, scene.localNowMs);
    const QString nothing =
        scene.ad.standing ? "The last ad ended at %1 %2. "_q : "Nothing is waiting: the last list ended at %1 %2. "_q;
    switch (end.line.row->event) {
        case EnEvent::Closed:
            return nothing.arg(at, EndPhrase(end)) + Occasion(scene);
        case EnEvent::Withdrawn:
            return nothing.arg(at, "when the server took ad %1 offline"_q.arg(end.line.values.value(2))) +
                   Occasion(scene);
        default:
            break;
    }
    const QString why = end.reason == QLatin1String("[Ad] Login out")          ? "with the logout"_q
                        : end.reason == QLatin1String("[Ad] Language changed") ? "with the change of the language"_q
                                                                               : "when it was cleared"_q;
    return nothing.arg(at, why) + Occasion(scene);
}

QString AdName(const AdScene& scene) {
    if (!scene.IsBanner()) {
        return scene.ad.shownAd.isEmpty() ? QString() : ": ad %1"_q.arg(scene.ad.shownAd);
    }
    QStringList ids;
    for (const AdOffer& offer : scene.ad.made ? scene.ad.made->ads : std::vector<AdOffer>()) {
        if (scene.ad.made->DropOf(offer).isEmpty()) {
            ids << offer.id;
        }
    }
    return ids.isEmpty() ? QString() : ": ads %1"_q.arg(ids.join(", "_q));
}

/// Returns true for a visible banner whose pictures all failed.
bool IsBare(const AdState& ad) {
    return ad.shownCount > 0 && ad.made && ad.slot.type == kTypeBanner && ad.made->KeptCount() > 0 &&
           std::all_of(ad.made->ads.begin(), ad.made->ads.end(), [&ad](const AdOffer& offer) {
               return !ad.made->DropOf(offer).isEmpty() || ad.failedPictures.count(offer.image) != 0;
           });
}

void ExplainRefusal(Explanation& explained, const AdScene& scene, const Refusal& refusal) {
    const log_table::Row& row = *refusal.line.row;
    if (IsEnd(refusal)) {
        const bool wasShown = row.event == EnEvent::Closed;
        explained.state = wasShown ? "was shown, ended"_q : "list taken away"_q;
        explained.strip =
            wasShown ? Strip(EnKind::Ad, log_table::kStepShown + 1) : Strip(EnKind::Ad, refusal.step, EnState::Stopped);
        explained.sentence = EndSentence(scene, refusal);
        return;
    }
    explained.state = "refused: %1"_q.arg(QString::fromUtf8(row.check));
    explained.strip = Strip(EnKind::Ad, refusal.step, EnState::Stopped);
    explained.sentence = Filled(scene, row.say, refusal) + QLatin1Char(' ') + Wait(scene, refusal);
}

void ExplainState(Explanation& explained, const AdScene& scene) {
    const AdState& ad = scene.ad;
    if (ad.shownCount > 0) {
        const bool isBare = IsBare(ad);
        explained.strip = isBare ? Strip(EnKind::Ad, log_table::kStepPicture, EnState::Stopped)
                                 : Strip(EnKind::Ad, log_table::kStepShown + 1);
        explained.state = isBare ? "shown, without pictures"_q : "shown"_q;
        explained.sentence =
            isBare ? "It is there since %1, but none of its pictures came%2. Check "
                     "their addresses on the server."_q.arg(Clock(ad.shownMs, scene.localNowMs), AdName(scene))
                   : "Shown since %1%2."_q.arg(Clock(ad.shownMs, scene.localNowMs), AdName(scene));
        return;
    }
    if (!ad.last && (!ad.red || (ad.red->leavesRest && ad.red->step == log_table::kStepKept))) {
        explained.strip = Strip(EnKind::Ad, 0);
        explained.state = "not asked"_q;
        explained.sentence = scene.IsBanner()
                                 ? "Nothing was asked for yet. A page that shows this banner asks when it is opened."_q
                                 : "Nothing was asked for yet. "_q + Occasion(scene);
        return;
    }
    if (ad.isLoading) {
        explained.strip = Strip(EnKind::Ad, log_table::kStepPicture, EnState::Waiting);
        explained.state = "loading its picture"_q;
        explained.sentence = "Its picture is loading. It is shown when the picture is there."_q;
        return;
    }
    if (ad.isAsking) {
        explained.strip = Strip(EnKind::Ad, log_table::kStepAnswered, EnState::Waiting);
        explained.state = "no answer yet"_q;
        explained.sentence =
            "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(ad.last->sentMs, scene.localNowMs));
        return;
    }
    if (const Refusal* primary = Primary(ad)) {
        ExplainRefusal(explained, scene, *primary);
        return;
    }
    explained.strip = Strip(EnKind::Ad, log_table::kStepAnswered + 1, EnState::Waiting);
    explained.state = "answered"_q;
    explained.sentence = "The answer came, and is being checked."_q;
}

/// The checks of a step in the module's order.
QStringList ChecksOf(int step, bool isBanner) {
    QStringList checks;
    for (const log_table::Row& row : log_table::All()) {
        const QString text = QString::fromUtf8(row.text);
        const bool isOfBanner = text.contains(QLatin1String("anner"));
        const bool isOfPopup = text.contains(QLatin1String("opup")) || text.contains(QLatin1String("ShowAreas")) ||
                               text.contains(QLatin1String("AdId is null"));
        const QString check = QString::fromUtf8(row.check);
        if (row.kind == EnKind::Ad && row.event == EnEvent::Refused && row.step == step &&
            !(isBanner ? isOfPopup : isOfBanner) && !checks.contains(check)) {
            checks << check;
        }
    }
    return checks;
}

Detail RefusalDetail(const AdScene& scene, const Refusal& refusal, const QString& title) {
    const log_table::Row& row = *refusal.line.row;
    Detail group{title, Clock(refusal.timeMs, scene.localNowMs) + kDot + QString::fromUtf8(row.check), false, {}};
    if (IsEnd(refusal)) {
        group.value = EndSentence(scene, refusal);
        group.good.reset();
        return group;
    }
    group.children.push_back({"Found"_q, Filled(scene, row.actual, refusal)});
    group.children.push_back({"Needed"_q, Filled(scene, row.expected, refusal)});
    QStringList checks =
        ChecksOf(refusal.step == log_table::kStepShown ? log_table::kStepConditions : refusal.step, scene.IsBanner());
    if (!checks.contains(QString::fromUtf8(row.check))) {
        checks << QString::fromUtf8(row.check);
    }
    const int place = checks.indexOf(QString::fromUtf8(row.check));
    for (int index = 0; place >= 0 && index < checks.size(); ++index) {
        const bool isBefore = index < place;
        group.children.push_back({checks[index],
                                  isBefore         ? "passed"_q
                                  : index == place ? "refused"_q
                                                   : "not reached"_q,
                                  isBefore         ? std::make_optional(true)
                                  : index == place ? std::make_optional(false)
                                                   : std::nullopt,
                                  {}});
    }
    return group;
}

Detail RequestDetail(const AdScene& scene, const AdRequest& request, const QString& title) {
    const auto now = scene.localNowMs;
    Detail group{title, Clock(request.sentMs, now)};
    group.children.push_back({"Request id"_q, request.id});
    group.children.push_back({"Path"_q, request.path});
    if (!request.askedFor.isEmpty()) {
        group.children.push_back({"Asked for"_q, request.askedFor.join(", "_q)});
    }
    if (request.answeredMs != 0) {
        const QString status = request.status != 0 ? "HTTP %1"_q.arg(request.status) : QString();
        const QString code = request.code ? "code %1"_q.arg(*request.code) : QString();
        group.children.push_back(
            {"Answer"_q,
             Joined({Clock(request.answeredMs, now), status, code, "%1 ms"_q.arg(request.durationMs), request.refusal}),
             request.refusal.isEmpty() ? std::nullopt : std::make_optional(false),
             {}});
    }
    for (const AdOffer& ad : request.ads) {
        const QString drop = request.DropOf(ad);
        Detail line{"Ad %1"_q.arg(ad.id), drop.isEmpty() ? "kept"_q : "not kept: %1"_q.arg(drop), drop.isEmpty(), {}};
        if (ad.startS && ad.endS) {
            line.children.push_back({"Window"_q, "%1 – %2"_q.arg(Clock(*ad.startS * kSecondMs, scene.serverNowMs),
                                                                 Clock(*ad.endS * kSecondMs, scene.serverNowMs))});
        }
        if (ad.expireS) {
            line.children.push_back({"Expires"_q, Clock(*ad.expireS * kSecondMs, scene.serverNowMs)});
        }
        if (scene.ad.failedPictures.count(ad.image) != 0) {
            line.children.push_back({"Picture failed"_q, ad.image, false, {}});
        }
        group.children.push_back(std::move(line));
    }
    return group;
}

std::optional<qint64> Sum(qint64 left, qint64 right) {
    const auto isNear = [](qint64 second) { return -kLastSecond <= second && second <= kLastSecond; };
    return isNear(left) && isNear(right) && left + right <= kLastSecond ? std::make_optional(left + right)
                                                                        : std::nullopt;
}

// ---- rights

QString ReasonOf(RefreshState::EnReason why) {
    static const char* const kReasons[] = {"", "login", "hourly", "language", "push", "a caller"};
    return QString::fromUtf8(kReasons[int(why)]);
}

Detail RefreshDetail(const QString& name, const RefreshState::Request& request, qint64 nowMs) {
    const QString time = request.answeredMs != 0 ? Clock(request.answeredMs, nowMs) : Clock(request.sentMs, nowMs);
    return {name,
            Joined({time, OutcomeOf(request), "session %1"_q.arg(request.session)}),
            request.red ? std::make_optional(false) : std::nullopt,
            {}};
}

/// Fills in the steps up to "taken". Returns false if one of them explains the subject.
bool ExplainRequest(Explanation& explained, const CTracker& tracker, const RefreshState& state, EnKind kind,
                    const QString& what, qint64 nowMs) {
    if (tracker.IsLoggedOut() || tracker.User() == 0) {
        explained.strip = Strip(kind, 0);
        explained.state = "nobody is logged in"_q;
        explained.sentence = "Nobody is logged in. %1 asked for at login."_q.arg(what);
        return false;
    }
    const RefreshState::Request* last = state.Find(state.last);
    const RefreshState::Request* answered = state.Find(state.answered);
    if (answered) {
        explained.details.push_back(RefreshDetail("Last answer"_q, *answered, nowMs));
    }
    for (const auto& [session, request] : state.requests) {
        if (request.sentMs != 0 && request.answeredMs == 0 && !request.red) {
            explained.details.push_back(RefreshDetail("Without an answer"_q, request, nowMs));
        }
    }
    for (const RefreshState::Push& push : state.pushes) {
        if (push.dueMs > nowMs) {
            explained.details.push_back(
                {"Push, due"_q,
                 Joined({Clock(push.dueMs, nowMs), push.count < 0 ? "all"_q : "rights: %1"_q.arg(push.count)})});
        }
    }
    if (answered && answered->red) {
        const Refusal& red = *answered->red;
        explained.strip = Strip(kind, red.step, EnState::Stopped);
        explained.state = OutcomeOf(*answered);
        explained.sentence = log_table::Filled(red.line.row->say, red.line, nowMs) +
                             " The values from before remain. Ask again, or log in again."_q;
        return false;
    }
    if (answered && answered->isGood) {
        explained.strip = Strip(kind, log_table::kStepKept + 1);
        explained.state = OutcomeOf(*answered);
        explained.sentence = "The last answer was taken at %1."_q.arg(Clock(answered->answeredMs, nowMs));
        return true;
    }
    const bool isAsked = last && last->sentMs != 0;
    explained.strip = Strip(kind, isAsked ? log_table::kStepAnswered : 0, isAsked ? EnState::Waiting : EnState::Open);
    explained.state = isAsked ? "no answer yet"_q : "not asked"_q;
    explained.sentence = isAsked ? "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(last->sentMs, nowMs))
                                 : "Nothing was asked for yet. %1 asked for at login."_q.arg(what);
    return false;
}

/// The next step is done or stopped.
std::vector<StripStep> StripTo(EnKind kind, int step, bool isGood) {
    return isGood ? Strip(kind, step + 1) : Strip(kind, step, EnState::Stopped);
}

Detail WidgetDetail(const widget_rules::Widget& widget) {
    const widget_rules::Rule* refusing = widget.Refusing();
    Detail group{widget.texts.isEmpty() ? widget.kind : "%1, %2"_q.arg(widget.kind, widget.texts),
                 refusing ? "hidden: %1"_q.arg(refusing->name) : "may be shown"_q,
                 !refusing,
                 {}};
    bool isReached = true;
    for (const widget_rules::Rule& rule : widget.rules) {
        group.children.push_back({rule.name,
                                  isReached ? "%1, needed: %2"_q.arg(rule.actual, rule.expected)
                                            : "not reached: %1, needed: %2"_q.arg(rule.actual, rule.expected),
                                  isReached ? std::make_optional(rule.passes) : std::nullopt,
                                  {}});
        isReached = isReached && rule.passes;
    }
    return group;
}

void AddFields(std::vector<Detail>& details, const std::vector<FieldNode>& fields) {
    for (const FieldNode& field : fields) {
        Detail detail{field.name, field.value};
        AddFields(detail.children, field.children);
        details.push_back(std::move(detail));
    }
}

/// "icon, banner (main texts)".
QString ShownWidgets(const std::vector<widget_rules::Widget>& widgets) {
    QStringList shown;
    for (const widget_rules::Widget& widget : widgets) {
        if (!widget.Refusing()) {
            shown << (widget.texts.isEmpty() ? widget.kind : "%1 (%2)"_q.arg(widget.kind, widget.texts)).toLower();
        }
    }
    return shown.isEmpty() ? "none"_q : shown.join(", "_q);
}

QJsonArray ToJsonOf(const std::vector<Detail>& details) {
    QJsonArray array;
    for (const Detail& detail : details) {
        QJsonObject object{{"name"_q, detail.name}, {"value"_q, detail.value}};
        if (!detail.children.empty()) {
            object.insert("details"_q, ToJsonOf(detail.children));
        }
        array.append(object);
    }
    return array;
}

QString NameOf(EnState state) {
    static const char* const kNames[] = {"done", "waiting", "stopped", "not reached"};
    return QString::fromUtf8(kNames[int(state)]);
}

void AppendText(QString& text, const std::vector<Detail>& details, const QString& indent) {
    for (const Detail& detail : details) {
        text += "%1%2: %3\n"_q.arg(indent, detail.name, detail.value);
        AppendText(text, detail.children, indent + "  "_q);
    }
}

}  // namespace

std::optional<qint64> FreeFromS(const AdState& ad, const Refusal& refusal) {
    const log_table::ParsedLine& line = refusal.line;
    switch (line.row->free) {
        case EnFree::Sum:
            return Sum(line.Number(1), line.Number(2));
        case EnFree::AfterSum: {
            const auto end = Sum(line.Number(1), line.Number(2));
            const auto free = end ? Sum(*end, 1) : std::nullopt;
            const AdRequest* list = ListOf(ad);
            const AdOffer* offer = list ? list->Find(line.values.value(5)) : nullptr;
            return free && offer && !offer->LastsUntil(*free) ? std::nullopt : free;
        }
        case EnFree::Window: {
            std::optional<qint64> first;
            for (const AdRequest::Drop& drop : refusal.drops) {
                const qint64 start = std::max(drop.limitS, ad.nextAskS);
                const AdOffer* offer = ad.answered ? ad.answered->Find(drop.id) : nullptr;
                if (drop.isEarly && drop.limitS <= kLastSecond && (!offer || offer->LastsUntil(start))) {
                    first = std::min(first.value_or(start), start);
                }
            }
            return first;
        }
        case EnFree::Never:
            break;
    }
    return std::nullopt;
}

Explanation OfAd(const CTracker& tracker, const AdSlot& slot, qint64 localNowMs) {
    AdState unknown;
    unknown.slot = slot;
    const AdState* found = tracker.Find(slot);
    const AdState& ad = found ? *found : unknown;
    const AdScene scene{tracker, ad, localNowMs, tracker.ToServerMs(localNowMs)};
    Explanation explained;
    ExplainState(explained, scene);
    const Refusal* primary = Primary(ad);
    if (primary && ad.shownCount == 0) {
        explained.details.push_back(RefusalDetail(scene, *primary, "Last refusal"_q));
    }
    if (ad.red && primary != &*ad.red) {
        explained.details.push_back(RefusalDetail(scene, *ad.red, "After that"_q));
    } else if (ad.red && ad.shownCount > 0) {
        explained.details.push_back(RefusalDetail(scene, *ad.red, "After it was shown"_q));
    }
    if (ad.last) {
        explained.details.push_back(RequestDetail(scene, *ad.last, "Last request"_q));
    }
    if (ad.answered && ad.answered != ad.last) {
        explained.details.push_back(RequestDetail(scene, *ad.answered, "Last answered request"_q));
    }
    if (ad.standing && ad.standing != ad.last && ad.standing != ad.answered) {
        explained.details.push_back(RequestDetail(scene, *ad.standing, "Waiting list"_q));
    }
    AddLines(explained, &ad.history, localNowMs);
    if (const AdRequest* list = ad.answered ? ad.answered.get() : ad.last.get(); list && !list->ads.empty()) {
        explained.counts = "kept %1 of %2, shown %3"_q.arg(list->KeptCount()).arg(list->ads.size()).arg(ad.shownTotal);
        const AdOffer* first = list->FirstKept();
        explained.image = first ? first->image : list->ads.front().image;
    }
    return explained;
}

QString OutcomeOf(const RefreshState::Request& request) {
    const QString outcome =
        request.red      ? log_table::Filled(request.red->line.row->actual, request.red->line, request.answeredMs)
        : request.isGood ? "good"_q
        : request.answeredMs != 0 ? "answered"_q
                                  : "in flight"_q;
    return Joined({ReasonOf(request.why), outcome});
}

Explanation OfRefresh(const CTracker& tracker, qint64 localNowMs) {
    Explanation explained;
    ExplainRequest(explained, tracker, tracker.Rights(), EnKind::Rights, "Rights are"_q, localNowMs);
    const auto next = tracker.NextHourlyMs(localNowMs);
    explained.details.push_back(
        {"Next hourly"_q, next ? "%1, in %2"_q.arg(Clock(*next, localNowMs), Duration((*next - localNowMs) / kSecondMs))
                               : "the timer does not run"_q});
    AddLines(explained, &tracker.Rights().history, localNowMs);
    return explained;
}

Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs) {
    Explanation explained;
    const VipStatus& vip = rights.Vip();
    const QString system = vip.isNewSystem ? "newer"_q : "older"_q;
    const bool isMember = (vip.isNewSystem ? vip.newState : vip.state) == kVipStateMember;
    if (ExplainRequest(explained, tracker, tracker.Vip(), EnKind::Vip, "The VIP status is"_q, localNowMs)) {
        explained.strip = StripTo(EnKind::Vip, log_table::kStepConditions, isMember);
        explained.sentence = isMember ? "The user is a member in the %1 system."_q.arg(system)
                                      : "The server answers that the user is no member in the %1 system. Change the "
                                        "user's VIP status on the server."_q.arg(system);
    }
    const QString edition = core::environment::IsVelora() ? "no"_q : "no: edition Kestrel"_q;
    explained.details.insert(explained.details.begin(),
                             {{"On the newer system"_q, vip.isNewSystem ? "yes"_q : edition},
                              {"State in the older system"_q, right_text::OldState(vip.state)},
                              {"State in the newer system"_q, right_text::NewState(vip.newState)},
                              {"Engine status"_q, right_text::Engine(vip.engine)},
                              {"Grade"_q, QString::number(vip.grade)},
                              {"Qualified for VIP"_q, right_text::YesNo(vip.qualification)}});
    AddLines(explained, &tracker.Vip().history, localNowMs);
    return explained;
}

Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs) {
    Explanation explained;
    const bool isListed = rights.Table().contains(right);
    const CPremiumUIAccessData record = CPremiumRights::Record(right);
    const std::vector<widget_rules::Widget> widgets = widget_rules::Of(record, rights.Vip().isNewSystem);
    const bool isTaken =
        ExplainRequest(explained, tracker, tracker.Rights(), EnKind::Widget, "Rights are"_q, localNowMs);
    if (!CPremiumRights::HasModule()) {
        explained.strip = Strip(EnKind::Widget, 0);
        explained.sentence = "The module is not there, so nothing is known about rights."_q;
    } else if (isTaken && !isListed) {
        explained.strip = StripTo(EnKind::Widget, log_table::kStepConditions, false);
        explained.sentence =
            "The server's answer does not name right %1. Add it to the user's rights "
            "on the server, then refresh."_q.arg(right);
    } else if (isTaken) {
        explained.strip = StripTo(EnKind::Widget, log_table::kStepPicture, record.bHasPermission);
        explained.sentence =
            record.bHasPermission
                ? "The user holds it: %1. Widgets: %2."_q.arg(
                      right_text::Activation(record.nActivationType, right_text::EnForm::Word), ShownWidgets(widgets))
                : "The server answers that the user does not hold it: %1. Grant it on the server, or "
                  "activate it. Widgets: %2."_q.arg(
                      right_text::Activation(record.nActivationType, right_text::EnForm::Word), ShownWidgets(widgets));
    }
    if (isListed) {
        explained.state = Joined({record.bHasPermission ? "held"_q : "not held"_q,
                                  right_text::Activation(record.nActivationType, right_text::EnForm::Word),
                                  "%1 days"_q.arg(record.nDaysLeft)});
    } else if (isTaken) {
        explained.state = "not in the answer"_q;
    }
    std::vector<Detail> groups;
    groups.reserve(widgets.size());
    for (const widget_rules::Widget& widget : widgets) {
        groups.push_back(WidgetDetail(widget));
    }
    AddFields(groups, right_text::Fields(record));
    if (!record.strOtherInfo.isEmpty()) {
        groups.push_back({"Other info"_q, right_text::Pretty(record.strOtherInfo)});
    }
    explained.details.insert(explained.details.begin(), groups.begin(), groups.end());
    AddLines(explained, tracker.LinesOf(EnKind::Widget, right), localNowMs);
    return explained;
}

Explanation OfScene(const CTracker& tracker, const CAIChatEntries& entries, ZRAIChatEntryScene scene,
                    qint64 localNowMs) {
    struct Row {
        EnEntryState entry;
        std::optional<bool> isOpen;  // nothing: no step was reached
        const char* state;
        const char* sentence;
    };
    static constexpr Row kRows[] = {
        {EnEntryState::Open, true, "open", "The server opened scene %1 to this user."},
        {EnEntryState::ForcedOpen, true, "forced open",
         "The override opens all scenes. Remove it to see the server's answer."},
        {EnEntryState::ForcedClosed, false, "forced closed",
         "The override closes all scenes. Remove it to see the server's answer."},
        {EnEntryState::NoModule, std::nullopt, "no module", "The module is not there, so no entry is open."},
        {EnEntryState::NobodyLoggedIn, std::nullopt, "nobody is logged in",
         "Nobody is logged in. The scenes are asked for at login."},
        {EnEntryState::ClosedByServer, false, "closed",
         "The server answered that scene %1 is not open to this user. Open it on the server, then log in again."},
    };
    Explanation explained;
    const bool isTaken =
        ExplainRequest(explained, tracker, tracker.Chat(), EnKind::Chat, "The scenes are"_q, localNowMs);
    const EnEntryState entry = entries.State(scene);
    const Row& row =
        *std::find_if(std::begin(kRows), std::end(kRows), [entry](const Row& one) { return one.entry == entry; });
    if (isTaken || entry != EnEntryState::ClosedByServer) {
        explained.strip =
            row.isOpen ? StripTo(EnKind::Chat, log_table::kStepConditions, *row.isOpen) : Strip(EnKind::Chat, 0);
        explained.state = QString::fromUtf8(row.state);
        explained.sentence = QString::fromUtf8(row.sentence).replace("%1"_q, QString::number(scene));
    }
    if (isTaken && entry == EnEntryState::ClosedByServer && tracker.Scenes().count(scene) == 0) {
        explained.sentence =
            "The server's answer does not name scene %1. Open it on the server, then log in again."_q.arg(scene);
    }
    for (const auto& [number, isOpen] : tracker.Scenes()) {
        explained.details.push_back(
            {"Scene %1 in the answer"_q.arg(number), isOpen ? "open"_q : "not open to all"_q, isOpen});
    }
    AddLines(explained, tracker.LinesOf(EnKind::Chat, scene), localNowMs);
    return explained;
}

Explanation OfOpen(const ChatOpen& open) {
    Explanation explained;
    const bool isAnswered = open.httpCode.has_value();
    const bool isGood = isAnswered && *open.httpCode >= 200 && *open.httpCode < 400;
    const QString reasons = open.reasons.join(", "_q);
    if (!open.isLoaded) {
        explained.strip = Strip(EnKind::ChatOpen, 1);
        explained.state = "no new load"_q;
        explained.sentence =
            "The page was kept: scene, parameters and user are those of the last load, and the window was not closed."_q;
        return explained;
    }
    explained.strip = isGood       ? Strip(EnKind::ChatOpen, 3)
                      : isAnswered ? Strip(EnKind::ChatOpen, 2, EnState::Stopped)
                                   : Strip(EnKind::ChatOpen, 2, EnState::Waiting);
    explained.state = open.isPreload ? "preload"_q : "new load"_q;
    explained.sentence = "The page was loaded anew: %1."_q.arg(reasons) +
                         (isGood       ? QString()
                          : isAnswered ? " The load ended with code %1. Check the page's address."_q.arg(*open.httpCode)
                                       : " It has not ended yet."_q);
    explained.details = {
        {"Address"_q, open.url},
        {"Flag needChangeSessionId"_q, open.url.contains(QLatin1String("needChangeSessionId=1")) ? "1"_q : "0"_q},
        {"Why"_q, reasons}};
    return explained;
}

}  // namespace explanation

QJsonObject Explanation::ToJson() const {
    QJsonArray steps;
    for (const StripStep& step : strip) {
        steps.append(QJsonObject{{"step"_q, step.name}, {"state"_q, explanation::NameOf(step.state)}});
    }
    QJsonObject object{{"state"_q, state},
                       {"sentence"_q, sentence},
                       {"steps"_q, steps},
                       {"details"_q, explanation::ToJsonOf(details)}};
    if (!counts.isEmpty()) {
        object.insert("counts"_q, counts);
    }
    return object;
}

QString Explanation::ToText() const {
    QStringList steps;
    for (const StripStep& step : strip) {
        steps << "%1 (%2)"_q.arg(step.name, explanation::NameOf(step.state));
    }
    QString text = steps.join(" > "_q) + QLatin1Char('\n') + sentence + QLatin1Char('\n');
    explanation::AppendText(text, details, QString());
    return text;
}
