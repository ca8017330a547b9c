#include "workbench/ads/DisplayConditions.h"

#include <algorithm>

namespace {

using EnWhat = DisplayConditions::EnWhat;
using ad_lines::EnLine;

constexpr qint64 kSecondMs = 1'000;

/// The last second at which the ad is due, if the answer contains it.
std::optional<qint64> LastSecondOf(const AdOffer& ad) {
    if (!ad.endS || !ad.expireS) {
        return ad.endS ? ad.endS : ad.expireS;
    }
    return std::min(*ad.endS, *ad.expireS);
}

bool IsOverAt(const AdOffer& ad, qint64 second) {
    return LastSecondOf(ad).value_or(second) < second;
}

template <class Is>
const AdOffer* FindOffer(const AdRequest* request, const Is& is) {
    if (!request || !request->offers) {
        return nullptr;
    }
    const auto found = std::find_if(request->offers->begin(), request->offers->end(), is);
    return found == request->offers->end() ? nullptr : &*found;
}

// Considers also the minimum time between two requests.
DisplayConditions OfWindow(const CAdTracker& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const AdRequest* request = board.Request(slot.lastAnswered);
    std::optional<qint64> first;
    for (const ad_lines::ParsedLine& drop : refusal.dropped) {
        if (drop.line != EnLine::TooEarly || drop.Number(1) > ad_diagnosis::kLastSecond) {
            continue;
        }
        const qint64 start = std::max(drop.Number(1), slot.stampS + CAdTracker::kIntervalS);
        const AdOffer* ad = FindOffer(request, [&](const AdOffer& offer) {
            return offer.id == drop.values[4] && offer.startS == std::make_optional(drop.Number(1));
        });
        if (!ad || !IsOverAt(*ad, start)) {
            first = std::min(first.value_or(start), start);
        }
    }
    return first ? DisplayConditions{EnWhat::Free, *first * kSecondMs} : DisplayConditions{EnWhat::Over, 0};
}

DisplayConditions OfRefusal(const CAdTracker& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const std::optional<qint64> free = ad_diagnosis::FreeFromS(refusal);
    if (!free) {
        return {};
    }
    if (refusal.test == EnAdTest::Window) {
        return OfWindow(board, slot, refusal);
    }
    if (refusal.test == EnAdTest::Interval) {
        const QString id = refusal.said.values[5];
        const AdOffer* ad =
            FindOffer(board.Request(slot.standing), [&id](const AdOffer& offer) { return offer.id == id; });
        if (ad && IsOverAt(*ad, *free)) {
            return {EnWhat::Over, 0};
        }
    }
    return {EnWhat::Free, *free * kSecondMs};
}

}  // namespace

DisplayConditions DisplayConditions::Of(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs) {
    const AdDiagnosis& why = slot.why;
    DisplayConditions moment = why.last ? OfRefusal(board, slot, *why.last) : DisplayConditions();
    if (moment.what == EnWhat::Nothing && why.before) {
        moment = OfRefusal(board, slot, *why.before);
    }
    if (moment.what == EnWhat::Free && moment.atMs > serverNowMs) {
        return moment;
    }
    std::optional<qint64> next;
    for (const qint64 due : why.pushesMs) {
        if (due > serverNowMs) {
            next = std::min(next.value_or(due), due);
        }
    }
    return next ? DisplayConditions{EnWhat::Push, *next} : moment;
}
