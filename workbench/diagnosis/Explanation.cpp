#include "workbench/diagnosis/Explanation.h"

#include <algorithm>

#include "AIChatEntries.h"
#include "PremiumRights.h"
#include "core/environment.h"

using namespace log_table;

namespace {

constexpr qint64 kSecondMs = 1'000;
constexpr qint64 kHourMs = 3'600'000;
/// The year 9999. Later times are treated as never.
constexpr qint64 kLastSecond = 253'402'300'799;

enum class EnState { Done, Waiting, Stopped, Open };

/// Steps before `passed` are done; `next` is the state of the step after them.
void Tell(Explanation& explained, EnKind kind, int passed, EnState next, const QString& state,
          const QString& sentence) {
    static const char* const kSigns[] = {"\u2713 ", "\u2026 ", "\u2717 ", "\u2013 "};
    explained.steps.clear();
    const QStringList names = StepNames(kind);
    for (int place = 0; place < names.size(); ++place) {
        const EnState step = place < passed ? EnState::Done : place == passed ? next : EnState::Open;
        explained.steps << QString::fromUtf8(kSigns[int(step)]) + names[place];
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

QString In(qint64 timeMs, qint64 nowMs) {
    return "%1, in %2"_q.arg(Clock(timeMs, nowMs), Duration((timeMs - nowMs + kSecondMs - 1) / kSecondMs));
}

void AddLines(Explanation& explained, const CTracker& tracker, EnKind kind, const AdSlot& subject, qint64 nowMs) {
    const auto found = tracker.State().lines.find({kind, subject});
    if (found != tracker.State().lines.end()) {
        explained.details << "The module's lines:"_q;
        std::transform(found->second.rbegin(), found->second.rend(), std::back_inserter(explained.details),
                       [nowMs](const ParsedLine& line) { return Line(1, Clock(line.timeMs, nowMs), line.text); });
    }
}

// ---- ads

/// An ad position with both clocks. `strips` are the ads of the visible banner.
struct AdScene {
    const AdSlot& slot;
    const AdState& ad;
    qint64 nowMs;
    qint64 serverNowMs;
    bool isBanner = slot.type == kTypeBanner;
    std::vector<const AdOffer*> strips = isBanner && ad.made ? ad.made->Kept() : std::vector<const AdOffer*>();
};

/// The ad that a line is about; null if its list was not recorded.
const AdOffer* OfferOf(const AdState& ad, const QString& id) {
    for (const AdState::Request& list : {ad.standing, ad.answered}) {
        for (size_t index = 0; list && index < list->ads.size(); ++index) {
            if (list->ads[index].id == id) {
                return &list->ads[index];
            }
        }
    }
    return nullptr;
}

bool Lasts(const AdOffer* offer, qint64 second) {
    return !offer || (second <= offer->endS.value_or(second) && second <= offer->expireS.value_or(second));
}

/// The second of server time from which a refusal passes without any other change; nothing if no time is enough.
std::optional<qint64> FreeFromS(const AdState& ad, const Refusal& refusal) {
    const ParsedLine& line = refusal.line;
    const bool isAfter = line.row->free == EnFree::AfterSum;
    if (isAfter || line.row->free == EnFree::Sum) {
        const double sum = std::max(0.0, double(line.Number(1)) + double(line.Number(2)) + (isAfter ? 1 : 0));
        const bool isNever = sum > kLastSecond || (isAfter && !Lasts(OfferOf(ad, line.values.value(5)), qint64(sum)));
        return isNever ? std::nullopt : std::make_optional(qint64(sum));
    }
    std::optional<qint64> free;
    for (const ParsedLine& drop : refusal.drops) {
        const qint64 start = std::max(drop.Number(1), ad.nextAskS);
        const bool isEarly = drop.Number(0) < drop.Number(1);
        if (isEarly && start <= kLastSecond && Lasts(OfferOf(ad, drop.values[4]), start)) {
            free = std::min(free.value_or(start), start);
        }
    }
    return free;
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
    const QString told = Told(scene, row.say, refusal);
    if (*row.check == '\0') {
        const QString end = scene.ad.standing ? "The last ad ended at %1 %2. "_q
                                              : "Nothing is waiting: the last list ended at %1 %2. "_q;
        return end.arg(Clock(refusal.line.timeMs, scene.nowMs), refusal.reason.isEmpty() ? told : refusal.reason) +
               Occasion(scene);
    }
    const auto free = FreeFromS(scene.ad, refusal);
    const QString wait = free && *free * kSecondMs > scene.serverNowMs
                             ? " Wait until %1. "_q.arg(In(*free * kSecondMs, scene.serverNowMs))
                         : free                         ? " This no longer refuses it. "_q
                         : row.free == EnFree::AfterSum ? " Its own window ends before, so waiting does not help. "_q
                                                        : " "_q;
    return told + wait + Occasion(scene);
}

void TellAd(Explanation& explained, const AdScene& scene) {
    const AdState& ad = scene.ad;
    QStringList ids = scene.isBanner ? QStringList() : QStringList(ad.shownAd);
    bool isBare = !scene.strips.empty();
    for (const AdOffer* strip : scene.strips) {
        ids << strip->id;
        isBare = isBare && ad.failedPictures.count(strip->image) != 0;
    }
    const QString shown = Clock(ad.shownMs, scene.nowMs) + (scene.isBanner ? ": ads "_q : ": ad "_q) + ids.join(", "_q);
    if (ad.shownCount > 0 && isBare) {
        Tell(explained, EnKind::Ad, kStepPicture, EnState::Stopped, "shown, without pictures"_q,
             "It is there since %1, but none of its pictures came. Check their addresses on the server."_q.arg(shown));
    } else if (ad.shownCount > 0) {
        Tell(explained, EnKind::Ad, kStepShown + 1, EnState::Open, "shown"_q, "Shown since %1."_q.arg(shown));
    } else if (!ad.last && (!ad.red || (ad.red->leavesRest && ad.red->step == kStepKept))) {
        Tell(explained, EnKind::Ad, 0, EnState::Open, "not asked"_q,
             "Nothing was asked for yet. "_q +
                 (scene.isBanner ? "A page that shows this banner asks when it is opened."_q : Occasion(scene)));
    } else if (ad.isLoading) {
        Tell(explained, EnKind::Ad, kStepPicture, EnState::Waiting, "loading its picture"_q,
             "Its picture is loading. It is shown when the picture is there."_q);
    } else if (ad.last && ad.last->answeredMs == 0 && ad.last->refusal.isEmpty()) {
        Tell(explained, EnKind::Ad, kStepAnswered, EnState::Waiting, "no answer yet"_q,
             "The request of %1 has no answer yet. Wait for it."_q.arg(Clock(ad.last->sentMs, scene.nowMs)));
    } else if (ad.red) {
        const QString check = QString::fromUtf8(ad.red->line.row->check);
        const bool wasShown = check.isEmpty() && ad.red->step == kStepShown;
        Tell(explained, EnKind::Ad, wasShown ? kStepShown + 1 : ad.red->step, EnState::Stopped,
             wasShown          ? "was shown, ended"_q
             : check.isEmpty() ? "list taken away"_q
                               : "refused: "_q + check,
             Sentence(scene, *ad.red));
    } else {
        Tell(explained, EnKind::Ad, kStepKept, EnState::Waiting, "answered"_q,
             "The answer came, and is being checked."_q);
    }
}

void AddRefusal(Explanation& explained, const AdScene& scene, const Refusal& refusal, const QString& title) {
    const Row& row = *refusal.line.row;
    const QString refused = QString::fromUtf8(row.check);
    if (refused.isEmpty()) {
        explained.details << Line(0, title, Sentence(scene, refusal));
        return;
    }
    explained.details << Line(0, title, Joined({Clock(refusal.line.timeMs, scene.nowMs), refused}), false)
                      << Line(1, "Found"_q, Told(scene, row.actual, refusal))
                      << Line(1, "Needed"_q, Told(scene, row.expected, refusal));
    // The checks of the step in the module's order. A second check of the conditions can stop at one of another step.
    static const QRegularExpression ofBanner("anner"_q);
    static const QRegularExpression ofPopup("opup|ShowAreas|AdId is null"_q);
    QStringList checks;
    for (const Row& one : All()) {
        const bool isOther = QString::fromUtf8(one.text).contains(scene.isBanner ? ofPopup : ofBanner);
        if (one.kind == EnKind::Ad && (one.event == EnEvent::Refused || one.event == EnEvent::Ignored) && !isOther &&
            one.step == (refusal.step == kStepShown ? int(kStepConditions) : refusal.step)) {
            checks << QString::fromUtf8(one.check);
        }
    }
    checks << refused;
    checks.removeDuplicates();
    for (int index = 0, place = checks.indexOf(refused); index < checks.size(); ++index) {
        explained.details << (index < place    ? Line(1, checks[index], "passed"_q, true)
                              : index == place ? Line(1, checks[index], "refused"_q, false)
                                               : Line(1, checks[index], "not reached"_q));
    }
}

void AddRequest(Explanation& explained, const AdScene& scene, const AdRequest& request, const QString& title) {
    const auto clock = [&scene](std::optional<qint64> second) {
        return second ? Clock(*second * kSecondMs, scene.serverNowMs) : "not said"_q;
    };
    const QString answered =
        request.answeredMs == 0 ? QString() : "answered "_q + Clock(request.answeredMs, scene.nowMs);
    const QStringList facts{Clock(request.sentMs, scene.nowMs),
                            request.path,
                            request.askedFor.join(", "_q),
                            request.id,
                            answered,
                            request.refusal};
    explained.details << Line(0, title, Joined(facts));
    for (const AdOffer& ad : request.ads) {
        const ParsedLine* drop = request.DropOf(ad);
        const QString why = drop ? Filled(drop->row->say, *drop, scene.serverNowMs) : request.refusal;
        const QString window = "%1 \u2013 %2, expires %3"_q.arg(clock(ad.startS), clock(ad.endS), clock(ad.expireS));
        const bool isKept = why.isEmpty();
        explained.details << Line(1, "Ad %1"_q.arg(ad.id), isKept ? "kept"_q : "not kept: "_q + why, isKept)
                          << Line(2, "Window"_q, window);
        if (scene.ad.failedPictures.count(ad.image) != 0) {
            explained.details << Line(2, "Picture failed"_q, ad.image, false);
        }
    }
}

// ---- rights, VIP status and chat

/// Explains the steps up to "taken". Returns true if all are done, so that the answer explains the subject.
bool TellRequests(Explanation& explained, const CTracker& tracker, const RefreshState& state, EnKind kind,
                  const AdSlot& subject, qint64 nowMs) {
    const bool isLoggedOut = tracker.State().isLoggedOut || tracker.State().User() == 0;
    const RefreshState::Request* answered = state.Find(state.answered);
    for (const auto& [session, request] : state.requests) {
        const QString name = request.answeredMs == 0 ? "Without an answer"_q : "Last answer"_q;
        const QString time = Clock(std::max(request.sentMs, request.answeredMs), nowMs);
        if (request.answeredMs == 0 || &request == answered) {
            explained.details << Line(0, name,
                                      Joined({time, explanation::OutcomeOf(request), "session %1"_q.arg(session)}));
        }
    }
    for (auto push = state.pushes.upper_bound(nowMs); push != state.pushes.end(); ++push) {
        const QString count = push->second < 0 ? "all"_q : "rights: %1"_q.arg(push->second);
        explained.details << Line(0, "Push, due"_q, Joined({Clock(push->first, nowMs), count}));
    }
    AddLines(explained, tracker, kind, subject, nowMs);
    if (isLoggedOut) {
        Tell(explained, kind, 0, EnState::Open, "nobody is logged in"_q,
             "Nobody is logged in. This is asked for at login."_q);
    } else if (answered && answered->red) {
        Tell(explained, kind, answered->red->step, EnState::Stopped, explanation::OutcomeOf(*answered),
             Filled(answered->red->line.row->say, answered->red->line, nowMs) +
                 " The values from before remain. Ask again, or log in again."_q);
    } else if (answered && answered->isGood) {
        Tell(explained, kind, kStepKept + 1, EnState::Open, explanation::OutcomeOf(*answered),
             "The last answer was taken at %1."_q.arg(Clock(answered->answeredMs, nowMs)));
    } else if (!state.requests.empty()) {
        Tell(explained, kind, kStepAnswered, EnState::Waiting, "no answer yet"_q,
             "The request of %1 has no answer yet. Wait for it."_q.arg(
                 Clock(state.requests.rbegin()->second.sentMs, nowMs)));
    } else {
        Tell(explained, kind, 0, EnState::Open, "not asked"_q,
             "Nothing was asked for yet. This is asked for at login."_q);
    }
    return !isLoggedOut && answered && answered->isGood;
}

/// Explains a step after "taken": all before it are done.
void TellAfter(Explanation& explained, EnKind kind, int step, bool isGood, const QString& sentence) {
    Tell(explained, kind, isGood ? step + 1 : step, isGood ? EnState::Open : EnState::Stopped, explained.state,
         sentence);
}

/// "3 · full": the number with its word, if it has one.
QString Worded(int number, std::initializer_list<const char*> words) {
    return 0 <= number && number < int(words.size())
               ? "%1 \u00B7 %2"_q.arg(number).arg(QLatin1String(words.begin()[number]))
               : QString::number(number);
}

QString Activation(int type) {
    return Worded(type, {"not said", "limited time", "frozen", "full", "empty", "not activated", "ready"});
}

struct Rule {
    QString name;
    QString actual;
    QString expected;
    bool passes;
};

Rule TypeRule(int type, const std::vector<int>& allowed) {
    QStringList words;
    std::transform(allowed.begin(), allowed.end(), std::back_inserter(words), Activation);
    return {"activation type"_q, Activation(type), words.join(", "_q),
            std::find(allowed.begin(), allowed.end(), type) != allowed.end()};
}

void AddWidget(QStringList& details, const QString& name, const std::vector<Rule>& rules) {
    const auto refusing = std::find_if(rules.begin(), rules.end(), [](const Rule& rule) { return !rule.passes; });
    const bool isShown = refusing == rules.end();
    details << Line(0, name, isShown ? "may be shown"_q : "hidden: "_q + refusing->name, isShown);
    for (auto rule = rules.begin(); rule != rules.end(); ++rule) {
        const QString values = "%1, needed: %2"_q.arg(rule->actual, rule->expected);
        details << (rule <= refusing ? Line(1, rule->name, values, rule->passes)
                                     : Line(1, rule->name, "not reached: "_q + values));
    }
}

}  // namespace

namespace explanation {

QStringList WidgetsOf(const CPremiumUIAccessData& record, bool isNewSystem) {
    const std::tuple<const char*, QString, QString> textSets[] = {
        {"main texts", record.strMainTitle, record.strMainBtn},
        {"detail texts", record.strDetailTitle, record.strDetailBtn},
        {"second detail texts", record.strDetailSubTitle, record.strDetailSubBtn},
    };
    const int type = record.nActivationType;
    const int from = record.nActivationSource;
    const Rule source{"activation source"_q, Worded(from, {"not said", "premium rule", "VIP rule", "private customer"}),
                      "VIP rule"_q, from == ZRPremiumSourceVip};
    const Rule layout{"UI type"_q, record.strUIType, "D"_q, record.strUIType == QLatin1String("D")};
    QStringList details;
    AddWidget(details, "Icon"_q,
              {{"newer system"_q, isNewSystem ? "yes"_q : "no"_q, "no"_q, !isNewSystem},
               source,
               {"activation type"_q, Activation(type), "any but 0"_q, type != 0}});
    AddWidget(details, "Tag"_q, {source, TypeRule(type, {ZRPremiumActivationFull})});
    for (const auto& kind : {"Banner"_q, "Locked Mask"_q, "Exclusive Mask"_q}) {
        std::vector<int> types{ZRPremiumActivationFrozen, ZRPremiumActivationNotActivated, ZRPremiumActivationReady};
        if (kind == QLatin1String("Banner")) {
            types.push_back(ZRPremiumActivationLimitedTime);
        }
        const bool needsTitle = kind != QLatin1String("Exclusive Mask");
        for (const auto& [set, title, button] : textSets) {
            const Rule texts{"texts"_q, "title \u201C%1\u201D, button \u201C%2\u201D"_q.arg(title, button),
                             needsTitle ? "title and button text"_q : "button text"_q,
                             !button.isEmpty() && !(needsTitle && title.isEmpty())};
            AddWidget(details, "%1 (%2)"_q.arg(kind, QLatin1String(set)), {layout, TypeRule(type, types), texts});
        }
    }
    return details;
}

Explanation OfAd(const CTracker& tracker, const AdSlot& slot, qint64 localNowMs) {
    static const AdState unknown;
    const auto found = tracker.State().ads.find(slot);
    const AdState& ad = found == tracker.State().ads.end() ? unknown : found->second;
    const AdScene scene{slot, ad, localNowMs, tracker.ToServerMs(localNowMs)};
    Explanation explained;
    TellAd(explained, scene);
    if (ad.red) {
        AddRefusal(explained, scene, *ad.red, ad.shownCount > 0 ? "After it was shown"_q : "Last refusal"_q);
    }
    if (ad.after) {
        AddRefusal(explained, scene, *ad.after, "After that"_q);
    }
    std::set<const AdRequest*> added{nullptr};
    for (const auto& [request, title] : {std::pair(ad.last.get(), "Last request"_q),
                                         {ad.answered.get(), "Last answered request"_q},
                                         {ad.standing.get(), "Waiting list"_q}}) {
        if (added.insert(request).second) {
            AddRequest(explained, scene, *request, title);
        }
    }
    AddLines(explained, tracker, EnKind::Ad, slot, localNowMs);
    if (const AdRequest* list = ad.answered ? ad.answered.get() : ad.last.get(); list && !list->ads.empty()) {
        const auto kept = list->Kept();
        explained.counts = "kept %1 of %2, shown %3"_q.arg(kept.size()).arg(list->ads.size()).arg(ad.shownTotal);
        const QString image = kept.empty() ? list->ads.front().image : kept.front()->image;
        // A picture that the module loads, or that failed, is not requested once more.
        explained.image = ad.isLoading || ad.failedPictures.count(image) != 0 ? QString() : image;
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
    const auto from = tracker.State().timerFrom;
    const qint64 next = from.value_or(0) + ((localNowMs - from.value_or(0)) / kHourMs + 1) * kHourMs;
    Explanation explained;
    explained.details << Line(0, "Next hourly"_q, from ? In(next, localNowMs) : "the timer does not run"_q);
    TellRequests(explained, tracker, tracker.State().rights, EnKind::Rights, {}, localNowMs);
    return explained;
}

Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs) {
    const VipStatus& vip = rights.Vip();
    const QStringList engines =
        "undetermined,on trial,member,asset protection,expired,no member,renewal off"_q.split(QLatin1Char(','));
    const QString engine = engines.value(vip.engine - kVipEngineUndetermined);
    const bool isMember = (vip.isNewSystem ? vip.newState : vip.state) == kVipStateMember;
    const QString system = vip.isNewSystem ? "yes"_q : core::environment::IsVelora() ? "no"_q : "no: edition Kestrel"_q;
    Explanation explained;
    explained.details << Line(0, "On the newer system"_q, system)
                      << Line(0, "State in the older system"_q, Worded(vip.state, {"no member", "member"}))
                      << Line(0, "State in the newer system"_q,
                              Worded(vip.newState, {"no member", "member", "expired"}))
                      << Line(0, "Engine status"_q, Joined({QString::number(vip.engine), engine}));
    if (TellRequests(explained, tracker, tracker.State().vip, EnKind::Vip, {}, localNowMs)) {
        const QString sentence = isMember ? "The user is a member in the %1 system."_q
                                          : "The server answers that the user is no member in the %1 system. Change "
                                            "the user's VIP status on the server."_q;
        TellAfter(explained, EnKind::Vip, kStepConditions, isMember,
                  sentence.arg(vip.isNewSystem ? "newer"_q : "older"_q));
    }
    return explained;
}

Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs) {
    const CPremiumUIAccessData record = CPremiumRights::Record(right);
    const QString activation = Activation(record.nActivationType).section(" \u00B7 "_q, -1);
    const bool isHeld = record.bHasPermission;
    const bool isListed = rights.Table().contains(right);
    Explanation explained;
    explained.details = WidgetsOf(record, rights.Vip().isNewSystem);
    QStringList shown = explained.details.filter(": may be shown"_q);
    static const QRegularExpression frame("^. |: may be shown$"_q);
    shown.replaceInStrings(frame, QString());
    const bool isTaken = TellRequests(explained, tracker, tracker.State().rights, EnKind::Widget, {right}, localNowMs);
    if (isListed) {
        explained.state = Joined({isHeld ? "held"_q : "not held"_q, activation, "%1 days"_q.arg(record.nDaysLeft)});
    } else if (isTaken) {
        explained.state = "not in the answer"_q;
    }
    if (!CPremiumRights::HasModule()) {
        Tell(explained, EnKind::Widget, 0, EnState::Open, explained.state,
             "The module is not there, so nothing is known about rights."_q);
    } else if (isTaken && !isListed) {
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
    const auto& scenes = tracker.State().scenes;
    const EnEntryState entry = entries.State(scene);
    const QString closed = scenes.count(scene) != 0 ? "The server answered that scene %1 is not open to this user."_q
                                                    : "The server's answer does not name scene %1."_q;
    Explanation explained;
    for (const auto& [number, isOpen] : scenes) {
        const QString name = "Scene %1 in the answer"_q.arg(number);
        explained.details << Line(0, name, isOpen ? "open"_q : "not open to all"_q, isOpen);
    }
    const bool isTaken = TellRequests(explained, tracker, tracker.State().chat, EnKind::Chat, {scene}, localNowMs);
    for (const auto& [state, word, sentence] : kRows) {
        if (state == entry && (isTaken || entry != EnEntryState::ClosedByServer)) {
            explained.state = QString::fromUtf8(word);
            TellAfter(explained, EnKind::Chat, kStepConditions, CAIChatEntries::IsOpen(entry),
                      QString::fromUtf8(sentence).replace("%2"_q, closed).replace("%1"_q, QString::number(scene)));
        }
    }
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
