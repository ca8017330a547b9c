#pragma once

#include <QObject>
#include <QPointer>
#include <map>
#include <vector>

#include "core/IHttp.h"
#include "support/Failing.h"

/// A request as it was started. `guard` may be gone and is for comparison only.
struct StartedRequest {
    unsigned long task = 0;
    HttpReqInfo request;
    HttpWorkPool pool = kHttpWorkPoolDefault;
    QObject* guard = nullptr;
    bool hasProgress = false;
};

std::ostream& operator<<(std::ostream& stream, const StartedRequest& request);

/// HTTP; the test is the server. Answers run before the call that gives them returns. A request that no test looked at
/// (Started, LastTask, an answer to it) fails the test.
class CScriptedHttp : public IHttp {
public:
    const std::vector<StartedRequest>& Started();

    /// Task number of the last request. 0 if there was none.
    unsigned long LastTask();

    /// Answers a request. It does nothing for an ended request and for one whose guard is gone. An unknown number
    /// fails the test.
    void Answer(unsigned long task, const std::string& body, int status = 200);

    /// Fails a request without an answer.
    void Fail(unsigned long task, HttpResult result, int status = 0);

    /// The starts that `which` selects return 0 and call nothing.
    void RefuseStarts(Failing which) { m_refused = which; }

    /// Number of waiting requests whose guard lives.
    int OutstandingCount() const;

    /// Marks all requests as looked at and clears the record.
    void Forget();

    /// Fails the test for each request that no test looked at.
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
