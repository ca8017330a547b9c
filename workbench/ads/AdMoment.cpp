#include "workbench/ads/AdMoment.h"

#include <algorithm>

namespace {

using EnWhat = AdMoment::EnWhat;
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
AdMoment OfWindow(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const AdRequest* request = board.Request(slot.lastAnswered);
    std::optional<qint64> first;
    for (const ad_lines::Said& drop : refusal.dropped) {
        if (drop.line != EnLine::TooEarly || drop.Number(1) > ad_why::kLastSecond) {
            continue;
        }
        const qint64 start = std::max(drop.Number(1), slot.stampS + CAdBoard::kIntervalS);
        const AdOffer* ad = FindOffer(request, [&](const AdOffer& offer) {
            return offer.id == drop.values[4] && offer.startS == std::make_optional(drop.Number(1));
        });
        if (!ad || !IsOverAt(*ad, start)) {
            first = std::min(first.value_or(start), start);
        }
    }
    return first ? AdMoment{EnWhat::Free, *first * kSecondMs} : AdMoment{EnWhat::Over, 0};
}

AdMoment OfRefusal(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal) {
    const std::optional<qint64> free = ad_why::FreeFromS(refusal);
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

AdMoment AdMoment::Of(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs) {
    const AdWhy& why = slot.why;
    AdMoment moment = why.last ? OfRefusal(board, slot, *why.last) : AdMoment();
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
    return next ? AdMoment{EnWhat::Push, *next} : moment;
}
