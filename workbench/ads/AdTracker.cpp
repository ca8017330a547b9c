#include "workbench/ads/AdTracker.h"

#include <algorithm>

#include "workbench/ads/AdBodies.h"
#include "workbench/ads/AdLines.h"

namespace {

using ad_diagnosis::EnMeaning;
using ad_lines::EnLine;

constexpr const char* kModuleTag = "ZRGrowth";
constexpr size_t kKept = 300;
// A list is checked within the call that received it.
constexpr qint64 kSameCallMs = 2'000;
constexpr qint64 kSecondMs = 1'000;

const QString kActionClose = QStringLiteral("2");
const QString kGoodCode = QStringLiteral("0");

AdSlot SlotAt(const ad_lines::ParsedLine& said, int place) {
    return {int(said.Number(place)), int(said.Number(place + 1))};
}

constexpr uint32_t kMillisPerSecond = 1'000;
const QString kByPush = QStringLiteral("push offline");

// A failed picture of a banner names no position here; its report names the ad.
std::optional<AdSlot> SlotOf(const ad_diagnosis::Meaning& meaning, const ad_lines::ParsedLine& said) {
    const int type = meaning.typeAt < 0 ? kBottomPopup.type : int(said.Number(meaning.typeAt));
    if (meaning.positionAt >= 0) {
        return AdSlot{type, int(said.Number(meaning.positionAt))};
    }
    return type == kBottomPopup.type ? std::make_optional(kBottomPopup) : std::nullopt;
}

}  // namespace

CAdTracker::CAdTracker(ToServer toServer, QObject* parent) : QObject(parent), m_fnToServer(std::move(toServer)) {}

void CAdTracker::Take(const TraceEvent& seen) {
    if (seen.number != 0 && seen.number <= m_nLastSeen) {
        return;
    }
    m_nLastSeen = std::max(m_nLastSeen, seen.number);
    if (const auto* call = std::get_if<HttpTrace>(&seen.what)) {
        TakeCall(*call, seen.timeMs);
    } else if (const auto* report = std::get_if<ReportTrace>(&seen.what)) {
        if (TakeReport(*report, seen.timeMs)) {
            Q_EMIT Changed();
        }
    }
}

void CAdTracker::TakeCall(const HttpTrace& call, qint64 timeMs) {
    const bool isEnd = call.kind != HttpTrace::EnKind::Sent;
    const auto read = ad_bodies::ReadRequest(call.url, isEnd ? call.requestBody : call.body);
    if (!read) {
        return;
    }
    if (!isEnd) {
        AdRequest& request = Begun(read->id, read->slot, timeMs);
        request.task = call.task;
        request.askedFor = read->askedFor;
        Q_EMIT Changed();
        return;
    }
    AdRequest* request = Known(read->id);
    if (!request) {
        return;
    }
    request->status = call.status;
    request->durationMs = call.durationMs;
    // A truncated body cannot be parsed. Its ads are then known from the reports only.
    if (call.kind == HttpTrace::EnKind::Answered) {
        ad_bodies::Answer answer = ad_bodies::ReadAnswer(call.body);
        request->code = answer.code;
        request->offers = std::move(answer.offers);
    }
    if (request->outcome == EnAdOutcome::InFlight) {
        request->outcome = EnAdOutcome::Arrived;
    }
    if (request->outcome != EnAdOutcome::Superseded) {
        Answered(*request, timeMs);
    }
    Q_EMIT Changed();
}

bool CAdTracker::TakeReport(const ReportTrace& report, qint64 timeMs) {
    if (report.event == "StartExposeAd" || report.event == "ExposeAd") {
        OnExposed(report, timeMs);
        return true;
    }
    if (report.event == "ClickAd") {
        OnClickReported(report, timeMs);
        return true;
    }
    if (report.event == "AdvertisementImageResourceDownloadResult") {
        OnPicture(report);
        return true;
    }
    if (report.event == "SendAdRequest" || report.event == "FilterAdDisplay") {
        OnAdsReported(report);
        return true;
    }
    return false;
}

