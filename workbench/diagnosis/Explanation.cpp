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
const QString kDot = QStringLiteral(" \u00B7 ");

/// Steps before `passed` are done. The step after them is stopped or waits, if `next` says so.
std::vector<StripStep> Strip(EnKind kind, int passed, EnState next = EnState::Open) {
    std::vector<StripStep> strip;
    for (const char* name : log_table::StepNames(kind)) {
        const int place = int(strip.size());
        strip.push_back({QString::fromUtf8(name), place < passed    ? EnState::Done
                                                  : place == passed ? next
                                                                    : EnState::Open});
    }
    return strip;
}

QString Joined(QStringList parts) {
    parts.removeAll(QString());
    return parts.join(kDot);
}

Detail Lines(const History& history, qint64 nowMs) {
    Detail group{QStringLiteral("The module's lines"), QString()};
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
    return areas.isEmpty() ? QStringLiteral("another tab (the answer was not seen whole)")
                           : areas.join(QStringLiteral(" or "));
}

QString DropsOf(const Refusal& refusal) {
    QStringList drops;
    for (const AdRequest::Drop& drop : refusal.drops) {
        drops << QStringLiteral("ad %1 %2").arg(drop.id, drop.why);
    }
    return drops.join(QStringLiteral(", "));
}

QString Filled(const AdScene& scene, const char* text, const Refusal& refusal) {
    QString filled = log_table::Filled(text, refusal.line, scene.serverNowMs);
    if (filled.contains(QLatin1String("{areas}"))) {
        filled.replace(QLatin1String("{areas}"), AreasOf(scene.ad, refusal.line.values.value(4)));
    }
    filled.replace(QLatin1String("{drops}"), DropsOf(refusal));
    filled.replace(QLatin1String("{reason}"),
                   refusal.reason.isEmpty() ? QString() : QStringLiteral(": ") + refusal.reason);
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
    return QStringLiteral("by %1").arg(end.line.values.value(0));
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
    return QStringLiteral("%1, in %2")
        .arg(Clock(serverMs, scene.serverNowMs), Duration((serverMs - scene.serverNowMs + kSecondMs - 1) / kSecondMs));
}

QString Occasion(const AdScene& scene) {
    if (const auto push = NextPushMs(scene)) {
        return QStringLiteral("A push makes it ask again at %1.").arg(At(scene, *push));
    }
    if (scene.IsBanner()) {
        return QStringLiteral("Its page asks again when it is opened, and after a login or a change of the language.");
    }
    return scene.ad.standing ? QStringLiteral("It is tried again at a change of the tab.")
                             : QStringLiteral("A new list comes with a login, a change of the language or a push.");
}

/// The time until which to wait, and the next occasion.
QString Wait(const AdScene& scene, const Refusal& refusal) {
    const auto free = FreeFromS(scene.ad, refusal);
    if (free && *free * kSecondMs > scene.serverNowMs) {
        return QStringLiteral("Wait until %1. ").arg(At(scene, *free * kSecondMs)) + Occasion(scene);
    }
    if (free) {
        return QStringLiteral("This no longer refuses it. ") + Occasion(scene);
    }
    return (refusal.line.row->free == EnFree::AfterSum
                ? QStringLiteral("Its own window ends before, so waiting does not help. ")
                : QString()) +
           Occasion(scene);
}

QString EndSentence(const AdScene& scene, const Refusal& end) {
    const QString at = Clock(end.timeMs, scene.localNowMs);
    const QString nothing = scene.ad.standing ? QStringLiteral("The last ad ended at %1 %2. ")
                                              : QStringLiteral("Nothing is waiting: the last list ended at %1 %2. ");
    switch (end.line.row->event) {
        case EnEvent::Closed:
            return nothing.arg(at, EndPhrase(end)) + Occasion(scene);
        case EnEvent::Withdrawn:
            return nothing.arg(at, QStringLiteral("when the server took ad %1 offline").arg(end.line.values.value(2))) +
                   Occasion(scene);
        default:
            break;
    }
    const QString why = end.reason == QLatin1String("[Ad] Login out") ? QStringLiteral("with the logout")
                        : end.reason == QLatin1String("[Ad] Language changed")
                            ? QStringLiteral("with the change of the language")
                            : QStringLiteral("when it was cleared");
    return nothing.arg(at, why) + Occasion(scene);
}

