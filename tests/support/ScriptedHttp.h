#pragma once

#include <QObject>
#include <QPointer>
#include <map>
#include <vector>

#include "core/IHttp.h"
#include "support/Failing.h"

/// A request as it was started. `guard` is for comparison only: it may be gone.
struct StartedRequest {
    unsigned long task = 0;
    HttpReqInfo request;
    HttpWorkPool pool = kHttpWorkPoolDefault;
    QObject* guard = nullptr;
    bool hasProgress = false;
};

std::ostream& operator<<(std::ostream& stream, const StartedRequest& request);

/// HTTP with the test at its other end. Answers run before the call that gives them returns. A request that no
/// test looked at (Started, LastTask, an answer to it) fails the test.
class CScriptedHttp : public IHttp {
public:
    const std::vector<StartedRequest>& Started();

    /// Of the last request; 0 if nothing was started.
    unsigned long LastTask();

    /// Ends an exchange well. One that has ended, or whose guard is gone, does nothing; one that never was fails
    /// the test.
    void Answer(unsigned long task, const std::string& body, int status = 200);

    /// Ends an exchange without an answer.
    void Fail(unsigned long task, HttpResult result, int status = 0);

    /// The starts that `which` names give 0 and call nothing.
    void RefuseStarts(Failing which) { m_refused = which; }

    /// Exchanges that wait for an answer and whose guard lives.
    int OutstandingCount() const;

    /// Counts as looking, and empties the record.
    void Forget();

    /// Fails the test for each request that nobody looked at.
    void CheckAllLookedAt();

    unsigned long Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                        HttpWorkPool pool, core::network::http::Progress upload,
                        core::network::http::Progress download) override;

private:
    struct Outstanding {
        QPointer<QObject> guard;
        core::network::http::Callback callback;
    };

    void Complete(unsigned long task, const HttpRspInfo& response);
    void LookAt(unsigned long task);

    unsigned long m_nLastTask = 0;
    std::vector<StartedRequest> m_started;
    std::vector<bool> m_lookedAt;  // beside m_started
    std::map<unsigned long, Outstanding> m_outstanding;
    Failing m_refused = Failing::Never();
};
