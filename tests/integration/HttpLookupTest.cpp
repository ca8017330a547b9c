// A name lookup that hangs holds up neither the event loop nor the end of a request.
#include <dlfcn.h>
#include <netdb.h>

#include <condition_variable>
#include <cstring>
#include <mutex>

#include "RealHttpTest.h"

using namespace ::testing;

namespace {

constexpr char kHangingName[] = "hangs.example";
constexpr auto kLongestHang = std::chrono::seconds(60);  // so that a failure ends

/// The lookups of kHangingName in all threads. They fail when released.
class CHangingLookups {
public:
    void Hang() {
        std::unique_lock lock(m_mutex);
        ++m_nHanging;
        m_change.wait_for(lock, kLongestHang, [this] { return m_bReleased; });
        --m_nHanging;
    }

    void SetReleased(bool released) {
        const std::lock_guard lock(m_mutex);
        m_bReleased = released;
        m_change.notify_all();
    }

    int Count() {
        const std::lock_guard lock(m_mutex);
        return m_nHanging;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_change;
    int m_nHanging = 0;
    bool m_bReleased = false;
};

// Never destroyed: a thread of a lookup may outlive the test.
CHangingLookups& Lookups() {
    static auto* lookups = new CHangingLookups;
    return *lookups;
}

}  // namespace

// Replaces the function of the C library for libcurl, too.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* node, const char* service,
                                                                  const addrinfo* hints, addrinfo** result) {
    if (node && std::strcmp(node, kHangingName) == 0) {
        Lookups().Hang();
        return EAI_AGAIN;
    }
    static const auto original = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return original(node, service, hints, result);
}

namespace {

class HttpLookupTest : public RealHttpTest {
protected:
    HttpLookupTest() { Lookups().SetReleased(false); }
    ~HttpLookupTest() override {
        Lookups().SetReleased(true);
        EXPECT_TRUE(WaitUntil([] { return Lookups().Count() == 0; }));
    }

    void StartHanging(QObject* context, int timeoutSeconds) {
        HttpReqInfo request;
        request.m_strUrl = std::string("https://") + kHangingName + "/";
        request.m_nTimeoutSeconds = timeoutSeconds;
        http->Start(
            request,
            [this](unsigned long, const HttpRspInfo& response) {
                ++calls;
                answer = response;
            },
            context, kHttpWorkPoolDefault, nullptr, nullptr);
        ASSERT_TRUE(WaitUntil([] { return Lookups().Count() == 1; }));
    }
};

TEST_F(HttpLookupTest, RequestTimesOutWhenTheLookupHangs) {
    StartHanging(&guard, 1);

    ExpectEnd(kHttpTimedOut, 0);

    EXPECT_EQ(Lookups().Count(), 1);
}

TEST_F(HttpLookupTest, OtherRequestsAreAnsweredWhileALookupHangs) {
    StartHanging(&guard, 60);

    server.Answer(Exchange(Post("/")).connection, 200, "well");
    ASSERT_TRUE(WaitUntil([this] { return answer.has_value(); }));

    EXPECT_EQ(answer->m_strBody, "well");
    EXPECT_EQ(Lookups().Count(), 1);
}

TEST_F(HttpLookupTest, RequestEndsWithItsContextWhileTheLookupHangs) {
    auto context = std::make_unique<QObject>();
    StartHanging(context.get(), 60);

    context.reset();

    EXPECT_EQ(http->RunningCount(), 0);
    EXPECT_EQ(Lookups().Count(), 1);
    ExpectItGoesOn();
}

TEST_F(HttpLookupTest, ServiceIsDestroyedWhileALookupHangs) {
    StartHanging(&guard, 60);

    http.reset();

    EXPECT_EQ(Lookups().Count(), 1);
    EXPECT_EQ(calls, 0);
}

}  // namespace
