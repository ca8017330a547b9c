#include "support/ScriptedHttp.h"

#include <gtest/gtest.h>

#include <algorithm>

std::ostream& operator<<(std::ostream& stream, const StartedRequest& request) {
    return stream << request.task << ": " << (request.request.m_enMethod == kHttpPost ? "POST " : "GET ")
                  << request.request.m_strUrl << " " << request.request.m_strBody;
}

const std::vector<StartedRequest>& CScriptedHttp::Started() {
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
    return m_started;
}

unsigned long CScriptedHttp::LastTask() {
    const unsigned long task = m_started.empty() ? 0 : m_started.back().task;
    LookAt(task);
    return task;
}

void CScriptedHttp::Answer(unsigned long task, const std::string& body, int status) {
    Complete(task, {kHttpOk, status, body});
}

void CScriptedHttp::Fail(unsigned long task, HttpResult result, int status) {
    Complete(task, {result, status, {}});
}

int CScriptedHttp::OutstandingCount() const {
    return int(std::count_if(m_outstanding.begin(), m_outstanding.end(),
                             [](const auto& entry) { return bool(entry.second.guard); }));
}

void CScriptedHttp::Forget() {
    m_started.clear();
    m_lookedAt.clear();
}

void CScriptedHttp::CheckAllLookedAt() {
    for (size_t i = 0; i < m_started.size(); ++i) {
        if (!m_lookedAt[i]) {
            ADD_FAILURE() << "An unexpected request was started: " << m_started[i];
        }
    }
    std::fill(m_lookedAt.begin(), m_lookedAt.end(), true);
}

unsigned long CScriptedHttp::Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                   HttpWorkPool pool, core::network::http::Progress upload,
                                   core::network::http::Progress download) {
    const unsigned long task = m_refused.Next() ? 0 : ++m_nLastTask;
    m_started.push_back({task, request, pool, guard, upload || download});
    m_lookedAt.push_back(false);
    if (task != 0) {
        m_outstanding[task] = {guard, std::move(callback)};
    }
    return task;
}

void CScriptedHttp::Complete(unsigned long task, const HttpRspInfo& response) {
    LookAt(task);
    if (task == 0 || task > m_nLastTask) {
        ADD_FAILURE() << "No request has the task id " << task;
        return;
    }
    const auto found = m_outstanding.find(task);
    if (found == m_outstanding.end()) {
        return;
    }
    const Outstanding outstanding = std::move(found->second);
    m_outstanding.erase(found);
    if (outstanding.guard && outstanding.callback) {
        outstanding.callback(task, response);
    }
}

void CScriptedHttp::LookAt(unsigned long task) {
    for (size_t i = 0; i < m_started.size(); ++i) {
        if (m_started[i].task == task) {
            m_lookedAt[i] = true;
        }
    }
}
