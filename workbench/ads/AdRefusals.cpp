#include "workbench/ads/AdRefusals.h"

#include <algorithm>

namespace ad_diagnosis {
namespace {

using ad_lines::EnLine;
using ad_lines::ParsedLine;

constexpr qint64 kSameCallMs = 2'000;

const std::vector<Meaning>& Meanings() {
    using M = EnMeaning;
    using S = EnAdStage;
    using T = EnAdTest;
    static const std::vector<Meaning> meanings{
        {EnLine::Limited, M::Refuses, 3, 4, S::Request, T::Limit},
        {EnLine::Asked, M::Asks, 1, 2},
        {EnLine::NoTask, M::Refuses, 1, 2, S::Request, T::Task},
        {EnLine::Superseded, M::Refuses, 1, 2, S::Request, T::Latest},
        {EnLine::ExchangeFailed, M::Refuses, 2, 3, S::Request, T::Exchange},
        {EnLine::NoJson, M::Refuses, 1, 2, S::Request, T::Json},
        {EnLine::NotDecoded, M::Refuses, 1, 2, S::Request, T::Decode},
        {EnLine::Refused, M::Refuses, 3, 4, S::Request, T::Code},
        {EnLine::Answered, M::Begins, 1, 2, S::Request, T::Code},
        {EnLine::Try, M::Begins, 0, 1},
        {EnLine::NoList, M::Refuses, 0, 1, S::List, T::List},
        {EnLine::ForeignType, M::Refuses, 0, 2, S::List, T::Type},
        {EnLine::ForeignPosition, M::Refuses, 0, 2, S::List, T::Position},
        {EnLine::EmptyList, M::Refuses, 0, 1, S::List, T::Ads},
        {EnLine::TooEarly, M::Drops, 2, 3},
        {EnLine::Over, M::Drops, 2, 3},
        {EnLine::Expired, M::Drops, 2, 3},
        {EnLine::NoneValid, M::Refuses, 0, 1, S::List, T::Window},
        {EnLine::NoPopup, M::Refuses, 0, 1, S::List, T::Popup},
        {EnLine::NoAdId, M::Refuses, 0, 1, S::List, T::AdId},
        {EnLine::NoAreas, M::Refuses, 0, 1, S::List, T::Areas},
        {EnLine::ListGood, M::Passes, 0, 1, S::List, T::Areas},
        {EnLine::NoListNow, M::Refuses, 0, 1, S::Moment, T::List},
        {EnLine::OtherTab, M::Refuses, 2, 3, S::Moment, T::Tab},
        {EnLine::WithinInterval, M::Refuses, 3, 4, S::Moment, T::Interval},
        {EnLine::SlotTaken, M::Refuses, 0, 1, S::Moment, T::Slot},
        {EnLine::NoFocus, M::Refuses, 0, 1, S::Moment, T::Focus},
        {EnLine::ShowNoList, M::Refuses, 0, 1, S::Card, T::List},
        {EnLine::ShowStart, M::Passes, 0, 1, S::Moment, T::Focus},
        {EnLine::ShowElsewhere, M::Refuses, 0, 1, S::Card, T::Position},
        {EnLine::ShowNoData, M::Refuses, 0, 1, S::Card, T::Popup},
        {EnLine::CardNoPopup, M::Refuses, 0, 1, S::Card, T::Popup},
        {EnLine::CardNoPicture, M::Refuses, 0, 1, S::Card, T::Card},
        {EnLine::CardNoInterface, M::Refuses, 0, 1, S::Card, T::Interface},
        {EnLine::CardNoFrame, M::Refuses, 0, 1, S::Card, T::MainFrame},
        {EnLine::CardMade, M::Loads, 0, 1, S::Card, T::MainFrame},
        {EnLine::CardGone, M::Vanishes, 0, 1},
        {EnLine::PictureFailed, M::PictureFails, 0, -1, S::Picture, T::Picture},
        {EnLine::PictureOfNone, M::Refuses, 0, 1, S::Again, T::AdId},
        {EnLine::NoView, M::Refuses, 0, 1, S::Again, T::View},
        {EnLine::Shown, M::Shows, 0, 1},
        {EnLine::Closed, M::Ends, 1, 2, S::Request, T::Closed},
        {EnLine::Cleared, M::Clears, 0, 1, S::Request, T::Cleared},
        {EnLine::BannerNoLayout, M::Refuses, 0, 1, S::List, T::Layout},
        {EnLine::BannerNoCaller, M::Refuses, 0, 1, S::List, T::Caller},
        {EnLine::BannerNoList, M::Refuses, 0, 1, S::Card, T::List},
        {EnLine::BannerNoAds, M::Refuses, 0, 1, S::Card, T::Ads},
        {EnLine::BannerUnknown, M::Refuses, 0, 1, S::Card, T::BannerType},
        {EnLine::BannerMade, M::Shows, 0, 1},
        {EnLine::PushNew, M::Pushes, 0, 1},
        {EnLine::PushChanged, M::Pushes, 0, 1},
        {EnLine::PushCheck, M::Pushes, 0, 1},
        {EnLine::PushBad, M::Misses, -1, -1, S::Request, T::Push},
        {EnLine::LoggedOut, M::Reason, -1, -1},
        {EnLine::OtherLanguage, M::Reason, -1, -1},
    };
    return meanings;
}

std::vector<AdStep> Steps(EnAdFlow road) {
    using S = EnAdStage;
    using T = EnAdTest;
    std::vector<AdStep> steps;
    const auto add = [&steps](EnAdStage stage, const std::vector<EnAdTest>& tests) {
        for (const EnAdTest test : tests) {
            steps.push_back({stage, test});
        }
    };
    if (road != EnAdFlow::Waiting) {
        add(S::Request, {T::Limit, T::Task, T::Latest, T::Exchange, T::Json, T::Decode, T::Code});
    }
    add(S::List, {T::List, T::Type, T::Position, T::Ads, T::Window});
    if (road == EnAdFlow::Banner) {
        add(S::List, {T::Layout, T::Caller});
        add(S::Card, {T::List, T::Layout, T::Ads, T::BannerType});
        return steps;
    }
    add(S::List, {T::Popup, T::AdId, T::Areas});
    add(S::Moment, {T::List, T::Popup, T::Areas, T::Tab, T::Interval, T::Slot, T::Focus});
    add(S::Card, {T::List, T::Position, T::Popup, T::Card, T::Interface, T::MainFrame});
    add(S::Picture, {T::Picture});
    add(S::Again, {T::AdId, T::List, T::Popup, T::Areas, T::Tab, T::Interval, T::Slot, T::Focus, T::View});
    return steps;
}

/// The first remaining step with this check.
std::optional<size_t> PlaceOf(EnAdFlow road, const Meaning& meaning, size_t passed) {
    const std::vector<AdStep>& steps = Flow(road);
    for (size_t place = passed; place < steps.size(); ++place) {
        if (steps[place].test == meaning.test && steps[place].stage >= meaning.stage) {
            return place;
        }
    }
    return std::nullopt;
}

void Pass(AdDiagnosis& why, const Meaning& meaning) {
    if (const auto place = PlaceOf(why.road, meaning, why.passed)) {
        why.passed = *place + 1;
    }
}

void Begin(AdDiagnosis& why, const Meaning& meaning, EnAdFlow road) {
    why.road = road;
    why.passed = 0;
    why.dropped.clear();
    if (road != EnAdFlow::Waiting) {
        why.isAsking = false;
        Pass(why, meaning);
    }
}

void Put(AdDiagnosis& why, AdRefusal refusal) {
    if (!refusal.leavesRest) {
        why.before.reset();
    } else if (why.last && !why.last->leavesRest) {
        why.before = why.last;
    }
    why.last = std::move(refusal);
}

bool LeavesRest(const Meaning& meaning, EnAdFlow road, EnAdStage stage, bool hasStanding) {
    if (meaning.test == EnAdTest::Limit || meaning.test == EnAdTest::Latest || meaning.line == EnLine::NoList) {
        return true;
    }
    return hasStanding && road != EnAdFlow::Waiting && (stage == EnAdStage::Request || stage == EnAdStage::List);
}

void Refuse(AdDiagnosis& why, const Meaning& meaning, const ParsedLine& said, bool isBanner, bool hasStanding,
            qint64 timeMs) {
    const bool isRequest = meaning.stage == EnAdStage::Request;
    AdRefusal refusal{said, meaning.test, why.road, {}, {}, timeMs};
    if (isRequest) {
        refusal.road = isBanner ? EnAdFlow::Banner : EnAdFlow::Answer;
        refusal.place = PlaceOf(refusal.road, meaning, 0);
        // A request that is too early, or a superseded answer, does not end the pending request.
        why.isAsking = why.isAsking && (meaning.test == EnAdTest::Limit || meaning.test == EnAdTest::Latest);
    } else {
        refusal.place = PlaceOf(why.road, meaning, why.passed);
        // The next refusal without a new list belongs to a card whose picture is loaded.
        why.passed = refusal.place.value_or(why.passed) + 1;
        refusal.dropped = why.dropped;
    }
    refusal.leavesRest = LeavesRest(meaning, refusal.road, refusal.Stage(), hasStanding);
    Put(why, std::move(refusal));
}

void Show(AdDiagnosis& why, const ParsedLine& said, bool isBanner, qint64 timeMs) {
    why.passed = Flow(why.road).size();
    why.isLoading = false;
    why.last.reset();
    why.before.reset();
    // The next banner is created before the current one is destroyed.
    why.shownCount = isBanner ? why.shownCount + 1 : 1;
    why.shownAd = isBanner ? QString() : said.values[2];
    why.shownMs = timeMs;
}

void Clear(AdDiagnosis& why, const ParsedLine& said, qint64 timeMs) {
    const bool isClosed = why.last && why.last->test == EnAdTest::Closed && timeMs <= why.last->timeMs + kSameCallMs;
    if (!isClosed && why.shownCount == 0) {
        TakeEnd(why, EnAdTest::Cleared, {why.clears, said.values}, timeMs);
    }
}

std::optional<qint64> Sum(qint64 left, qint64 right) {
    const auto isNear = [](qint64 second) { return -kLastSecond <= second && second <= kLastSecond; };
    const bool isMoment = isNear(left) && isNear(right) && left + right <= kLastSecond;
    return isMoment ? std::make_optional(left + right) : std::nullopt;
}

}  // namespace

const Meaning* Find(EnLine line) {
    const std::vector<Meaning>& all = Meanings();
    const auto found = std::find_if(all.begin(), all.end(), [line](const Meaning& one) { return one.line == line; });
    return found == all.end() ? nullptr : &*found;
}

const std::vector<AdStep>& Flow(EnAdFlow road) {
    static const std::vector<AdStep> answer = Steps(EnAdFlow::Answer);
    static const std::vector<AdStep> waiting = Steps(EnAdFlow::Waiting);
    static const std::vector<AdStep> banner = Steps(EnAdFlow::Banner);
    switch (road) {
        case EnAdFlow::Waiting:
            return waiting;
        case EnAdFlow::Banner:
            return banner;
        case EnAdFlow::Answer:
            break;
    }
    return answer;
}

bool IsList(const AdDiagnosis& why) {
    const std::vector<AdStep>& steps = Flow(why.road);
    return why.passed < steps.size() && steps[why.passed].stage == EnAdStage::List;
}

void Take(AdDiagnosis& why, const Meaning& meaning, const ParsedLine& said, bool isBanner, bool hasStanding,
          qint64 timeMs) {
    // Banners have only one sequence, whatever line begins it.
    why.road = isBanner ? EnAdFlow::Banner : why.road;
    switch (meaning.meaning) {
        case EnMeaning::Asks:
            why.isAsking = true;
            why.clears = EnLine::Cleared;
            return;
        case EnMeaning::Begins: {
            const EnAdFlow answer = isBanner ? EnAdFlow::Banner : EnAdFlow::Answer;
            Begin(why, meaning, said.line == EnLine::Try ? EnAdFlow::Waiting : answer);
            return;
        }
        case EnMeaning::Passes:
            Pass(why, meaning);
            return;
        case EnMeaning::Drops:
            why.dropped.push_back(said);
            return;
        case EnMeaning::Refuses:
            Refuse(why, meaning, said, isBanner, hasStanding, timeMs);
            return;
        case EnMeaning::PictureFails:
            if (why.isLoading) {
                Refuse(why, meaning, said, isBanner, hasStanding, timeMs);
            }
            return;
        case EnMeaning::Loads:
            Pass(why, meaning);
            why.isLoading = true;
            return;
        case EnMeaning::Shows:
            Show(why, said, isBanner, timeMs);
            return;
        case EnMeaning::Vanishes:
            why.isLoading = false;
            why.shownCount = 0;
            return;
        case EnMeaning::Ends:
            why.shownCount = std::max(0, why.shownCount - 1);
            if (why.shownCount == 0) {
                TakeEnd(why, EnAdTest::Closed, said, timeMs);
            }
            return;
        case EnMeaning::Clears:
            Clear(why, said, timeMs);
            return;
        case EnMeaning::Reason:
            why.clears = said.line;
            return;
        case EnMeaning::Misses:
            Put(why, {said, meaning.test, why.road, {}, {}, timeMs, true});
            return;
        case EnMeaning::Pushes:
            break;
    }
}

void TakeEnd(AdDiagnosis& why, EnAdTest how, const ParsedLine& said, qint64 timeMs) {
    Put(why, {said, how, why.road, {}, {}, timeMs});
}

std::optional<qint64> FreeFromS(const AdRefusal& refusal) {
    switch (refusal.test) {
        case EnAdTest::Limit:
            return Sum(refusal.said.Number(1), refusal.said.Number(2));
        case EnAdTest::Interval: {
            // The last second of the interval still refuses.
            const auto end = Sum(refusal.said.Number(1), refusal.said.Number(2));
            return end ? Sum(*end, 1) : std::nullopt;
        }
        case EnAdTest::Window: {
            std::optional<qint64> first;
            for (const ParsedLine& drop : refusal.dropped) {
                const qint64 start = drop.Number(1);
                if (drop.line == EnLine::TooEarly && start <= kLastSecond) {
                    first = std::min(first.value_or(start), start);
                }
            }
            return first;
        }
        default:
            return std::nullopt;
    }
}

}  // namespace ad_diagnosis

EnAdStage AdRefusal::Stage() const {
    return place ? ad_diagnosis::Flow(road)[*place].stage : EnAdStage::Request;
}
