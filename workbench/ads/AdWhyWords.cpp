#include "workbench/ads/AdWhyWords.h"

#include <algorithm>

#include "AdTexts.h"
#include "workbench/ads/AdCompared.h"
#include "workbench/ads/AdMoment.h"

namespace ad_why_words {
namespace {

using ad_words::Clock;
using ad_words::Group;
using texts::Tr;

constexpr qint64 kSecondMs = 1'000;
const QString kDot = QStringLiteral(" \u00B7 ");
const QString kComma = QStringLiteral(", ");

FieldNode Line(texts::EnText name, const QString& value) {
    return {Tr(name), value, {}, {}};
}

void Add(Group& group, FieldNode line, std::optional<bool> good = std::nullopt) {
    group.lines.push_back(std::move(line));
    group.good.push_back(good);
}

texts::EnText NameOf(EnAdStage stage) {
    switch (stage) {
        case EnAdStage::Request:
            return texts::kAdWhyStageRequest;
        case EnAdStage::List:
            return texts::kAdWhyStageList;
        case EnAdStage::Moment:
            return texts::kAdWhyStageMoment;
        case EnAdStage::Card:
            return texts::kAdWhyStageCard;
        case EnAdStage::Picture:
            return texts::kAdWhyStagePicture;
        case EnAdStage::Again:
            break;
    }
    return texts::kAdWhyStageAgain;
}

/// Steps of a road, a line for each of its parts.
FieldNode Steps(texts::EnText name, EnAdRoad road, size_t from, size_t end) {
    FieldNode line = Line(name, QString());
    std::optional<EnAdStage> stage;
    QStringList stages;
    for (size_t place = from; place < end; ++place) {
        const AdStep& step = ad_why::Road(road)[place];
        const QString test = ad_compared::NameOf(step.test);
        if (stage == step.stage) {
            line.children.back().value += kComma + test;
            continue;
        }
        stage = step.stage;
        stages << Tr(NameOf(step.stage));
        line.children.push_back({stages.last(), test, {}, {}});
    }
    line.value = stages.isEmpty() ? Tr(texts::kNothing) : stages.join(kComma);
    return line;
}

/// In short: which rule it was, or what ended it.
QString Name(const AdRefusal& refusal) {
    switch (refusal.test) {
        case EnAdTest::Closed:
            return Tr(texts::kAdWhyClosed).arg(refusal.said.values[0]);
        case EnAdTest::Withdrawn:
            return Tr(texts::kAdWhyWithdrawn).arg(refusal.said.values[2]);
        case EnAdTest::Push:
            return Tr(texts::kAdWhyPushBad).arg(refusal.said.values[0]);
        case EnAdTest::Cleared:
            if (refusal.said.line == ad_lines::EnLine::LoggedOut) {
                return Tr(texts::kAdWhyLogout);
            }
            return Tr(refusal.said.line == ad_lines::EnLine::OtherLanguage ? texts::kAdWhyLanguage
                                                                           : texts::kAdWhyCleared);
        default:
            return Tr(texts::kAdWhyRefused).arg(Tr(NameOf(refusal.Stage())), ad_compared::NameOf(refusal.test));
    }
}

/// Nothing for what is no test.
std::vector<FieldNode> Compared(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal) {
    if (!refusal.place) {
        return {};
    }
    ad_compared::Compared compared = ad_compared::Of(board, slot, refusal);
    std::vector<FieldNode> lines{Line(texts::kAdWhyHere, compared.here), Line(texts::kAdWhyNeeded, compared.needed)};
    lines.back().children = std::move(compared.each);
    return lines;
}

void AddSteps(Group& group, EnAdRoad road, size_t passed, size_t reached) {
    Add(group, Steps(texts::kAdWhyPassed, road, 0, passed));
    Add(group, Steps(texts::kAdWhyNotReached, road, reached, ad_why::Road(road).size()));
}

/// Of a banner that stands there with nothing on it; null for any other.
const AdRequest* Bare(const CAdBoard& board, const AdSlotState& slot) {
    const bool stands = slot.slot.type == kTypeBanner && slot.why.shownCount > 0;
    const AdRequest* request = stands ? board.Request(slot.made) : nullptr;
    return request && request->IsWithoutPicture() ? request : nullptr;
}

/// Each ad whose picture failed.
std::vector<FieldNode> Failed(const AdRequest& bare) {
    std::vector<FieldNode> ads;
    for (const auto& [ad, picture] : bare.pictures) {
        ads.push_back({ad, Tr(texts::kAdWhyPictureFailed).arg(picture.tries).arg(picture.url), {}, {}});
    }
    return ads;
}

QString Shown(const AdSlotState& slot, bool isBare) {
    const bool isBanner = slot.slot.type == kTypeBanner;
    const bool runs = slot.exposure && slot.exposure->endMs == 0;
    const QString ad = isBanner ? (runs ? slot.exposure->adId : QString()) : slot.why.shownAd;
    const QString since = Tr(isBare ? texts::kAdWhyNoPicture : texts::kAdWhyShown).arg(Clock(slot.why.shownMs));
    return ad.isEmpty() ? since : since + kDot + ad;
}

QString Now(const AdSlotState& slot, bool isBare) {
    const AdWhy& why = slot.why;
    if (why.shownCount > 0) {
        return Shown(slot, isBare);
    }
    if (slot.lastRequest.isEmpty()) {
        return Tr(texts::kAdWhyUnasked);
    }
    if (why.isLoading) {
        return Tr(texts::kAdWhyLoading);
    }
    if (why.isAsking) {
        return Tr(texts::kAdWhyAsking);
    }
    return Tr(why.last ? texts::kAdWhyNotShown : texts::kAdWhyIdle);
}

bool Waits(const AdSlotState& slot) {
    return slot.slot == kBottomPopup && !slot.standing.isEmpty();
}

QString Occasion(const AdSlotState& slot) {
    if (slot.slot.type == kTypeBanner) {
        return Tr(texts::kAdWhyOnPage);
    }
    return Tr(Waits(slot) ? texts::kAdWhyOnTab : texts::kAdWhyOnRequest);
}

}  // namespace

QString Time(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs) {
    const AdMoment moment = AdMoment::Of(board, slot, serverNowMs);
    const QString at = ad_words::ServerTime(moment.atMs / kSecondMs);
    const QString until = ad_words::Until(moment.atMs - serverNowMs);
    switch (moment.what) {
        case AdMoment::EnWhat::Free:
            return Tr(texts::kAdWhyTimeFree).arg(at, until);
        case AdMoment::EnWhat::Push:
            return Tr(texts::kAdWhyTimePush).arg(at, until);
        case AdMoment::EnWhat::Over:
            return Tr(texts::kAdWhyTimeOver);
        case AdMoment::EnWhat::Nothing:
            break;
    }
    return Tr(texts::kAdWhyTimeNothing);
}

Group Why(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs) {
    const AdWhy& why = slot.why;
    const AdRequest* bare = Bare(board, slot);
    const bool isStanding = why.shownCount > 0;
    const bool isShown = isStanding && !bare;
    Group group{Tr(texts::kAdWhyTitle), {}, {}};
    FieldNode now = Line(texts::kAdWhyState, Now(slot, bare));
    if (bare) {
        now.children = Failed(*bare);
    }
    Add(group, std::move(now), isStanding ? std::make_optional(isShown) : std::nullopt);
    if (why.last) {
        Add(group, Line(texts::kAdWhyLast, Name(*why.last) + kDot + Clock(why.last->timeMs)), false);
        for (FieldNode& line : Compared(board, slot, *why.last)) {
            Add(group, std::move(line));
        }
    }
    if (!isShown || why.last) {
        group.ticking = group.lines.size();
        Add(group, Line(texts::kAdWhyTime, Time(board, slot, serverNowMs)));
        Add(group, Line(texts::kAdWhyNext, Occasion(slot)));
    }
    if (why.isLoading) {
        AddSteps(group, why.road, why.passed, why.passed);
    } else if (why.last && why.last->place) {
        AddSteps(group, why.last->road, *why.last->place, *why.last->place + 1);
    }
    if (why.last && why.before) {
        FieldNode before = Line(texts::kAdWhyBefore, Name(*why.before) + kDot + Clock(why.before->timeMs));
        before.children = Compared(board, slot, *why.before);
        Add(group, std::move(before), false);
    }
    return group;
}

}  // namespace ad_why_words