void CAdTracker::OnAdsReported(const ReportTrace& report) {
    const ad_bodies::CParams params(report.params);
    AdRequest* request = Known(params.Text("request_id"));
    if (!request) {
        return;
    }
    const QStringList ads = params.Texts("advertisement_ids");
    if (report.event == "SendAdRequest") {
        request->decoded = ads;
        return;
    }
    for (const QString& ad : ads) {
        request->filtered[ad] = params.Texts("advertisement_filter");
    }
}

void CAdTracker::OnExposed(const ReportTrace& report, qint64 timeMs) {
    const ad_bodies::CParams params(report.params);
    const AdRequest* request = Known(params.Text("request_id"));
    if (!request || report.kind == ReportTrace::EnKind::TimerStarted) {
        return;
    }
    std::optional<AdExposure>& exposure = Of(request->slot).exposure;
    const QString ad = params.Text("advertisement_id");
    if (report.kind == ReportTrace::EnKind::Reported) {
        exposure.emplace();
        exposure->timeMs = timeMs;
        exposure->adId = ad;
        exposure->taken = report.taken;
        return;
    }
    if (!exposure || exposure->adId != ad) {
        exposure.emplace();
        exposure->adId = ad;
    }
    exposure->endMs = timeMs;
    exposure->durationMs = report.durationMs;
    exposure->taken = report.taken;
}

void CAdTracker::OnClickReported(const ReportTrace& report, qint64 timeMs) {
    const ad_bodies::CParams params(report.params);
    const AdRequest* request = Known(params.Text("request_id"));
    if (!request) {
        return;
    }
    AdSlotState& slot = Of(request->slot);
    AdClick click;
    click.timeMs = timeMs;
    click.adId = params.Text("advertisement_id");
    click.report = report.taken ? AdClick::EnReport::Taken : AdClick::EnReport::Refused;
    click.hasJumped = params.Number("result_status").value_or(0) != 0;
    (params.Text("action_type") == kActionClose ? slot.closeButton : slot.click) = click;
}

// The report has no position, so the ad is searched in all requests of its type.
void CAdTracker::OnPicture(const ReportTrace& report) {
    const ad_bodies::CParams params(report.params);
    const QString ad = params.Text("advertisement_id");
    const int type = params.Text("advertisement_type").toInt();
    for (auto& [id, request] : m_requests) {
        if (request.slot.type != type || !request.decoded.contains(ad)) {
            continue;
        }
        request.pictures[ad] = {params.Text("result_code") == kGoodCode, params.Text("request_url"),
                                params.Number("action_times").value_or(0), params.Text("error_content")};
    }
}

void CAdTracker::TakeLine(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLastLine) {
        return;
    }
    m_nLastLine = std::max(m_nLastLine, entry.number);
    if (entry.record.module != kModuleTag) {
        return;
    }
    const auto said = ad_lines::Read(entry.record.text);
    if (!said) {
        return;
    }
    const qint64 time = entry.time.toMSecsSinceEpoch();
    const bool isFact = TakeRequestLine(*said, time) || TakeListLine(*said, time) || TakeScreenLine(*said, time);
    if (TakeWhyLine(*said, time) || isFact) {
        Q_EMIT Changed();
    }
}

