#include "workbench/ads/AdFacts.h"

#include <algorithm>

namespace {

EnAdResult FateOfAll(const AdRequest& request) {
    switch (request.outcome) {
        case EnAdOutcome::NotDecoded:
            return EnAdResult::NotDecoded;
        case EnAdOutcome::Refused:
            return EnAdResult::Refused;
        case EnAdOutcome::Superseded:
            return EnAdResult::Superseded;
        case EnAdOutcome::Good:
            break;
        default:
            return EnAdResult::Unknown;
    }
    if (request.verdict == EnAdVerdict::ForeignType) {
        return EnAdResult::ForeignType;
    }
    if (request.verdict == EnAdVerdict::ForeignPosition) {
        return EnAdResult::ForeignPosition;
    }
    if (request.slot.type != kTypePopup && request.slot.type != kTypeBanner) {
        return EnAdResult::Unshowable;
    }
    if (request.verdict == EnAdVerdict::Unfit) {
        return EnAdResult::Unfit;
    }
    return request.isCleared ? EnAdResult::Cleared : EnAdResult::Kept;
}

bool MayBe(std::optional<qint64> known, qint64 limit) {
    return !known || *known == limit;
}

/// Two ads can have the same id; the time window identifies the ad.
bool IsOf(const AdRequest::Drop& drop, const AdOffer& ad) {
    if (drop.id != ad.id) {
        return false;
    }
    switch (drop.why) {
        case EnAdResult::TooEarly:
            return MayBe(ad.startS, drop.limitS);
        case EnAdResult::Over:
            return MayBe(ad.endS, drop.limitS);
        default:
            return MayBe(ad.expireS, drop.limitS);
    }
}

}  // namespace

std::vector<AdFate> AdRequest::Results() const {
    std::vector<AdFate> fates;
    if (offers) {
        for (const AdOffer& offer : *offers) {
            fates.push_back({offer, FateOfAll(*this), 0, 0, {}, {}});
        }
    } else {
        for (const QString& ad : decoded) {
            fates.push_back({{ad, {}, {}, {}, {}}, FateOfAll(*this), 0, 0, {}, {}});
        }
    }
    const auto isThere = [](const AdFate& fate) {
        return fate.fate == EnAdResult::Kept || fate.fate == EnAdResult::Cleared;
    };
    for (const Drop& drop : drops) {
        const auto fate = std::find_if(fates.begin(), fates.end(),
                                       [&](const AdFate& one) { return isThere(one) && IsOf(drop, one.ad); });
        if (fate != fates.end()) {
            fate->fate = drop.why;
            fate->nowS = drop.nowS;
            fate->limitS = drop.limitS;
        }
    }
    for (AdFate& fate : fates) {
        const auto reasons = filtered.find(fate.ad.id);
        if (reasons != filtered.end() && fate.fate == EnAdResult::Kept) {
            fate.fate = EnAdResult::Filtered;
            fate.reasons = reasons->second;
        }
        const auto picture = pictures.find(fate.ad.id);
        if (picture != pictures.end() && !picture->second.hasCome) {
            const AdPicture& failed = picture->second;
            fate.pictureFailed = failed.words.isEmpty() ? failed.url : failed.words;
        }
    }
    return fates;
}

bool AdRequest::IsWithoutPicture() const {
    return !pictures.empty() &&
           std::none_of(pictures.begin(), pictures.end(), [](const auto& one) { return one.second.hasCome; });
}