QString AdName(const AdScene& scene) {
    if (!scene.IsBanner()) {
        return scene.ad.shownAd.isEmpty() ? QString() : QStringLiteral(": ad %1").arg(scene.ad.shownAd);
    }
    QStringList ids;
    for (const AdOffer& offer : scene.ad.made ? scene.ad.made->ads : std::vector<AdOffer>()) {
        if (scene.ad.made->DropOf(offer).isEmpty()) {
            ids << offer.id;
        }
    }
    return ids.isEmpty() ? QString() : QStringLiteral(": ads %1").arg(ids.join(QStringLiteral(", ")));
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
        explained.state = wasShown ? QStringLiteral("was shown, ended") : QStringLiteral("list taken away");
        explained.strip =
            wasShown ? Strip(EnKind::Ad, log_table::kStepShown + 1) : Strip(EnKind::Ad, refusal.step, EnState::Stopped);
        explained.sentence = EndSentence(scene, refusal);
        return;
    }
    explained.state = QStringLiteral("refused: %1").arg(QString::fromUtf8(row.check));
    explained.strip = Strip(EnKind::Ad, refusal.step, EnState::Stopped);
    explained.sentence = Filled(scene, row.say, refusal) + QLatin1Char(' ') + Wait(scene, refusal);
}

void ExplainState(Explanation& explained, const AdScene& scene) {
    const AdState& ad = scene.ad;
    if (ad.shownCount > 0) {
        const bool isBare = IsBare(ad);
        explained.strip = isBare ? Strip(EnKind::Ad, log_table::kStepPicture, EnState::Stopped)
                                 : Strip(EnKind::Ad, log_table::kStepShown + 1);
        explained.state = isBare ? QStringLiteral("shown, without pictures") : QStringLiteral("shown");
        explained.sentence =
            isBare ? QStringLiteral(
                         "It is there since %1, but none of its pictures came%2. Check "
                         "their addresses on the server.")
                         .arg(Clock(ad.shownMs, scene.localNowMs), AdName(scene))
                   : QStringLiteral("Shown since %1%2.").arg(Clock(ad.shownMs, scene.localNowMs), AdName(scene));
        return;
    }
    if (!ad.last && (!ad.red || ad.red->leavesRest)) {
        explained.strip = Strip(EnKind::Ad, 0);
        explained.state = QStringLiteral("not asked");
        explained.sentence =
            scene.IsBanner()
                ? QStringLiteral("Nothing was asked for yet. A page that shows this banner asks when it is opened.")
                : QStringLiteral("Nothing was asked for yet. ") + Occasion(scene);
        return;
    }
    if (ad.isLoading) {
        explained.strip = Strip(EnKind::Ad, log_table::kStepPicture, EnState::Waiting);
        explained.state = QStringLiteral("loading its picture");
        explained.sentence = QStringLiteral("Its picture is loading. It is shown when the picture is there.");
        return;
    }
    if (ad.isAsking) {
        explained.strip = Strip(EnKind::Ad, log_table::kStepAnswered, EnState::Waiting);
        explained.state = QStringLiteral("no answer yet");
        explained.sentence = QStringLiteral("The request of %1 has no answer yet. Wait for it.")
                                 .arg(Clock(ad.last->sentMs, scene.localNowMs));
        return;
    }
    if (const Refusal* primary = Primary(ad)) {
        ExplainRefusal(explained, scene, *primary);
        return;
    }
    explained.strip = Strip(EnKind::Ad, log_table::kStepAnswered + 1, EnState::Waiting);
    explained.state = QStringLiteral("answered");
    explained.sentence = QStringLiteral("The answer came, and is being checked.");
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
    group.children.push_back({QStringLiteral("Found"), Filled(scene, row.actual, refusal)});
    group.children.push_back({QStringLiteral("Needed"), Filled(scene, row.expected, refusal)});
    QStringList checks =
        ChecksOf(refusal.step == log_table::kStepShown ? log_table::kStepConditions : refusal.step, scene.IsBanner());
    if (!checks.contains(QString::fromUtf8(row.check))) {
        checks << QString::fromUtf8(row.check);
    }
    const int place = checks.indexOf(QString::fromUtf8(row.check));
    for (int index = 0; place >= 0 && index < checks.size(); ++index) {
        const bool isBefore = index < place;
        group.children.push_back({checks[index],
                                  isBefore         ? QStringLiteral("passed")
                                  : index == place ? QStringLiteral("refused")
                                                   : QStringLiteral("not reached"),
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
    group.children.push_back({QStringLiteral("Request id"), request.id});
    group.children.push_back({QStringLiteral("Path"), request.path});
    if (!request.askedFor.isEmpty()) {
        group.children.push_back({QStringLiteral("Asked for"), request.askedFor.join(QStringLiteral(", "))});
    }
    if (request.answeredMs != 0) {
        const QString status = request.status != 0 ? QStringLiteral("HTTP %1").arg(request.status) : QString();
        const QString code = request.code ? QStringLiteral("code %1").arg(*request.code) : QString();
        group.children.push_back({QStringLiteral("Answer"),
                                  Joined({Clock(request.answeredMs, now), status, code,
                                          QStringLiteral("%1 ms").arg(request.durationMs), request.refusal}),
                                  request.refusal.isEmpty() ? std::nullopt : std::make_optional(false),
                                  {}});
    }
    for (const AdOffer& ad : request.ads) {
        const QString drop = request.DropOf(ad);
        Detail line{QStringLiteral("Ad %1").arg(ad.id),
                    drop.isEmpty() ? QStringLiteral("kept") : QStringLiteral("not kept: %1").arg(drop),
                    drop.isEmpty(),
                    {}};
        if (ad.startS && ad.endS) {
            line.children.push_back({QStringLiteral("Window"),
                                     QStringLiteral("%1 – %2").arg(Clock(*ad.startS * kSecondMs, scene.serverNowMs),
                                                                   Clock(*ad.endS * kSecondMs, scene.serverNowMs))});
        }
        if (ad.expireS) {
            line.children.push_back({QStringLiteral("Expires"), Clock(*ad.expireS * kSecondMs, scene.serverNowMs)});
        }
        if (scene.ad.failedPictures.count(ad.image) != 0) {
            line.children.push_back({QStringLiteral("Picture failed"), ad.image, false, {}});
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
    using EnReason = RefreshState::EnReason;
    switch (why) {
        case EnReason::Login:
            return QStringLiteral("login");
        case EnReason::Hourly:
            return QStringLiteral("hourly");
        case EnReason::Language:
            return QStringLiteral("language");
        case EnReason::Push:
            return QStringLiteral("push");
        case EnReason::Caller:
            return QStringLiteral("a caller");
        case EnReason::Unknown:
            break;
    }
    return QString();
}

Detail RefreshDetail(const QString& name, const RefreshState::Request& request, qint64 nowMs) {
    const QString time = request.answeredMs != 0 ? Clock(request.answeredMs, nowMs) : Clock(request.sentMs, nowMs);
    return {name,
            Joined({time, OutcomeOf(request), QStringLiteral("session %1").arg(request.session)}),
            request.red ? std::make_optional(false) : std::nullopt,
            {}};
}

/// Fills in the steps up to "taken". Returns false if one of them explains the subject.
bool ExplainRequest(Explanation& explained, const CTracker& tracker, const RefreshState& state, EnKind kind,
                    const QString& what, qint64 nowMs) {
    if (tracker.IsLoggedOut() || tracker.User() == 0) {
        explained.strip = Strip(kind, 0);
        explained.state = QStringLiteral("nobody is logged in");
        explained.sentence = QStringLiteral("Nobody is logged in. %1 asked for at login.").arg(what);
        return false;
    }
    const RefreshState::Request* last = state.Find(state.last);
    const RefreshState::Request* answered = state.Find(state.answered);
    if (answered) {
        explained.details.push_back(RefreshDetail(QStringLiteral("Last answer"), *answered, nowMs));
    }
    for (const auto& [session, request] : state.requests) {
        if (request.sentMs != 0 && request.answeredMs == 0 && !request.red) {
            explained.details.push_back(RefreshDetail(QStringLiteral("Without an answer"), request, nowMs));
        }
    }
    for (const RefreshState::Push& push : state.pushes) {
        if (push.dueMs > nowMs) {
            explained.details.push_back(
                {QStringLiteral("Push, due"),
                 Joined({Clock(push.dueMs, nowMs),
                         push.count < 0 ? QStringLiteral("all") : QStringLiteral("rights: %1").arg(push.count)})});
        }
    }
    if (answered && answered->red) {
        const Refusal& red = *answered->red;
        explained.strip = Strip(kind, red.step, EnState::Stopped);
        explained.state = OutcomeOf(*answered);
        explained.sentence = log_table::Filled(red.line.row->say, red.line, nowMs) +
                             QStringLiteral(" The values from before remain. Ask again, or log in again.");
        return false;
    }
    if (answered && answered->isGood) {
        explained.strip = Strip(kind, log_table::kStepKept + 1);
        explained.state = OutcomeOf(*answered);
        explained.sentence = QStringLiteral("The last answer was taken at %1.").arg(Clock(answered->answeredMs, nowMs));
        return true;
    }
    const bool isAsked = last && last->sentMs != 0;
    explained.strip = Strip(kind, isAsked ? log_table::kStepAnswered : 0, isAsked ? EnState::Waiting : EnState::Open);
    explained.state = isAsked ? QStringLiteral("no answer yet") : QStringLiteral("not asked");
    explained.sentence =
        isAsked ? QStringLiteral("The request of %1 has no answer yet. Wait for it.").arg(Clock(last->sentMs, nowMs))
                : QStringLiteral("Nothing was asked for yet. %1 asked for at login.").arg(what);
    return false;
}

/// Marks the next step as done or stopped.
void Step(Explanation& explained, EnKind kind, int step, bool isGood) {
    explained.strip = isGood ? Strip(kind, step + 1) : Strip(kind, step, EnState::Stopped);
}

Detail WidgetDetail(const widget_rules::Widget& widget) {
    const widget_rules::Rule* refusing = widget.Refusing();
    Detail group{widget.texts.isEmpty() ? widget.kind : QStringLiteral("%1, %2").arg(widget.kind, widget.texts),
                 refusing ? QStringLiteral("hidden: %1").arg(refusing->name) : QStringLiteral("may be shown"),
                 !refusing,
                 {}};
    bool isReached = true;
    for (const widget_rules::Rule& rule : widget.rules) {
        group.children.push_back({rule.name,
                                  isReached
                                      ? QStringLiteral("%1, needed: %2").arg(rule.actual, rule.expected)
                                      : QStringLiteral("not reached: %1, needed: %2").arg(rule.actual, rule.expected),
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
            shown << (widget.texts.isEmpty() ? widget.kind : QStringLiteral("%1 (%2)").arg(widget.kind, widget.texts))
                         .toLower();
        }
    }
    return shown.isEmpty() ? QStringLiteral("none") : shown.join(QStringLiteral(", "));
}

QJsonArray ToJsonOf(const std::vector<Detail>& details) {
    QJsonArray array;
    for (const Detail& detail : details) {
        QJsonObject object{{QStringLiteral("name"), detail.name}, {QStringLiteral("value"), detail.value}};
        if (!detail.children.empty()) {
            object.insert(QStringLiteral("details"), ToJsonOf(detail.children));
        }
        array.append(object);
    }
    return array;
}

QString NameOf(EnState state) {
    switch (state) {
        case EnState::Done:
            return QStringLiteral("done");
        case EnState::Waiting:
            return QStringLiteral("waiting");
        case EnState::Stopped:
            return QStringLiteral("stopped");
        case EnState::Open:
            break;
    }
    return QStringLiteral("not reached");
}

void AppendText(QString& text, const std::vector<Detail>& details, const QString& indent) {
    for (const Detail& detail : details) {
        text += QStringLiteral("%1%2: %3\n").arg(indent, detail.name, detail.value);
        AppendText(text, detail.children, indent + QStringLiteral("  "));
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
        explained.details.push_back(RefusalDetail(scene, *primary, QStringLiteral("Last refusal")));
    }
    if (ad.red && primary != &*ad.red) {
        explained.details.push_back(RefusalDetail(scene, *ad.red, QStringLiteral("After that")));
    } else if (ad.red && ad.shownCount > 0) {
        explained.details.push_back(RefusalDetail(scene, *ad.red, QStringLiteral("After it was shown")));
    }
    if (ad.last) {
        explained.details.push_back(RequestDetail(scene, *ad.last, QStringLiteral("Last request")));
    }
    if (ad.answered && ad.answered != ad.last) {
        explained.details.push_back(RequestDetail(scene, *ad.answered, QStringLiteral("Last answered request")));
    }
    if (ad.standing && ad.standing != ad.last && ad.standing != ad.answered) {
        explained.details.push_back(RequestDetail(scene, *ad.standing, QStringLiteral("Waiting list")));
    }
    AddLines(explained, &ad.history, localNowMs);
    if (const AdRequest* list = ad.answered ? ad.answered.get() : ad.last.get(); list && !list->ads.empty()) {
        explained.counts =
            QStringLiteral("kept %1 of %2, shown %3").arg(list->KeptCount()).arg(list->ads.size()).arg(ad.shownTotal);
        const AdOffer* first = list->FirstKept();
        explained.image = first ? first->image : list->ads.front().image;
    }
    return explained;
}

QString OutcomeOf(const RefreshState::Request& request) {
    const QString outcome =
        request.red      ? log_table::Filled(request.red->line.row->actual, request.red->line, request.answeredMs)
        : request.isGood ? QStringLiteral("good")
        : request.answeredMs != 0 ? QStringLiteral("answered")
                                  : QStringLiteral("in flight");
    return Joined({ReasonOf(request.why), outcome});
}

Explanation OfRefresh(const CTracker& tracker, qint64 localNowMs) {
    Explanation explained;
    ExplainRequest(explained, tracker, tracker.Rights(), EnKind::Rights, QStringLiteral("Rights are"), localNowMs);
    const auto next = tracker.NextHourlyMs(localNowMs);
    explained.details.push_back(
        {QStringLiteral("Next hourly"),
         next ? QStringLiteral("%1, in %2").arg(Clock(*next, localNowMs), Duration((*next - localNowMs) / kSecondMs))
              : QStringLiteral("the timer does not run")});
    AddLines(explained, &tracker.Rights().history, localNowMs);
    return explained;
}

Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs) {
    Explanation explained;
    const VipStatus& vip = rights.Vip();
    const QString system = vip.isNewSystem ? QStringLiteral("newer") : QStringLiteral("older");
    const bool isMember = (vip.isNewSystem ? vip.newState : vip.state) == kVipStateMember;
    if (ExplainRequest(explained, tracker, tracker.Vip(), EnKind::Vip, QStringLiteral("The VIP status is"),
                       localNowMs)) {
        Step(explained, EnKind::Vip, log_table::kStepConditions, isMember);
        explained.sentence = isMember
                                 ? QStringLiteral("The user is a member in the %1 system.").arg(system)
                                 : QStringLiteral(
                                       "The server answers that the user is no member in the %1 system. Change the "
                                       "user's VIP status on the server.")
                                       .arg(system);
    }
    const QString edition =
        core::environment::IsVelora() ? QStringLiteral("no") : QStringLiteral("no: edition Kestrel");
    explained.details.insert(
        explained.details.begin(),
        {{QStringLiteral("On the newer system"), vip.isNewSystem ? QStringLiteral("yes") : edition},
         {QStringLiteral("State in the older system"), right_text::OldState(vip.state)},
         {QStringLiteral("State in the newer system"), right_text::NewState(vip.newState)},
         {QStringLiteral("Engine status"), right_text::Engine(vip.engine)},
         {QStringLiteral("Grade"), QString::number(vip.grade)},
         {QStringLiteral("Qualified for VIP"), right_text::YesNo(vip.qualification)}});
    AddLines(explained, &tracker.Vip().history, localNowMs);
    return explained;
}

Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs) {
    Explanation explained;
    const bool isListed = rights.Table().contains(right);
    const CPremiumUIAccessData record = CPremiumRights::Record(right);
    const std::vector<widget_rules::Widget> widgets = widget_rules::Of(record, rights.Vip().isNewSystem);
    const bool isTaken =
        ExplainRequest(explained, tracker, tracker.Rights(), EnKind::Widget, QStringLiteral("Rights are"), localNowMs);
    if (!CPremiumRights::HasModule()) {
        explained.strip = Strip(EnKind::Widget, 0);
        explained.sentence = QStringLiteral("The module is not there, so nothing is known about rights.");
    } else if (isTaken && !isListed) {
        Step(explained, EnKind::Widget, log_table::kStepConditions, false);
        explained.sentence = QStringLiteral(
                                 "The server's answer does not name right %1. Add it to the user's rights "
                                 "on the server, then refresh.")
                                 .arg(right);
    } else if (isTaken) {
        Step(explained, EnKind::Widget, log_table::kStepPicture, record.bHasPermission);
        explained.sentence =
            record.bHasPermission
                ? QStringLiteral("The user holds it: %1. Widgets: %2.")
                      .arg(right_text::Activation(record.nActivationType, right_text::EnForm::Word),
                           ShownWidgets(widgets))
                : QStringLiteral(
                      "The server answers that the user does not hold it: %1. Grant it on the server, or "
                      "activate it. Widgets: %2.")
                      .arg(right_text::Activation(record.nActivationType, right_text::EnForm::Word),
                           ShownWidgets(widgets));
    }
    if (isListed) {
        explained.state = Joined({record.bHasPermission ? QStringLiteral("held") : QStringLiteral("not held"),
                                  right_text::Activation(record.nActivationType, right_text::EnForm::Word),
                                  QStringLiteral("%1 days").arg(record.nDaysLeft)});
    } else if (isTaken) {
        explained.state = QStringLiteral("not in the answer");
    }
    std::vector<Detail> groups;
    for (const widget_rules::Widget& widget : widgets) {
        groups.push_back(WidgetDetail(widget));
    }
    AddFields(groups, right_text::Fields(record));
    if (!record.strOtherInfo.isEmpty()) {
        groups.push_back({QStringLiteral("Other info"), right_text::Pretty(record.strOtherInfo)});
    }
    explained.details.insert(explained.details.begin(), groups.begin(), groups.end());
    AddLines(explained, tracker.LinesOf(EnKind::Widget, right), localNowMs);
    return explained;
}

Explanation OfScene(const CTracker& tracker, const CAIChatEntries& entries, ZRAIChatEntryScene scene,
                    qint64 localNowMs) {
    Explanation explained;
    const bool isTaken =
        ExplainRequest(explained, tracker, tracker.Chat(), EnKind::Chat, QStringLiteral("The scenes are"), localNowMs);
    const auto listed = tracker.Scenes().find(scene);
    switch (entries.State(scene)) {
        case EnEntryState::Open:
            Step(explained, EnKind::Chat, log_table::kStepConditions, true);
            explained.state = QStringLiteral("open");
            explained.sentence = QStringLiteral("The server opened scene %1 to this user.").arg(scene);
            break;
        case EnEntryState::ForcedOpen:
            Step(explained, EnKind::Chat, log_table::kStepConditions, true);
            explained.state = QStringLiteral("forced open");
            explained.sentence = QStringLiteral("The override opens all scenes. Remove it to see the server's answer.");
            break;
        case EnEntryState::ForcedClosed:
            Step(explained, EnKind::Chat, log_table::kStepConditions, false);
            explained.state = QStringLiteral("forced closed");
            explained.sentence =
                QStringLiteral("The override closes all scenes. Remove it to see the server's answer.");
            break;
        case EnEntryState::NoModule:
            explained.strip = Strip(EnKind::Chat, 0);
            explained.state = QStringLiteral("no module");
            explained.sentence = QStringLiteral("The module is not there, so no entry is open.");
            break;
        case EnEntryState::NobodyLoggedIn:
            explained.strip = Strip(EnKind::Chat, 0);
            explained.state = QStringLiteral("nobody is logged in");
            explained.sentence = QStringLiteral("Nobody is logged in. The scenes are asked for at login.");
            break;
        case EnEntryState::ClosedByServer:
            if (!isTaken) {
                break;
            }
            Step(explained, EnKind::Chat, log_table::kStepConditions, false);
            explained.state = QStringLiteral("closed");
            explained.sentence = (listed == tracker.Scenes().end()
                                      ? QStringLiteral("The server's answer does not name scene %1.")
                                      : QStringLiteral("The server answered that scene %1 is not open to this user."))
                                     .arg(scene) +
                                 QStringLiteral(" Open it on the server, then log in again.");
            break;
    }
    for (const auto& [number, isOpen] : tracker.Scenes()) {
        explained.details.push_back({QStringLiteral("Scene %1 in the answer").arg(number),
                                     isOpen ? QStringLiteral("open") : QStringLiteral("not open to all"),
                                     isOpen,
                                     {}});
    }
    AddLines(explained, tracker.LinesOf(EnKind::Chat, scene), localNowMs);
    return explained;
}

Explanation OfOpen(const ChatOpen& open) {
    Explanation explained;
    const bool isAnswered = open.httpCode.has_value();
    const bool isGood = isAnswered && *open.httpCode >= 200 && *open.httpCode < 400;
    const QString reasons = open.reasons.join(QStringLiteral(", "));
    if (!open.isLoaded) {
        explained.strip = Strip(EnKind::ChatOpen, 1);
        explained.state = QStringLiteral("no new load");
        explained.sentence = QStringLiteral(
            "The page was kept: scene, parameters and user are those of the last load, and the window was not closed.");
        return explained;
    }
    explained.strip = isGood       ? Strip(EnKind::ChatOpen, 3)
                      : isAnswered ? Strip(EnKind::ChatOpen, 2, EnState::Stopped)
                                   : Strip(EnKind::ChatOpen, 2, EnState::Waiting);
    explained.state = open.isPreload ? QStringLiteral("preload") : QStringLiteral("new load");
    explained.sentence =
        QStringLiteral("The page was loaded anew: %1.").arg(reasons) +
        (isGood       ? QString()
         : isAnswered ? QStringLiteral(" The load ended with code %1. Check the page's address.").arg(*open.httpCode)
                      : QStringLiteral(" It has not ended yet."));
    explained.details = {
        {QStringLiteral("Address"), open.url},
        {QStringLiteral("Flag needChangeSessionId"),
         open.url.contains(QLatin1String("needChangeSessionId=1")) ? QStringLiteral("1") : QStringLiteral("0")},
        {QStringLiteral("Why"), reasons}};
    return explained;
}

}  // namespace explanation

QJsonObject Explanation::ToJson() const {
    QJsonArray steps;
    for (const StripStep& step : strip) {
        steps.append(QJsonObject{{QStringLiteral("step"), step.name},
                                 {QStringLiteral("state"), explanation::NameOf(step.state)}});
    }
    QJsonObject object{{QStringLiteral("state"), state},
                       {QStringLiteral("sentence"), sentence},
                       {QStringLiteral("steps"), steps},
                       {QStringLiteral("details"), explanation::ToJsonOf(details)}};
    if (!counts.isEmpty()) {
        object.insert(QStringLiteral("counts"), counts);
    }
    return object;
}

QString Explanation::ToText() const {
    QStringList steps;
    for (const StripStep& step : strip) {
        steps << QStringLiteral("%1 (%2)").arg(step.name, explanation::NameOf(step.state));
    }
    QString text = steps.join(QStringLiteral(" > ")) + QLatin1Char('\n') + sentence + QLatin1Char('\n');
    explanation::AppendText(text, details, QString());
    return text;
}
