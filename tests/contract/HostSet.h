#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class IPictures;

/// A request as the server received it.
struct ServerRequest {
    unsigned long session = 0;
    uint32_t cmd = 0;
    std::string body;
};

/// A request over HTTP as the server received it.
struct HttpArrival {
    unsigned long number = 0;  // for the answer
    bool isPost = false;
    std::string body;
};

/// An event as it was reported, and as the server is to get it.
struct EventArrival {
    std::string name;
    int code = 0;
    Json::Value params;
    int broker = 0;
    bool timed = false;
};

/// A set of services, joined to the contract while it lives, with the ends that the contract does not show.
class IHostSet {
public:
    virtual ~IHostSet() = default;

    /// Runs the event loop until `condition` holds; delays pass as the set's clock has it. False after a bound.
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;

    /// The next request, in order of arrival; empty if none comes.
    virtual std::optional<ServerRequest> WaitForRequest() = 0;
    virtual void Reply(unsigned long session, uint32_t cmd, const std::string& body, int error = 0) = 0;
    virtual void Push(uint32_t cmd, const std::string& body) = 0;

    /// Cuts the connection; what is sent until Connect finds none.
    virtual void DropConnection() = 0;
    virtual void Connect() = 0;

    /// 0 is nobody.
    virtual void SetUser(uint64_t userId) = 0;

    /// Sets begin as a build for release.
    virtual void BeInternalBuild() = 0;

    /// Where HTTP requests reach the test, without a slash at the end; internal builds alone may go there.
    virtual std::string HttpServer() = 0;

    /// The next request over HTTP, in order of arrival; empty if none comes.
    virtual std::optional<HttpArrival> WaitForHttp() = 0;
    virtual void AnswerHttp(unsigned long number, int status, const std::string& body) = 0;

    /// Ends the connection in the midst of the answer.
    virtual void CutHttp(unsigned long number) = 0;

    /// Modules have them by the widgets that show them.
    virtual IPictures& Pictures() = 0;

    /// The next picture that is asked for below HttpServer()/picture, in order of arrival; empty if none comes.
    virtual std::optional<unsigned long> WaitForPicture() = 0;
    /// A moving picture of two frames, or the words that there is none.
    virtual void AnswerPicture(unsigned long number, bool found) = 0;

    /// All events so far, in order of reporting, once there are `count`; fewer if no more come.
    virtual std::vector<EventArrival> WaitForEvents(size_t count) = 0;

    /// As a new start of the client finds it, where the set keeps values beyond the process.
    virtual void ReopenStore() = 0;
};

/// The set that this executable is about.
std::unique_ptr<IHostSet> MakeHostSet();

/// The cases are the same on all sets: they look at the contract alone.
class HostContractTest : public ::testing::Test {
protected:
    bool WaitUntil(const std::function<bool()>& condition) { return m_set->WaitUntil(condition); }

    /// Runs what was posted before the call, in whatever way, and what that posts.
    void RunPosted();

    std::unique_ptr<IHostSet> m_set = MakeHostSet();
};
