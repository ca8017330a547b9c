#include "workbench/diagnosis/Explanation.h"

#include <algorithm>

#include "AIChatEntries.h"
#include "PremiumRights.h"

using namespace log_table;

namespace {

constexpr qint64 kSecondMs = 1'000;
constexpr qint64 kHourMs = 3'600'000;
/// The step after "taken" of rights, VIP status and chat.
constexpr int kAfterTaken = kStepKept + 1;
/// The year 9999. Later times are treated as never.
constexpr qint64 kLastSecond = 253'402'300'799;

enum class EnState { Done, Waiting, Stopped, Open };

/// Steps before `passed` are done; `next` is the state of the step after them.
struct Verdict {
    int passed;
    EnState next;
    QString state;
    QString sentence;
};

Verdict NotAnswered(qint64 sentMs, qint64 nowMs) {
    return {kStepAnswered, EnState::Waiting, "no answer yet"_q,
            "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(sentMs, nowMs))};
}

Explanation Explained(EnKind kind, const Verdict& verdict, const QStringList& details) {
    static const char* const kSigns[] = {"\u2713 ", "\u2026 ", "\u2717 ", "\u2013 "};
    Explanation explained{{}, verdict.state, verdict.sentence, details, {}, {}};
    const QStringList names = StepNames(kind);
    for (int place = 0; place < names.size(); ++place) {
        const bool isNext = place == verdict.passed;
        const EnState step = place < verdict.passed ? EnState::Done : isNext ? verdict.next : EnState::Open;
        explained.steps << QString::fromUtf8(kSigns[int(step)]) + names[place];
    }
    return explained;
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

QString In(qint64 timeMs, qint64 nowMs) {
    return "%1, in %2"_q.arg(Clock(timeMs, nowMs), Duration((timeMs - nowMs + kSecondMs - 1) / kSecondMs));
}

/// The newest first.
QStringList LinesOf(const TrackerState& state, EnKind kind, const AdSlot& subject, qint64 nowMs) {
    QStringList lines;
    for (const ParsedLine& line : state.lines.value({kind, subject})) {
        lines.prepend(Line(1, Clock(line.timeMs, nowMs), line.text));
    }
    return lines.isEmpty() ? lines : QStringList("The module's lines:"_q) + lines;
}

/// The check with both its sides; of an end without a check what ended it. Times in the line are on the server's clock.
QStringList RefusalLines(const Refusal& refusal, const QString& title, qint64 nowMs, qint64 serverNowMs) {
    const auto filled = [&](const char* text) { return Filled(text, refusal.line, serverNowMs); };
    const Row& row = *refusal.line.row;
    const bool isCheck = *row.check != '\0';
    const QString time = Clock(refusal.line.timeMs, nowMs);
    QStringList lines{Line(0, title, Joined({time, filled(isCheck ? row.check : row.say)}), false)};
    if (isCheck) {
        lines << Line(1, "Found"_q, filled(row.actual)) << Line(1, "Needed"_q, filled(row.expected));
    }
    return lines;
}

// ---- ads

/// An ad position with both clocks.
struct AdScene {
    const TrackerState& state;
    const AdState& ad;
    bool isBanner;
    qint64 nowMs;
    qint64 serverNowMs;
};

/// The second of server time from which a refusal passes without any other change; nothing if no time is enough.
std::optional<qint64> FreeFromS(const AdState& ad, const Refusal& refusal) {
    std::optional<qint64> free;
    const auto consider = [&](double second, const QString& id) {
        const auto start = qint64(std::clamp(second, 0.0, kLastSecond + 1.0));
        const AdOffer offer = ad.Offer(id);
        if (start <= std::min({kLastSecond, offer.endS.value_or(start), offer.expireS.value_or(start)})) {
            free = std::min(free.value_or(start), start);
        }
    };
    const ParsedLine& line = refusal.line;
    const bool isAfter = line.row->free == EnFree::AfterSum;
    if (isAfter || line.row->free == EnFree::Sum) {
        consider(double(line.Number(1)) + double(line.Number(2)) + (isAfter ? 1 : 0), line.values.value(5));
    }
    for (const ParsedLine& drop : refusal.drops) {
        if (drop.Number(0) < drop.Number(1)) {
            consider(double(std::max(drop.Number(1), ad.nextAskS)), drop.values[4]);
        }
    }
    return free;
}

QString Occasion(const AdScene& scene) {
    const auto push = scene.ad.pushesMs.upper_bound(scene.serverNowMs);
    return push != scene.ad.pushesMs.end() ? "A push makes it ask again at %1."_q.arg(In(*push, scene.serverNowMs))
           : scene.isBanner ? "Its page asks again when it is opened, and after a login or a change of the language."_q
           : scene.ad.standing ? "It is tried again at a change of the tab."_q
                               : "A new list comes with a login, a change of the language or a push."_q;
}

/// The sentence about a refusal, or about the end of an ad or of its list.
QString Sentence(const AdScene& scene, const Refusal& refusal) {
    const Row& row = *refusal.line.row;
    const QString told = Filled(row.say, refusal.line, scene.serverNowMs);
    if (*row.check == '\0') {
        const QString end = scene.ad.standing ? "The last ad ended at %1 %2. "_q
                                              : "Nothing is waiting: the last list ended at %1 %2. "_q;
        return end.arg(Clock(refusal.line.timeMs, scene.nowMs), told) + Occasion(scene);
    }
    const auto free = FreeFromS(scene.ad, refusal);
    const QString wait = free && *free * kSecondMs > scene.serverNowMs
                             ? " Wait until %1. "_q.arg(In(*free * kSecondMs, scene.serverNowMs))
                         : free                         ? " This no longer refuses it. "_q
                         : row.free == EnFree::AfterSum ? " Its own window ends before, so waiting does not help. "_q
                                                        : " "_q;
    return told + wait + Occasion(scene);
}

Verdict VerdictOfShown(const AdScene& scene) {
    const AdState& ad = scene.ad;
    QStringList ids = scene.isBanner ? QStringList() : QStringList(ad.shownAd);
    const auto strips = scene.isBanner && ad.made ? ad.made->Kept() : std::vector<AdOffer>();
    bool isBare = !strips.empty();
    for (const AdOffer& strip : strips) {
        ids << strip.id;
        isBare = isBare && scene.state.failedPictures.count(strip.image) != 0;
    }
    const QString shown = Clock(ad.shownMs, scene.nowMs) + (scene.isBanner ? ": ads "_q : ": ad "_q) + ids.join(", "_q);
    if (isBare) {
        return {
            kStepPicture, EnState::Stopped, "shown, without pictures"_q,
            "It is there since %1, but none of its pictures came. Check their addresses on the server."_q.arg(shown)};
    }
    return {kStepShown + 1, EnState::Open, "shown"_q, "Shown since %1."_q.arg(shown)};
}

Verdict VerdictOf(const AdScene& scene) {
    const AdState& ad = scene.ad;
    const bool isTried = ad.red && !(ad.red->leavesRest && ad.red->step == kStepKept);
    if (ad.shownCount > 0) {
        return VerdictOfShown(scene);
    }
    if (!ad.last && !isTried) {
        return {0, EnState::Open, "not asked"_q,
                "Nothing was asked for yet. "_q +
                    (scene.isBanner ? "A page that shows this banner asks when it is opened."_q : Occasion(scene))};
    }
    if (ad.isLoading) {
        return {kStepPicture, EnState::Waiting, "loading its picture"_q,
                "Its picture is loading. It is shown when the picture is there."_q};
    }
    if (ad.last && ad.last->answeredMs == 0 && ad.last->refusal.isEmpty()) {
        return NotAnswered(ad.last->sentMs, scene.nowMs);
    }
    if (!ad.red) {
        return {kStepKept, EnState::Waiting, "answered"_q, "The answer came, and is being checked."_q};
    }
    const QString check = QString::fromUtf8(ad.red->line.row->check);
    const bool wasShown = check.isEmpty() && ad.red->step == kStepShown;
    const QString state = wasShown          ? "was shown, ended"_q
                          : check.isEmpty() ? "list taken away"_q
                                            : "refused: "_q + check;
    return {wasShown ? kStepShown + 1 : ad.red->step, EnState::Stopped, state, Sentence(scene, *ad.red)};
}

QStringList RequestLines(const AdScene& scene, const AdRequest& request, const QString& title) {
    const bool isAnswered = request.answeredMs != 0;
    const QString answered = isAnswered ? "answered "_q + Clock(request.answeredMs, scene.nowMs) : QString();
    QStringList lines{Line(0, title, Joined({Clock(request.sentMs, scene.nowMs), answered, request.refusal}))};
    for (const AdOffer& ad : request.ads) {
        const ParsedLine* drop = request.DropOf(ad);
        const QString why = drop ? Filled(drop->row->say, *drop, scene.serverNowMs) : request.refusal;
        lines << Line(1, "Ad %1"_q.arg(ad.id), why.isEmpty() ? "kept"_q : "not kept: "_q + why, why.isEmpty());
    }
    return lines;
}

// ---- rights, VIP status and chat

/// The steps up to "taken". If all are done, the answer explains the subject.
Verdict VerdictOf(const TrackerState& state, const RefreshState& refreshes, qint64 nowMs) {
    const RefreshState::Request answered = refreshes.requests.value(refreshes.answered);
    if (state.isLoggedOut || state.User() == 0) {
        return {0, EnState::Open, "nobody is logged in"_q, "Nobody is logged in. This is asked for at login."_q};
    }
    if (answered.red) {
        return {answered.red->step, EnState::Stopped, explanation::OutcomeOf(answered),
                Filled(answered.red->line.row->say, answered.red->line, nowMs) +
                    " The values from before remain. Ask again, or log in again."_q};
    }
    if (answered.isGood) {
        return {kAfterTaken, EnState::Open, explanation::OutcomeOf(answered),
                "The last answer was taken at %1."_q.arg(Clock(answered.answeredMs, nowMs))};
    }
    if (!refreshes.requests.isEmpty()) {
        return NotAnswered(refreshes.requests.last().sentMs, nowMs);
    }
    return {0, EnState::Open, "not asked"_q, "Nothing was asked for yet. This is asked for at login."_q};
}

/// Replaces the verdict on an answer that was taken: `step` comes after it.
void Judge(Verdict& verdict, int step, bool isGood, const QString& sentence) {
    verdict = {isGood ? step + 1 : step, isGood ? EnState::Open : EnState::Stopped, verdict.state, sentence};
}

/// The refusal of the last answer, the requests in flight, the pushes that wait, and the subject's lines.
QStringList RefreshLines(const TrackerState& state, const RefreshState& refreshes, EnKind kind, const AdSlot& subject,
                         qint64 nowMs) {
    const auto red = refreshes.requests.value(refreshes.answered).red;
    QStringList lines = red ? RefusalLines(*red, "Last refusal"_q, nowMs, nowMs) : QStringList();
    for (auto request = refreshes.requests.begin(); request != refreshes.requests.end(); ++request) {
        if (request->answeredMs == 0) {
            lines << Line(0, "Without an answer"_q,
                          Joined({Clock(request->sentMs, nowMs), request->why, "session %1"_q.arg(request.key())}));
        }
    }
    for (auto push = refreshes.pushes.upper_bound(nowMs); push != refreshes.pushes.end(); ++push) {
        const QString count = push->second < 0 ? "all"_q : "rights: %1"_q.arg(push->second);
        lines << Line(0, "Push, due"_q, Joined({Clock(push->first, nowMs), count}));
    }
    return lines + LinesOf(state, kind, subject, nowMs);
}

/// "3 · full": the number with its word, if it has one.
QString Worded(int number, const char* words) {
    return Joined({QString::number(number), QString::fromUtf8(words).split(QLatin1Char(',')).value(number)});
}

QString Activation(int type) {
    return Worded(type, "not said,limited time,frozen,full,empty,not activated,ready");
}

struct Rule {
    QString name;
    QString actual;
    QString expected;
    bool passes;
};

Rule TypeRule(int type, const QVector<int>& allowed) {
    QStringList words;
    std::transform(allowed.begin(), allowed.end(), std::back_inserter(words), Activation);
    return {"activation type"_q, Activation(type), words.join(", "_q), allowed.contains(type)};
}

/// The first rule that refuses hides the widget.
QStringList WidgetLines(const QString& name, const std::vector<Rule>& rules) {
    const auto refusing = std::find_if(rules.begin(), rules.end(), [](const Rule& rule) { return !rule.passes; });
    const bool isShown = refusing == rules.end();
    QStringList lines{Line(0, name, isShown ? "may be shown"_q : "hidden: "_q + refusing->name, isShown)};
    for (auto rule = rules.begin(); rule != rules.end(); ++rule) {
        const QString values = "%1, needed: %2"_q.arg(rule->actual, rule->expected);
        lines << (rule <= refusing ? Line(1, rule->name, values, rule->passes)
                                   : Line(1, rule->name, "not reached: "_q + values));
    }
    return lines;
}

}  // namespace

namespace explanation {

QStringList WidgetsOf(const CPremiumUIAccessData& record, bool isNewSystem) {
    const std::tuple<QString, QString, QString> textSets[] = {
        {"main texts"_q, record.strMainTitle, record.strMainBtn},
        {"detail texts"_q, record.strDetailTitle, record.strDetailBtn},
        {"second detail texts"_q, record.strDetailSubTitle, record.strDetailSubBtn},
    };
    const int type = record.nActivationType;
    const QString from = Worded(record.nActivationSource, "not said,premium rule,VIP rule,private customer");
    const Rule older{"newer system"_q, isNewSystem ? "yes"_q : "no"_q, "no"_q, !isNewSystem};
    const Rule source{"activation source"_q, from, "VIP rule"_q, record.nActivationSource == ZRPremiumSourceVip};
    const Rule known{"activation type"_q, Activation(type), "any but 0"_q, type != 0};
    const Rule layout{"UI type"_q, record.strUIType, "D"_q, record.strUIType == QLatin1String("D")};
    const QVector<int> masks{ZRPremiumActivationFrozen, ZRPremiumActivationNotActivated, ZRPremiumActivationReady};
    const Rule masked = TypeRule(type, masks);
    const Rule advertised = TypeRule(type, masks + QVector<int>{ZRPremiumActivationLimitedTime});
    QStringList lines = WidgetLines("Icon"_q, {older, source, known}) +
                        WidgetLines("Tag"_q, {source, TypeRule(type, {ZRPremiumActivationFull})});
    for (const auto& [set, title, button] : textSets) {
        const QString texts = "title \u201C%1\u201D, button \u201C%2\u201D"_q.arg(title, button);
        const Rule one{"texts"_q, texts, "button text"_q, !button.isEmpty()};
        const Rule both{"texts"_q, texts, "title and button text"_q, !button.isEmpty() && !title.isEmpty()};
        lines += WidgetLines("Banner (%1)"_q.arg(set), {layout, advertised, both}) +
                 WidgetLines("Locked Mask (%1)"_q.arg(set), {layout, masked, both}) +
                 WidgetLines("Exclusive Mask (%1)"_q.arg(set), {layout, masked, one});
    }
    return lines;
}

Explanation OfAd(const CTracker& tracker, const AdSlot& slot, qint64 localNowMs) {
    const TrackerState& state = tracker.State();
    const AdState ad = state.ads.value(slot);
    const AdScene scene{state, ad, slot.type == kTypeBanner, localNowMs, tracker.ToServerMs(localNowMs)};
    Explanation explained = Explained(EnKind::Ad, VerdictOf(scene), {});
    QStringList& details = explained.details;
    if (ad.red) {
        const QString title = ad.shownCount > 0 ? "After it was shown"_q : "Last refusal"_q;
        details << RefusalLines(*ad.red, title, localNowMs, scene.serverNowMs);
    }
    if (ad.after) {
        details << RefusalLines(*ad.after, "After that"_q, localNowMs, scene.serverNowMs);
    }
    if (ad.last) {
        details << RequestLines(scene, *ad.last, "Last request"_q);
    }
    if (ad.standing && ad.standing != ad.last) {
        details << RequestLines(scene, *ad.standing, "Waiting list"_q);
    }
    details << LinesOf(state, EnKind::Ad, slot, localNowMs);
    if (const AdState::Request list = ad.answered ? ad.answered : ad.last; list && !list->ads.empty()) {
        const auto kept = list->Kept();
        explained.counts = "kept %1 of %2, shown %3"_q.arg(kept.size()).arg(list->ads.size()).arg(ad.shownTotal);
        const QString image = kept.empty() ? list->ads.front().image : kept.front().image;
        // A picture that the module loads, or that failed, is not requested once more.
        explained.image = ad.isLoading || state.failedPictures.count(image) != 0 ? QString() : image;
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
    const TrackerState& state = tracker.State();
    const auto from = state.timerFrom;
    const qint64 next = from.value_or(0) + ((localNowMs - from.value_or(0)) / kHourMs + 1) * kHourMs;
    return Explained(EnKind::Rights, VerdictOf(state, state.rights, localNowMs),
                     QStringList(Line(0, "Next hourly"_q, from ? In(next, localNowMs) : "the timer does not run"_q)) +
                         RefreshLines(state, state.rights, EnKind::Rights, {}, localNowMs));
}

Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs) {
    const TrackerState& state = tracker.State();
    const VipStatus& vip = rights.Vip();
    const bool isMember = (vip.isNewSystem ? vip.newState : vip.state) == kVipStateMember;
    const QString sentence = isMember ? "The user is a member in the %1 system."_q
                                      : "The server answers that the user is no member in the %1 system. Change the "
                                        "user's VIP status on the server."_q;
    Verdict verdict = VerdictOf(state, state.vip, localNowMs);
    if (verdict.passed == kAfterTaken) {
        Judge(verdict, kAfterTaken, isMember, sentence.arg(vip.isNewSystem ? "newer"_q : "older"_q));
    }
    return Explained(EnKind::Vip, verdict, RefreshLines(state, state.vip, EnKind::Vip, {}, localNowMs));
}

Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs) {
    const TrackerState& state = tracker.State();
    const CPremiumUIAccessData record = CPremiumRights::Record(right);
    const QString activation = Activation(record.nActivationType).section(" \u00B7 "_q, -1);
    const bool isHeld = record.bHasPermission;
    const bool isListed = rights.Table().contains(right);
    const QStringList widgets = WidgetsOf(record, rights.Vip().isNewSystem);
    static const QRegularExpression frame("^. |: may be shown$"_q);
    QStringList shown = widgets.filter(": may be shown"_q);
    shown.replaceInStrings(frame, QString());
    Verdict verdict = VerdictOf(state, state.rights, localNowMs);
    const bool isTaken = verdict.passed == kAfterTaken;
    if (isListed) {
        verdict.state = Joined({isHeld ? "held"_q : "not held"_q, activation, "%1 days"_q.arg(record.nDaysLeft)});
    }
    if (!CPremiumRights::HasModule()) {
        verdict = {0, EnState::Open, verdict.state, "The module is not there, so nothing is known about rights."_q};
    } else if (isTaken && !isListed) {
        verdict.state = "not in the answer"_q;
        Judge(verdict, kAfterTaken, false,
              "The server's answer does not name right %1. Add it to the user's rights on the server, then refresh."_q
                  .arg(right));
    } else if (isTaken) {
        const QString sentence = isHeld ? "The user holds it: %1. Widgets: %2."_q
                                        : "The server answers that the user does not hold it: %1. Grant it on the "
                                          "server, or activate it. Widgets: %2."_q;
        Judge(verdict, kAfterTaken + 1, isHeld,
              sentence.arg(activation, shown.isEmpty() ? "none"_q : shown.join(", "_q)));
    }
    return Explained(EnKind::Widget, verdict,
                     widgets + RefreshLines(state, state.rights, EnKind::Widget, {right}, localNowMs));
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
    const TrackerState& state = tracker.State();
    const EnEntryState entry = entries.State(scene);
    const QString closed = state.scenes.count(scene) != 0
                               ? "The server answered that scene %1 is not open to this user."_q
                               : "The server's answer does not name scene %1."_q;
    Verdict verdict = VerdictOf(state, state.chat, localNowMs);
    for (const auto& [known, word, sentence] : kRows) {
        if (known == entry && (verdict.passed == kAfterTaken || entry != EnEntryState::ClosedByServer)) {
            verdict.state = QString::fromUtf8(word);
            Judge(verdict, kAfterTaken, CAIChatEntries::IsOpen(entry),
                  QString::fromUtf8(sentence).replace("%2"_q, closed).replace("%1"_q, QString::number(scene)));
        }
    }
    return Explained(EnKind::Chat, verdict, RefreshLines(state, state.chat, EnKind::Chat, {scene}, localNowMs));
}

Explanation OfOpen(const ChatOpen& open) {
    if (!open.isLoaded) {
        return Explained(EnKind::ChatOpen,
                         {1, EnState::Open, "no new load"_q,
                          "The page was kept: scene, parameters and user are those of the last load, and the window "
                          "was not closed."_q},
                         {});
    }
    const int code = open.httpCode.value_or(0);
    const bool isGood = code >= 200 && code < 400;
    const QString end = isGood          ? QString()
                        : open.httpCode ? " The load ended with code %1. Check the page's address."_q.arg(code)
                                        : " It has not ended yet."_q;
    const bool isNewSession = open.url.contains(QLatin1String("needChangeSessionId=1"));
    return Explained(
        EnKind::ChatOpen,
        {isGood ? 3 : 2, open.httpCode ? EnState::Stopped : EnState::Waiting,
         open.isPreload ? "preload"_q : "new load"_q,
         "The page was loaded anew: %1."_q.arg(open.reasons.join(", "_q)) + end},
        {Line(0, "Address"_q, open.url), Line(0, "Flag needChangeSessionId"_q, isNewSession ? "1"_q : "0"_q)});
}

}  // namespace explanation
