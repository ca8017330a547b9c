#include <gmock/gmock.h>

#include "HostSet.h"
#include "core/network/http.h"

using namespace ::testing;

namespace {

class HttpContractTest : public HostContractTest {
protected:
    HttpContractTest() { m_set->BeInternalBuild(); }

    struct Answer {
        unsigned long task = 0;
        HttpRspInfo response;
    };

    HttpReqInfo Post(const std::string& body) const {
        HttpReqInfo request;
        request.m_enMethod = kHttpPost;
        request.m_strUrl = m_set->HttpServer() + "/ad/search";
        request.m_strBody = body;
        return request;
    }

    unsigned long Start(const HttpReqInfo& request, QObject* by) {
        return core::network::http::StartRequest(
            request,
            [this](unsigned long task, const HttpRspInfo& response) {
                answers.push_back({task, response});
            },
            by, kHttpWorkPoolDefault, nullptr, nullptr);
    }

    unsigned long Arrived(const std::string& body) {
        const auto arrival = m_set->WaitForHttp();
        EXPECT_TRUE(arrival && arrival->isPost && arrival->body == body) << body;
        return arrival ? arrival->number : 0;
    }

    std::unique_ptr<QObject> guard = std::make_unique<QObject>();
    std::vector<Answer> answers;
};

TEST_F(HttpContractTest, AnAnswerComesOnceAndLaterWithItsTaskAndStatus) {
    const unsigned long task = Start(Post("ask"), guard.get());
    EXPECT_GT(task, 0u);
    EXPECT_THAT(answers, IsEmpty());

    const unsigned long arrival = Arrived("ask");
    m_set->AnswerHttp(arrival, 201, "answer");
    ASSERT_TRUE(WaitUntil([this] { return !answers.empty(); }));
    m_set->AnswerHttp(arrival, 200, "again");
    RunPosted();

    ASSERT_THAT(answers, SizeIs(1));
    EXPECT_EQ(answers[0].task, task);
    EXPECT_EQ(answers[0].response.m_nResult, kHttpOk);
    EXPECT_EQ(answers[0].response.m_nHttpStatusCode, 201);
    EXPECT_EQ(answers[0].response.m_strBody, "answer");
}

TEST_F(HttpContractTest, AStatusThatSaysFailureIsAnAnswerAllTheSame) {
    for (const int status : {400, 401, 404, 407, 413, 500, 503}) {
        SCOPED_TRACE(status);
        answers.clear();
        Start(Post("ask"), guard.get());
        m_set->AnswerHttp(Arrived("ask"), status, "words");

        ASSERT_TRUE(WaitUntil([this] { return !answers.empty(); }));
        EXPECT_EQ(answers[0].response.m_nResult, kHttpOk);
        EXPECT_EQ(answers[0].response.m_nHttpStatusCode, status);
        EXPECT_EQ(answers[0].response.m_strBody, "words");
    }
}

TEST_F(HttpContractTest, TasksAreNumberedFromOneAndNeverAlike) {
    EXPECT_EQ(Start(Post("first"), guard.get()), 1u);
    EXPECT_EQ(Start(Post("second"), guard.get()), 2u);
    m_set->AnswerHttp(Arrived("first"), 200, "");
    ASSERT_TRUE(WaitUntil([this] { return answers.size() == 1; }));
    EXPECT_EQ(Start(Post("third"), guard.get()), 3u);
}

TEST_F(HttpContractTest, AnswersFindTheirRequestInWhateverOrderTheyCome) {
    const unsigned long first = Start(Post("1"), guard.get());
    const unsigned long second = Start(Post("2"), guard.get());
    std::map<std::string, unsigned long> arrivals;
    for (int i = 0; i < 2; ++i) {
        const auto arrival = m_set->WaitForHttp();
        ASSERT_TRUE(arrival);
        arrivals[arrival->body] = arrival->number;
    }

    m_set->AnswerHttp(arrivals["2"], 200, "of 2");
    ASSERT_TRUE(WaitUntil([this] { return answers.size() == 1; }));
    m_set->AnswerHttp(arrivals["1"], 200, "of 1");
    ASSERT_TRUE(WaitUntil([this] { return answers.size() == 2; }));

    EXPECT_EQ(answers[0].task, second);
    EXPECT_EQ(answers[0].response.m_strBody, "of 2");
    EXPECT_EQ(answers[1].task, first);
    EXPECT_EQ(answers[1].response.m_strBody, "of 1");
}

TEST_F(HttpContractTest, NothingComesForAGuardThatIsGone) {
    Start(Post("lost"), guard.get());
    const unsigned long arrival = Arrived("lost");
    QObject other;

    guard.reset();
    m_set->AnswerHttp(arrival, 200, "late");
    Start(Post("kept"), &other);
    m_set->AnswerHttp(Arrived("kept"), 200, "");

    ASSERT_TRUE(WaitUntil([this] { return !answers.empty(); }));
    RunPosted();
    ASSERT_THAT(answers, SizeIs(1));
    EXPECT_EQ(answers[0].task, 2u);
}

TEST_F(HttpContractTest, WithoutAGuardNothingIsStarted) {
    EXPECT_EQ(Start(Post("ask"), nullptr), 0u);
    RunPosted();
    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(HttpContractTest, AnAnswerThatIsCutIsAFailureWithoutABody) {
    Start(Post("ask"), guard.get());
    m_set->CutHttp(Arrived("ask"));

    ASSERT_TRUE(WaitUntil([this] { return !answers.empty(); }));
    EXPECT_EQ(answers[0].response.m_nResult, kHttpCut);
    EXPECT_EQ(answers[0].response.m_strBody, "");
}

TEST_F(HttpContractTest, ACallbackMayStartAnotherRequestAndEndItsGuard) {
    int calls = 0;
    core::network::http::StartRequest(
        Post("first"),
        [&](unsigned long, const HttpRspInfo&) {
            ++calls;
            Start(Post("second"), guard.get());
            guard.reset();
        },
        guard.get(), kHttpWorkPoolDefault, nullptr, nullptr);
    m_set->AnswerHttp(Arrived("first"), 200, "");

    ASSERT_TRUE(WaitUntil([&] { return calls == 1; }));
    RunPosted();
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(answers, IsEmpty());
}

TEST_F(HttpContractTest, AnEmptyBodyIsSentAndAnswered) {
    Start(Post(""), guard.get());
    m_set->AnswerHttp(Arrived(""), 200, "");

    ASSERT_TRUE(WaitUntil([this] { return !answers.empty(); }));
    EXPECT_EQ(answers[0].response.m_nResult, kHttpOk);
    EXPECT_EQ(answers[0].response.m_strBody, "");
}

}  // namespace
