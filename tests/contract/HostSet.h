#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/uniform_resource_slot.h"
#include "modules/ZRTabFrameKey.h"
#include "ui/zr_ui_theme.h"

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

/// A reported event as the server receives it.
struct EventArrival {
    std::string name;
    int code = 0;
    Json::Value params;
    int broker = 0;
    bool timed = false;
};

/// A set of services that is installed during its lifetime, and the other ends of their connections.
class IHostSet {
public:
    virtual ~IHostSet() = default;

    /// Runs the event loop until `condition` holds, in real or virtual time. Returns false after a timeout.
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;

    /// Returns the next request in order of arrival; empty after a timeout.
    virtual std::optional<ServerRequest> WaitForRequest() = 0;
    virtual void Reply(unsigned long session, uint32_t cmd, const std::string& body, int error = 0) = 0;
    virtual void Push(uint32_t cmd, const std::string& body) = 0;

    /// Cuts the connection. Commands fail until Connect.
    virtual void DropConnection() = 0;
    virtual void Connect() = 0;

    /// Logs in this user with these markets. 0 logs out the current user. Modules and bus are notified.
    virtual void SetUser(uint64_t userId, const std::vector<int>& markets = {}) = 0;

    /// A new set is a release build of the main edition.
    virtual void BeInternalBuild() = 0;
    virtual void SetVelora(bool velora) = 0;

    /// Changes the display language and notifies the bus.
    virtual void SetLanguage(int languageId) = 0;
    /// Returns the id of a text that differs in English and French.
    virtual unsigned int KnownTextId() = 0;

    /// Sets the server's time, in milliseconds since 1970. The clock continues from there.
    virtual void SetServerTime(int64_t ms) = 0;

    /// Replaces the common configuration, as the server does, and notifies the bus.
    virtual void SetConfig(const std::string& name, const Json::Value& value) = 0;

    /// Replaces the link table, as the server does, by one with this link alone.
    virtual void SetLink(unsigned long linkId, const std::string& url) = 0;

    virtual void AllowSlot(ZRUniformResourceSlotType slot, bool allowed) = 0;
    virtual void SetDomain(const std::string& key, const std::string& url) = 0;

    /// Changes the theme and notifies listeners and the bus.
    virtual void SetTheme(zr_ui_theme::Manager::Theme theme) = 0;

    /// Creates a main window with this tab and notifies the bus of the tab. `ClearMainFrame` ends it.
    virtual void SetMainFrame(EnZRTabFrameKey tab) = 0;
    virtual void ClearMainFrame() = 0;

    /// Returns the log's lines so far, assertions included.
    virtual std::vector<std::string> LogLines() = 0;

    /// Returns the URL of the HTTP server, without a trailing slash. Release builds refuse it, since it is not https.
    virtual std::string HttpServer() = 0;

    /// Returns the next HTTP request in order of arrival; empty after a timeout.
    virtual std::optional<HttpArrival> WaitForHttp() = 0;
    virtual void AnswerHttp(unsigned long number, int status, const std::string& body) = 0;

    /// Cuts the connection within the answer.
    virtual void CutHttp(unsigned long number) = 0;

    /// Modules load pictures only through widgets.
    virtual IPictures& Pictures() = 0;

    /// Returns the next requested picture below HttpServer()/picture, in order of arrival; empty after a timeout.
    virtual std::optional<unsigned long> WaitForPicture() = 0;
    /// Answers with an animation of two frames, or with status 404.
    virtual void AnswerPicture(unsigned long number, bool found) = 0;

    /// Waits for `count` events and returns all so far, in order of reporting; fewer after a timeout.
    virtual std::vector<EventArrival> WaitForEvents(size_t count) = 0;

    /// Reopens the store as a restarted client does. No effect on a set that keeps values in memory.
    virtual void ReopenStore() = 0;
};

/// Creates the set of this executable.
std::unique_ptr<IHostSet> MakeHostSet();

/// The fixture of cases that use only the contract and run on all sets.
class HostContractTest : public ::testing::Test {
protected:
    bool WaitUntil(const std::function<bool()>& condition) { return m_set->WaitUntil(condition); }

    /// Runs all tasks that were posted before the call, and the tasks that these post.
    void RunPosted();

    /// Records each such message in `recorded`: its number and what `state` returns at its delivery.
    void RecordMessage(unsigned int messageId, std::function<std::string()> state);

    std::vector<std::string> recorded;
    QObject subscriber;

    std::unique_ptr<IHostSet> m_set = MakeHostSet();
};
