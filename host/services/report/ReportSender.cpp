#include "report/ReportSender.h"

#include <json/value.h>

#include <algorithm>
#include <optional>
#include <set>

#include "core/IClientState.h"
#include "core/IHttp.h"
#include "core/ITimeAndRandom.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Report");

// The timeout grows with the size of a batch, by this minimum throughput.
constexpr size_t kLeastBytesPerSecond = 256 << 10;

constexpr char kPath[] = "/report/events";
constexpr char kBegin[] = "{\"events\":[";
constexpr char kEnd[] = "]}";

/// Returns whether the server rejects the content of the batch, so that a retry would fail too.
bool IsRefusal(const HttpRspInfo& response) {
    constexpr int statuses[] = {400, 413, 422};
    return response.m_nResult == kHttpOk &&
           std::find(std::begin(statuses), std::end(statuses), response.m_nHttpStatusCode) != std::end(statuses);
}

/// Returns the acknowledged ids, or nothing if the answer does not list them.
std::optional<std::set<std::string>> AcceptedIn(const HttpRspInfo& response, std::string& reason) {
    if (response.m_nResult != kHttpOk || response.m_nHttpStatusCode < 200 || response.m_nHttpStatusCode > 299) {
        reason = fmt::format(FMT_STRING("result {}, status {}"), response.m_nResult, response.m_nHttpStatusCode);
        return std::nullopt;
    }
    const auto answer = host::ParseJson(response.m_strBody, reason);
    if (!answer || !answer->isObject() || !(*answer)["accepted"].isArray()) {
        reason = "an unreadable answer";
        return std::nullopt;
    }
    std::set<std::string> accepted;
    for (const Json::Value& id : (*answer)["accepted"]) {
        if (id.isString()) {
            accepted.insert(id.asString());
        }
    }
    return accepted;
}

}  // namespace

// Space for the text around the events and a comma after each of them is reserved.
size_t SenderOptions::MaxBytesOfEvents() const {
    const size_t around = sizeof(kBegin) + sizeof(kEnd) + maxEvents;
    return maxBytes > around ? maxBytes - around : 0;
}

CReportSender::CReportSender(COutbox& outbox, IHttp& http, const IClientState& domains, ITimeAndRandom& random,
                             const SenderOptions& options)
    : m_outbox(outbox),
      m_http(http),
      m_domains(domains),
      m_random(random),
      m_options(options),
      m_backoff(options.firstRetry, options.lastRetry),
      m_nMaxEvents(options.maxEvents) {
    m_retryTimer.setSingleShot(true);
    m_turnTimer.setSingleShot(true);
    m_turnTimer.setInterval(options.lastRetry);
    connect(&m_retryTimer, &QTimer::timeout, this, &CReportSender::Wake);
    connect(&m_turnTimer, &QTimer::timeout, this, [this] {
        m_nAfter = 0;
        Wake();
    });
}

CReportSender::~CReportSender() = default;

void CReportSender::Wake() {
    if (m_batch.empty() && !m_retryTimer.isActive()) {
        Send();
    }
}

void CReportSender::SendNow() {
    if (m_batch.empty()) {
        m_retryTimer.stop();
        m_nAfter = 0;
        Send();
    }
}

void CReportSender::Send() {
    const std::string server = m_domains.DomainUrl("api", core::url_data::kDomainBizDefault);
    if (server.empty()) {
        return;
    }
    bool failed = false;
    m_batch = m_outbox.Read(m_nAfter, m_nMaxEvents, m_options.MaxBytesOfEvents(), &failed);
    if (m_batch.empty() && failed) {
        Fail("the outbox can't be read");
        return;
    }
    if (m_batch.empty()) {
        // Only rejected events are left. They are retried in the next pass.
        if (m_outbox.IsEmpty()) {
            m_nAfter = 0;
        } else if (!m_turnTimer.isActive()) {
            m_turnTimer.start();
        }
        return;
    }
    HttpReqInfo request;
    request.m_enMethod = kHttpPost;
    request.m_strUrl = server + kPath;
    request.m_strBody = Body();
    request.m_nTimeoutSeconds += int(request.m_strBody.size() / kLeastBytesPerSecond);
    const unsigned long task = m_http.Start(
        request, [this](unsigned long, const HttpRspInfo& response) { OnAnswer(response); }, this, kHttpWorkPoolDefault,
        nullptr, nullptr);
    if (task == 0) {
        Fail("nothing was started");
    }
}

std::string CReportSender::Body() const {
    std::string body = kBegin;
    for (const OutboxEvent& event : m_batch) {
        body += (&event == &m_batch.front() ? "" : ",") + event.json;
    }
    return body + kEnd;
}

void CReportSender::OnAnswer(const HttpRspInfo& response) {
    std::string reason;
    const auto accepted = AcceptedIn(response, reason);
    if (!accepted) {
        IsRefusal(response) ? OnRefusal(reason) : Fail(reason);
        return;
    }
    const auto kept = std::stable_partition(m_batch.begin(), m_batch.end(),
                                            [&](const OutboxEvent& event) { return accepted->count(event.id) == 1; });
    if (kept != m_batch.end()) {
        // The server may accept the events behind this batch.
        m_nAfter = m_batch.back().number;
    }
    m_batch.erase(kept, m_batch.end());
    if (m_batch.empty()) {
        Fail("the server takes none of the events");
        return;
    }
    if (!m_outbox.Remove(m_batch)) {
        Fail("the outbox");
        return;
    }
    m_batch.clear();
    m_nMaxEvents = std::min(2 * m_nMaxEvents, m_options.maxEvents);
    m_backoff.Reset();
    if (m_bFailing) {
        m_bFailing = false;
        kLog.Info(FMT_STRING("Reports reach the server again"));
    }
    m_retryTimer.start(0);
}

// Halving needs no delay, since it ends soon. A server that rejects each single event gets the back-off.
void CReportSender::OnRefusal(const std::string& reason) {
    if (m_batch.size() > 1) {
        m_nMaxEvents = m_batch.size() / 2;
        m_batch.clear();
        m_retryTimer.start(0);
        return;
    }
    m_nAfter = m_batch.back().number;
    m_nMaxEvents = m_options.maxEvents;
    Fail(reason);
}

// Logs the first of consecutive failures only.
void CReportSender::Fail(const std::string& reason) {
    m_batch.clear();
    const auto wait = m_backoff.Next(m_random.RandomNumber());
    m_retryTimer.start(wait);
    if (!m_bFailing) {
        m_bFailing = true;
        kLog.Error(FMT_STRING("Reports wait for the server: {}"), reason);
    }
}
