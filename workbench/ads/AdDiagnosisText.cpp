#include "workbench/ads/AdDiagnosisText.h"

#include <algorithm>

#include "workbench/ads/AdComparison.h"
#include "workbench/ads/DisplayConditions.h"

namespace ad_diagnosis_text {
namespace {

using ad_text::Clock;
using ad_text::Group;

constexpr qint64 kSecondMs = 1'000;
const QString kDot = QStringLiteral(" \u00B7 ");
const QString kComma = QStringLiteral(", ");

FieldNode Line(const QString& name, const QString& value) {
    return {name, value, {}, {}};
}

void Add(Group& group, FieldNode line, std::optional<bool> good = std::nullopt) {
    group.lines.push_back(std::move(line));
    group.good.push_back(good);
}

QString NameOf(EnAdStage stage) {
    switch (stage) {
        case EnAdStage::Request:
            return QStringLiteral("request");
        case EnAdStage::List:
            return QStringLiteral("list");
        case EnAdStage::Moment:
            return QStringLiteral("moment");
        case EnAdStage::Card:
            return QStringLiteral("view");
        case EnAdStage::Picture:
            return QStringLiteral("picture");
        case EnAdStage::Again:
            break;
    }
    return QStringLiteral("moment, with its picture in");
}

/// Steps of a sequence, one line for each stage.
FieldNode Steps(const QString& name, EnAdFlow road, size_t from, size_t end) {
    FieldNode line = Line(name, QString());
    std::optional<EnAdStage> stage;
    QStringList stages;
    for (size_t place = from; place < end; ++place) {
        const AdStep& step = ad_diagnosis::Flow(road)[place];
        const QString test = ad_comparison::NameOf(step.test);
        if (stage == step.stage) {
            line.children.back().value += kComma + test;
            continue;
        }
        stage = step.stage;
        stages << NameOf(step.stage);
        line.children.push_back({stages.last(), test, {}, {}});
    }
    line.value = stages.isEmpty() ? QStringLiteral("none") : stages.join(kComma);
    return line;
}

/// Names the failed check, or the event that ended the ad.
QString Name(const AdRefusal& refusal) {
    switch (refusal.test) {
        case EnAdTest::Closed:
            return QStringLiteral("closed by %1").arg(refusal.said.values[0]);
        case EnAdTest::Withdrawn:
            return QStringLiteral("withdrawn by the server: %1").arg(refusal.said.values[2]);
        case EnAdTest::Push:
            return QStringLiteral("a push was not taken: %1").arg(refusal.said.values[0]);
        case EnAdTest::Cleared:
            if (refusal.said.line == ad_lines::EnLine::LoggedOut) {
                return QStringLiteral("its list was cleared by the logout");
            }
            return refusal.said.line == ad_lines::EnLine::OtherLanguage
                       ? QStringLiteral("its list was cleared by the change of language")
                       : QStringLiteral("its list was cleared");
        default:
            return QStringLiteral("refused (%1): %2").arg(NameOf(refusal.Stage()), ad_comparison::NameOf(refusal.test));
    }
}

/// Empty if `refusal` is not a failed check.
std::vector<FieldNode> Comparison(const CAdTracker& board, const AdSlotState& slot, const AdRefusal& refusal) {
    if (!refusal.place) {
        return {};
    }
    ad_comparison::Comparison compared = ad_comparison::Of(board, slot, refusal);
    std::vector<FieldNode> lines{Line(QStringLiteral("Found"), compared.actual),
                                 Line(QStringLiteral("Needed"), compared.expected)};
    lines.back().children = std::move(compared.each);
    return lines;
}

void AddSteps(Group& group, EnAdFlow road, size_t passed, size_t reached) {
    Add(group, Steps(QStringLiteral("Passed"), road, 0, passed));
    Add(group, Steps(QStringLiteral("Not reached"), road, reached, ad_diagnosis::Flow(road).size()));
}

/// The request of a visible banner without any picture; null for any other slot.
const AdRequest* Bare(const CAdTracker& board, const AdSlotState& slot) {
    const bool stands = slot.slot.type == kTypeBanner && slot.why.shownCount > 0;
    const AdRequest* request = stands ? board.Request(slot.made) : nullptr;
    return request && request->IsWithoutPicture() ? request : nullptr;
}

std::vector<FieldNode> Failed(const AdRequest& bare) {
    std::vector<FieldNode> ads;
    for (const auto& [ad, picture] : bare.pictures) {
        ads.push_back({ad, QStringLiteral("failed at try %1: %2").arg(picture.tries).arg(picture.url), {}, {}});
    }
    return ads;
}

QString Shown(const AdSlotState& slot, bool isBare) {
    const bool isBanner = slot.slot.type == kTypeBanner;
    const bool runs = slot.exposure && slot.exposure->endMs == 0;
    const QString ad = isBanner ? (runs ? slot.exposure->adId : QString()) : slot.why.shownAd;
    const QString since =
        (isBare ? QStringLiteral("stands since %1, but no picture came") : QStringLiteral("shown since %1"))
            .arg(Clock(slot.why.shownMs));
    return ad.isEmpty() ? since : since + kDot + ad;
}

QString Now(const AdSlotState& slot, bool isBare) {
    const AdDiagnosis& why = slot.why;
    if (why.shownCount > 0) {
        return Shown(slot, isBare);
    }
    if (slot.lastRequest.isEmpty()) {
        return QStringLiteral("nothing was asked for yet");
    }
    if (why.isLoading) {
        return QStringLiteral("waits for its picture");
    }
    if (why.isAsking) {
        return QStringLiteral("waits for the answer");
    }
    return why.last ? QStringLiteral("not shown") : QStringLiteral("nothing is on its way");
}

bool Waits(const AdSlotState& slot) {
    return slot.slot == kBottomPopup && !slot.standing.isEmpty();
}

QString Occasion(const AdSlotState& slot) {
    if (slot.slot.type == kTypeBanner) {
        return QStringLiteral("when its page asks again");
    }
    return Waits(slot) ? QStringLiteral("at a change of the tab, or with the next request")
                       : QStringLiteral("with the next request: login, change of language, push");
}

}  // namespace

QString Time(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs) {
    const DisplayConditions moment = DisplayConditions::Of(board, slot, serverNowMs);
    const QString at = ad_text::ServerTime(moment.atMs / kSecondMs);
    const QString until = ad_text::Until(moment.atMs - serverNowMs);
    switch (moment.what) {
        case DisplayConditions::EnWhat::Free:
            return QStringLiteral("lets it through from %1, %2").arg(at, until);
        case DisplayConditions::EnWhat::Push:
            return QStringLiteral("a push has it ask again at %1, %2").arg(at, until);
        case DisplayConditions::EnWhat::Over:
            return QStringLiteral("changes nothing: its window ends before");
        case DisplayConditions::EnWhat::Nothing:
            break;
    }
    return QStringLiteral("changes nothing");
}

Group Why(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs) {
    const AdDiagnosis& why = slot.why;
    const AdRequest* bare = Bare(board, slot);
    const bool isStanding = why.shownCount > 0;
    const bool isShown = isStanding && !bare;
    Group group{QStringLiteral("Why is it not shown?"), {}, {}};
    FieldNode now = Line(QStringLiteral("Now"), Now(slot, bare));
    if (bare) {
        now.children = Failed(*bare);
    }
    Add(group, std::move(now), isStanding ? std::make_optional(isShown) : std::nullopt);
    if (why.last) {
        Add(group, Line(QStringLiteral("Last"), Name(*why.last) + kDot + Clock(why.last->timeMs)), false);
        for (FieldNode& line : Comparison(board, slot, *why.last)) {
            Add(group, std::move(line));
        }
    }
    if (!isShown || why.last) {
        group.ticking = group.lines.size();
        Add(group, Line(QStringLiteral("Time alone"), Time(board, slot, serverNowMs)));
        Add(group, Line(QStringLiteral("Tried again"), Occasion(slot)));
    }
    if (why.isLoading) {
        AddSteps(group, why.road, why.passed, why.passed);
    } else if (why.last && why.last->place) {
        AddSteps(group, why.last->road, *why.last->place, *why.last->place + 1);
    }
    if (why.last && why.before) {
        FieldNode before = Line(QStringLiteral("Before that"), Name(*why.before) + kDot + Clock(why.before->timeMs));
        before.children = Comparison(board, slot, *why.before);
        Add(group, std::move(before), false);
    }
    return group;
}

}  // namespace ad_diagnosis_text