bool CAdTracker::TakeRequestLine(const ad_lines::ParsedLine& said, qint64 timeMs) {
    const QStringList& values = said.values;
    switch (said.line) {
        case EnLine::Limited: {
            AdSlotState& slot = Of(SlotAt(said, 3));
            slot.stampS = said.Number(1);
            ++slot.refusedCount;
            return true;
        }
        case EnLine::Asked:
            Begun(values[4], SlotAt(said, 1), timeMs).path = values[0];
            m_strUndecodable.clear();
            return true;
        case EnLine::NoTask:
            End(values[3], SlotAt(said, 1), EnAdOutcome::NoTask, timeMs);
            return true;
        case EnLine::Superseded:
            End(values[3], SlotAt(said, 1), EnAdOutcome::Superseded, timeMs);
            return true;
        case EnLine::ExchangeFailed:
            End(values[4], SlotAt(said, 2), EnAdOutcome::ExchangeFailed, timeMs, said.Number(1));
            return true;
        case EnLine::NoJson:
            End(values[3], SlotAt(said, 1), EnAdOutcome::NoJson, timeMs);
            return true;
        case EnLine::Undecodable:
            m_strUndecodable = QStringLiteral("%1: %2").arg(values[0], values[1]);
            return true;
        case EnLine::NotDecoded:
            End(values[3], SlotAt(said, 1), EnAdOutcome::NotDecoded, timeMs, 0, m_strUndecodable);
            return true;
        case EnLine::Refused:
            End(values[5], SlotAt(said, 3), EnAdOutcome::Refused, timeMs, said.Number(1), values[2]);
            return true;
        case EnLine::Answered: {
            const AdSlot slot = SlotAt(said, 1);
            AdSlotState& state = Of(slot);
            End(values[3], slot, EnAdOutcome::Good, timeMs);
            m_judging[slot] = {values[3], state.standing, timeMs};
            state.standing = values[3];
            return true;
        }
        default:
            return false;
    }
}

bool CAdTracker::TakeListLine(const ad_lines::ParsedLine& said, qint64 timeMs) {
    switch (said.line) {
        case EnLine::TooEarly:
            OnDropped(said, EnAdResult::TooEarly);
            return true;
        case EnLine::Over:
            OnDropped(said, EnAdResult::Over);
            return true;
        case EnLine::Expired:
            OnDropped(said, EnAdResult::Expired);
            return true;
        case EnLine::ForeignType:
            OnVerdict({int(said.Number(0)), int(said.Number(2))}, EnAdVerdict::ForeignType,
                      {int(said.Number(1)), int(said.Number(3))}, timeMs);
            return true;
        case EnLine::ForeignPosition:
            OnVerdict({int(said.Number(0)), int(said.Number(2))}, EnAdVerdict::ForeignPosition, SlotAt(said, 0),
                      timeMs);
            return true;
        case EnLine::EmptyList:
            OnVerdict(SlotAt(said, 0), EnAdVerdict::Empty, {}, timeMs);
            return true;
        case EnLine::NoneValid:
            OnVerdict(SlotAt(said, 0), EnAdVerdict::NoneValid, {}, timeMs);
            return true;
        case EnLine::Cleared: {
            AdSlotState& slot = Of(SlotAt(said, 0));
            if (IsSpared(slot)) {
                return true;
            }
            if (AdRequest* request = Known(slot.standing)) {
                request->isCleared = true;
            }
            slot.standing.clear();
            return true;
        }
        default:
            return false;
    }
}

bool CAdTracker::TakeScreenLine(const ad_lines::ParsedLine& said, qint64 timeMs) {
    using EnOutcome = AdExposeCall::EnOutcome;
    const QStringList& values = said.values;
    switch (said.line) {
        case EnLine::Closed: {
            AdClosing closing;
            closing.timeMs = timeMs;
            closing.adId = values[3];
            closing.why = values[0];
            Of(SlotAt(said, 1)).closing = closing;
            return true;
        }
        case EnLine::ExposeSent: {
            AdExposeCall call;
            call.timeMs = timeMs;
            call.adId = values[3];
            call.exposeId = values[4];
            call.durationMs = said.Number(5);
            Of(SlotAt(said, 1)).call = call;
            return true;
        }
        case EnLine::ExposeNoTask:
            OnExposeLine(said, 1, EnOutcome::NoTask, 0);
            return true;
        case EnLine::ExposeFailed:
            OnExposeLine(said, 2, EnOutcome::Failed, said.Number(1));
            return true;
        case EnLine::ExposeNoJson:
            OnExposeLine(said, 3, EnOutcome::NoJson, 0);
            return true;
        case EnLine::ExposeRefused:
            OnExposeLine(said, 2, EnOutcome::Refused, said.Number(1));
            return true;
        case EnLine::ExposeTaken:
            OnExposeLine(said, 1, EnOutcome::Good, 0);
            return true;
        case EnLine::ClickLost: {
            const AdRequest* request = Known(values[0]);
            if (!request) {
                return false;
            }
            AdClick click;
            click.timeMs = timeMs;
            click.adId = values[2];
            click.report = AdClick::EnReport::NoExposure;
            AdSlotState& slot = Of(request->slot);
            (values[1] == kActionClose ? slot.closeButton : slot.click) = click;
            return true;
        }
        default:
            return false;
    }
}

