// The board's part on why a slot's ad is not on screen.
#include <algorithm>

#include "workbench/ads/AdBoard.h"

using ad_lines::EnLine;
using ad_why::EnMeaning;

namespace {

constexpr uint32_t kMillisPerSecond = 1'000;
const QString kByPush = QStringLiteral("push offline");

// A banner's picture that failed is known by its report, which names the ad.
std::optional<AdSlot> SlotOf(const ad_why::Meaning& meaning, const ad_lines::Said& said) {
    const int type = meaning.typeAt < 0 ? kBottomPopup.type : int(said.Number(meaning.typeAt));
    if (meaning.positionAt >= 0) {
        return AdSlot{type, int(said.Number(meaning.positionAt))};
    }
    return type == kBottomPopup.type ? std::make_optional(kBottomPopup) : std::nullopt;
}

}  // namespace

bool CAdBoard::TakeWhyLine(const ad_lines::Said& said, qint64 timeMs) {
    const ad_why::Meaning* meaning = ad_why::Find(said.line);
    const std::optional<AdSlot> slot = meaning ? SlotOf(*meaning, said) : std::nullopt;
    if (!slot) {
        return false;
    }
    if (meaning->meaning == EnMeaning::Pushes) {
        TakePush(said, timeMs);
        return true;
    }
    AdSlotState& state = Of(*slot);
    const bool isListRefusal =
        meaning->meaning == EnMeaning::Refuses && meaning->stage == EnAdStage::List && ad_why::IsList(state.why);
    if (isListRefusal) {
        TakeListRefusal(said, *slot, timeMs);
    }
    if (said.line == EnLine::BannerMade) {
        state.made = state.standing;
    }
    ad_why::Take(state.why, *meaning, said, slot->type == kTypeBanner, !state.standing.isEmpty(), timeMs);
    return true;
}

// One that comes with the answer leaves the list before; one that had waited is thrown away.
void CAdBoard::TakeListRefusal(const ad_lines::Said& said, const AdSlot& slot, qint64 timeMs) {
    switch (said.line) {
        case EnLine::NoPopup:
        case EnLine::NoAdId:
        case EnLine::NoAreas:
        case EnLine::BannerNoLayout:
        case EnLine::BannerNoCaller:
            OnVerdict(slot, EnAdVerdict::Unfit, {}, timeMs);
            break;
        default:
            break;
    }
    AdSlotState& state = Of(slot);
    if (state.why.road == EnAdRoad::Waiting) {
        state.standing.clear();
    }
}

// The delay is counted as the module does, in 32 bits; what is then negative is at once.
void CAdBoard::TakePush(const ad_lines::Said& said, qint64 timeMs) {
    if (said.line == EnLine::PushChanged) {
        Withdraw(said, timeMs);
    }
    const AdSlot named{int(said.Number(0)), int(said.Number(1))};
    if (!(named == kBottomPopup)) {
        return;
    }
    const qint64 now = m_fnToServer(timeMs);
    const auto delay = int32_t(uint32_t(said.values.last().toLongLong()) * kMillisPerSecond);
    std::vector<qint64>& pushes = Of(kBottomPopup).why.pushesMs;
    pushes.erase(std::remove_if(pushes.begin(), pushes.end(), [now](qint64 due) { return due <= now; }), pushes.end());
    pushes.push_back(now + std::max(0, delay));
}

// Whatever slot the push names. A list goes without a line of its own.
void CAdBoard::Withdraw(const ad_lines::Said& said, qint64 timeMs) {
    const QStringList ads = said.values[2].split(QLatin1Char(','));
    AdSlotState& slot = Of(kBottomPopup);
    slot.why.withdrawn = ads;
    slot.why.withdrawnMs = timeMs;
    const QString first = FirstKept(slot.standing);
    if (!first.isEmpty() && ads.contains(first)) {
        Known(slot.standing)->isCleared = true;
        slot.standing.clear();
        ad_why::TakeEnd(slot.why, EnAdTest::Withdrawn, said, timeMs);
    }
}

// A list that waits behind an ad which a push takes off the screen stays, though the line says that all is cleared.
bool CAdBoard::IsSpared(AdSlotState& slot) const {
    const QStringList withdrawn = slot.why.withdrawn;
    if (withdrawn.isEmpty() || !slot.closing || slot.closing->why != kByPush ||
        slot.closing->timeMs < slot.why.withdrawnMs) {
        return false;
    }
    slot.why.withdrawn.clear();
    return !withdrawn.contains(FirstKept(slot.standing));
}

QString CAdBoard::FirstKept(const QString& requestId) const {
    const AdRequest* request = Request(requestId);
    const std::vector<AdFate> fates = request ? request->Fates() : std::vector<AdFate>();
    const auto first = std::find_if(fates.begin(), fates.end(), [](const AdFate& fate) {
        return fate.fate == EnAdFate::Kept || fate.fate == EnAdFate::Filtered;
    });
    return first == fates.end() ? QString() : first->ad.id;
}
