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
    size_t mostEvents = 100;
    size_t mostBytes = 256 << 10;  // of a batch; a larger event is alone in its batch
    std::chrono::milliseconds firstRetry{500};
    std::chrono::milliseconds lastRetry{60'000};

    /// Of the events of a batch together.
    size_t MostBytesOfEvents() const;
};

/// Carries the outbox to the server, a batch at a time, the oldest events first. What the server says it has is
/// taken out; all else is sent again: after a wait that grows with each failure, and what the server alone would
/// not take after the longest wait, behind all others. A batch that it refuses for what is in it is halved until
/// the event stands alone that it would not take. Main thread.
/// What it is given must outlive it.
class CReportSender : public QObject {
    Q_OBJECT

public:
    CReportSender(COutbox& outbox, IHttp& http, const IClientState& domains, ITimeAndRandom& random,
                  const SenderOptions& options = {});
    ~CReportSender() override;

    /// There is something to send. Nothing happens while a batch is under way or a wait lasts.
    void Wake();

    /// The server may be back: ends a wait.
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
    std::vector<OutboxEvent> m_batch;  // under way; empty if none is
    size_t m_nMost;                    // events of the next batch
    int64_t m_nAfter = 0;              // the last event that the server would not take in this turn
    bool m_bFailing = false;
};