void CAdTracker::OnExposeLine(const ad_lines::ParsedLine& said, int firstOfSlot, AdExposeCall::EnOutcome outcome,
                              qint64 number) {
    std::optional<AdExposeCall>& call = Of(SlotAt(said, firstOfSlot)).call;
    // A late result of an earlier exposure is ignored.
    if (call && call->adId == said.values[firstOfSlot + 2] && call->exposeId == said.values[firstOfSlot + 3]) {
        call->outcome = outcome;
        call->number = number;
    }
}

void CAdTracker::OnDropped(const ad_lines::ParsedLine& said, EnAdResult why) {
    if (AdRequest* request = Known(m_judging[SlotAt(said, 2)].request)) {
        request->drops.push_back({said.values[4], why, said.Number(0), said.Number(1)});
    }
}

// A list that is refused on arrival is dropped, and the controller keeps the previous list.
void CAdTracker::OnVerdict(const AdSlot& slot, EnAdVerdict verdict, const AdSlot& answerSlot, qint64 timeMs) {
    Judging& judging = m_judging[slot];
    AdRequest* request = Known(judging.request);
    if (!request) {
        return;
    }
    request->verdict = verdict;
    request->answerSlot = answerSlot;
    if (timeMs <= judging.sinceMs + kSameCallMs && judging.sinceMs != 0) {
        Of(slot).standing = judging.before;
        judging = {judging.before, QString(), 0};
    }
}

AdRequest& CAdTracker::Begun(const QString& id, const AdSlot& slot, qint64 timeMs) {
    if (AdRequest* known = Known(id)) {
        return *known;
    }
    Prune();
    AdRequest& request = m_requests[id];
    request.id = id;
    request.slot = slot;
    request.sentMs = timeMs;
    AdSlotState& state = Of(slot);
    const AdRequest* last = Known(state.lastRequest);
    if (!last || last->sentMs <= timeMs) {
        state.lastRequest = id;
        state.stampS = m_fnToServer(timeMs) / kSecondMs;
        state.refusedCount = 0;
    }
    return request;
}

void CAdTracker::End(const QString& id, const AdSlot& slot, EnAdOutcome outcome, qint64 timeMs, qint64 number,
                     const QString& words) {
    AdRequest* request = Known(id);
    if (!request || !(request->slot == slot)) {
        return;
    }
    request->outcome = outcome;
    request->number = number;
    request->words = words;
    if (outcome != EnAdOutcome::Superseded) {
        Answered(*request, timeMs);
    }
}

void CAdTracker::Answered(AdRequest& request, qint64 timeMs) {
    if (request.answeredMs == 0) {
        request.answeredMs = timeMs;
    }
    AdSlotState& slot = Of(request.slot);
    const AdRequest* last = Known(slot.lastAnswered);
    if (!last || last->sentMs <= request.sentMs) {
        slot.lastAnswered = request.id;
    }
}

AdSlotState& CAdTracker::Of(const AdSlot& slot) {
    AdSlotState& state = m_slots[slot];
    state.slot = slot;
    return state;
}

AdRequest* CAdTracker::Known(const QString& id) {
    const auto found = m_requests.find(id);
    return found == m_requests.end() ? nullptr : &found->second;
}

