#pragma once

#include <QtGlobal>
#include <cstdint>

#include "Faults.h"
#include "HttpFaults.h"
#include "ReceivedLog.h"
#include "ReportSink.h"
#include "Scenario.h"

namespace devserver {

/// One HTTP request of a client, and the status of its answer.
struct ReceivedRequest {
    uint64_t number = 0;  // from 1 upwards, without gaps
    std::string method;
    std::string path;
    WebHeaders headers;
    std::string body;
    int status = 0;  // 0 without an answer
};

/// Everything that a client or a tester can change or query. Main thread only.
struct ServerState {
    explicit ServerState(CScenario initial) : scenario(std::move(initial)) {}

    CScenario scenario;
    CReplyFaults faults;
    CReceivedLog received;
    CHttpFaults httpFaults;
    CBoundedLog<ReceivedRequest> requests;
    CReportSink reports;
    int64_t clockOffsetMs = 0;
    quint16 httpPort = 0;  // set when the server listens

    /// Returns milliseconds since 1970: the local clock plus the offset.
    int64_t ServerTimeMs() const;

    /// Returns the origin of the HTTP port, without a slash at its end.
    std::string Origin() const;
};

}  // namespace devserver
