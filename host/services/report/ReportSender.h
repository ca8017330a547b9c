#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <vector>

#include "channel/Backoff.h"
#include "core/network/http.h"
#include "report/Outbox.h"

class IClientState;
class IHttp;
class ITimeAndRandom;

struct SenderOptions {
    size_t maxEvents = 100;
    size_t maxBytes = 256 << 10;  // of a batch; a larger event is alone in its batch
    std::chrono::milliseconds firstRetry{500};
    std::chrono::milliseconds lastRetry{60'000};

    /// Returns the maximum total size of the events of a batch.
    size_t MaxBytesOfEvents() const;
};

/// Sends the events of the outbox to the server in batches, oldest first. Acknowledged events are removed. After a
/// failure the batch is retried with back-off. A batch that the server rejects for its content is halved until the
/// rejected event is alone. Rejected events are retried last, after the maximum delay.
/// Main thread. The arguments of the constructor must outlive the sender.
class CReportSender : public QObject {
    Q_OBJECT

public:
    CReportSender(COutbox& outbox, IHttp& http, const IClientState& domains, ITimeAndRandom& random,
                  const SenderOptions& options = {});
    ~CReportSender() override;

    /// Sends a batch if there are events. It has no effect during an exchange or a delay.
    void Wake();

    /// Ends a delay, since the server may be reachable again.
    void SendNow();

private:
    void Send();
    void OnAnswer(const HttpRspInfo& response);
    void OnRefusal(const std::string& reason);
    void Fail(const std::string& reason);
    std::string Body() const;

    COutbox& m_outbox;
    IHttp& m_http;
    const IClientState& m_domains;
    ITimeAndRandom& m_random;
    const SenderOptions m_options;
    CBackoff m_backoff;
    QTimer m_retryTimer;
    QTimer m_turnTimer;
    std::vector<OutboxEvent> m_batch;  // being sent; empty if none is
    size_t m_nMaxEvents;               // of the next batch
    int64_t m_nAfter = 0;              // the last event that the server rejected in this pass
    bool m_bFailing = false;
};
