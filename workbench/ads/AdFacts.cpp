#include "workbench/ads/AdFacts.h"

#include <algorithm>

namespace {

EnAdFate FateOfAll(const AdRequest& request) {
    switch (request.outcome) {
        case EnAdOutcome::NotDecoded:
            return EnAdFate::NotDecoded;
        case EnAdOutcome::Refused:
            return EnAdFate::Refused;
        case EnAdOutcome::Superseded:
            return EnAdFate::Superseded;
        case EnAdOutcome::Good:
            break;
        default:
            return EnAdFate::Unknown;
    }
    if (request.verdict == EnAdVerdict::ForeignType) {
        return EnAdFate::ForeignType;
    }
    if (request.verdict == EnAdVerdict::ForeignPosition) {
        return EnAdFate::ForeignPosition;
    }
    if (request.slot.type != kTypePopup && request.slot.type != kTypeBanner) {
        return EnAdFate::Unshowable;
    }
    if (request.verdict == EnAdVerdict::Unfit) {
        return EnAdFate::Unfit;
    }
    return request.isCleared ? EnAdFate::Cleared : EnAdFate::Kept;
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
        case EnAdFate::TooEarly:
            return MayBe(ad.startS, drop.limitS);
        case EnAdFate::Over:
            return MayBe(ad.endS, drop.limitS);
        default:
            return MayBe(ad.expireS, drop.limitS);
    }
}

}  // namespace

std::vector<AdFate> AdRequest::Fates() const {
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
        return fate.fate == EnAdFate::Kept || fate.fate == EnAdFate::Cleared;
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
        if (reasons != filtered.end() && fate.fate == EnAdFate::Kept) {
            fate.fate = EnAdFate::Filtered;
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