void CAdTracker::Prune() {
    if (m_requests.size() < kKept) {
        return;
    }
    const auto isShown = [this](const QString& id) {
        return std::any_of(m_slots.begin(), m_slots.end(), [&id](const auto& slot) {
            const AdSlotState& state = slot.second;
            return QStringList{state.lastRequest, state.lastAnswered, state.standing, state.made}.contains(id);
        });
    };
    auto oldest = m_requests.end();
    for (auto it = m_requests.begin(); it != m_requests.end(); ++it) {
        if (!isShown(it->first) && (oldest == m_requests.end() || it->second.sentMs < oldest->second.sentMs)) {
            oldest = it;
        }
    }
    if (oldest != m_requests.end()) {
        m_requests.erase(oldest);
    }
}

std::vector<AdSlotState> CAdTracker::Slots() const {
    std::vector<AdSlotState> slots;
    for (const auto& [slot, state] : m_slots) {
        slots.push_back(state);
    }
    return slots;
}

const AdSlotState* CAdTracker::Find(const AdSlot& slot) const {
    const auto found = m_slots.find(slot);
    return found == m_slots.end() ? nullptr : &found->second;
}

const AdRequest* CAdTracker::Request(const QString& id) const {
    const auto found = m_requests.find(id);
    return found == m_requests.end() ? nullptr : &found->second;
}

bool CAdTracker::TakeWhyLine(const ad_lines::ParsedLine& said, qint64 timeMs) {
    const ad_diagnosis::Meaning* meaning = ad_diagnosis::Find(said.line);
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
        meaning->meaning == EnMeaning::Refuses && meaning->stage == EnAdStage::List && ad_diagnosis::IsList(state.why);
    if (isListRefusal) {
        TakeListRefusal(said, *slot, timeMs);
    }
    if (said.line == EnLine::BannerMade) {
        state.made = state.standing;
    }
    ad_diagnosis::Take(state.why, *meaning, said, slot->type == kTypeBanner, !state.standing.isEmpty(), timeMs);
    return true;
}

// A refused answer leaves the previous list in place; a refused waiting list is deleted.
void CAdTracker::TakeListRefusal(const ad_lines::ParsedLine& said, const AdSlot& slot, qint64 timeMs) {
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
    if (state.why.road == EnAdFlow::Waiting) {
        state.standing.clear();
    }
}

// The delay is computed in 32 bits, as in the module. A negative result means no delay.
void CAdTracker::TakePush(const ad_lines::ParsedLine& said, qint64 timeMs) {
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

// The module withdraws ads from the popup, whatever slot the push names. The list is deleted without its own log line.
void CAdTracker::Withdraw(const ad_lines::ParsedLine& said, qint64 timeMs) {
    const QStringList ads = said.values[2].split(QLatin1Char(','));
    AdSlotState& slot = Of(kBottomPopup);
    slot.why.withdrawn = ads;
    slot.why.withdrawnMs = timeMs;
    const QString first = FirstKept(slot.standing);
    if (!first.isEmpty() && ads.contains(first)) {
        Known(slot.standing)->isCleared = true;
        slot.standing.clear();
        ad_diagnosis::TakeEnd(slot.why, EnAdTest::Withdrawn, said, timeMs);
    }
}

// The module keeps a list that waits behind a withdrawn visible ad, although its log line reports that all was cleared.
bool CAdTracker::IsSpared(AdSlotState& slot) const {
    const QStringList withdrawn = slot.why.withdrawn;
    if (withdrawn.isEmpty() || !slot.closing || slot.closing->why != kByPush ||
        slot.closing->timeMs < slot.why.withdrawnMs) {
        return false;
    }
    slot.why.withdrawn.clear();
    return !withdrawn.contains(FirstKept(slot.standing));
}

QString CAdTracker::FirstKept(const QString& requestId) const {
    const AdRequest* request = Request(requestId);
    const std::vector<AdFate> fates = request ? request->Results() : std::vector<AdFate>();
    const auto first = std::find_if(fates.begin(), fates.end(), [](const AdFate& fate) {
        return fate.fate == EnAdResult::Kept || fate.fate == EnAdResult::Filtered;
    });
    return first == fates.end() ? QString() : first->ad.id;
}
