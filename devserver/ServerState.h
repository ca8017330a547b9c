#pragma once

#include <QtGlobal>
#include <cstdint>

#include "Faults.h"
#include "HttpFaults.h"
#include "ReceivedLog.h"
#include "ReportSink.h"
#include "Scenario.h"

namespace devserver {

/// One request over HTTP, and how it was answered.
struct ReceivedRequest {
    uint64_t number = 0;  // from 1 upwards, without gaps
    std::string method;
    std::string path;
    WebHeaders headers;
    std::string body;
    int status = 0;  // 0 for none at all
};

/// All that a client or a tester can change or ask for. Main thread only.
struct ServerState {
    explicit ServerState(CScenario initial) : scenario(std::move(initial)) {}

    CScenario scenario;
    CFaults faults;
    CReceivedLog received;
    CHttpFaults httpFaults;
    CBoundedLog<ReceivedRequest> requests;
    CReportSink reports;
    int64_t clockOffsetMs = 0;
    quint16 httpPort = 0;  // known once the server listens

    /// Milliseconds since 1970 by the local clock, moved by the offset.
    int64_t ServerTimeMs() const;
};

}  // namespace devserver
