// Two users, their answers, and a push with its delay, in every order that can come about.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <map>
#include <tuple>

#include "Premium/PremiumTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

enum Step {
    kFirstLogin,
    kFirstAnswer,
    kLogout,
    kSecondLogin,
    kSecondAnswer,
    kPushComes,
    kDelayEnds,
    kPushedAnswer,
    kSteps,
};

const char* const kStepNames[] = {"first login",   "first answer", "logout",           "second login",
                                  "second answer", "push",         "end of its delay", "answer to the pushed request"};

using Order = std::array<Step, kSteps>;

bool ComesAbout(const Order& order) {
    std::array<int, kSteps> at{};
    for (int i = 0; i < kSteps; ++i) {
        at[size_t(order[size_t(i)])] = i;
    }
    const auto inOrder = [&at](std::initializer_list<Step> steps) {
        return std::is_sorted(steps.begin(), steps.end(), [&at](Step a, Step b) { return at[a] < at[b]; });
    };
    return inOrder({kFirstLogin, kLogout, kSecondLogin, kSecondAnswer}) && inOrder({kFirstLogin, kFirstAnswer}) &&
           inOrder({kPushComes, kDelayEnds, kPushedAnswer});
}

std::vector<Order> AllOrders() {
    std::vector<Order> orders;
    Order order{};
    for (int step = 0; step < kSteps; ++step) {
        order[size_t(step)] = Step(step);
    }
    do {
        if (ComesAbout(order)) {
            orders.push_back(order);
        }
    } while (std::next_permutation(order.begin(), order.end()));
    return orders;
}

struct ServersAnswer {
    std::vector<int> rights;
    int version;
    bool isWaitedFor;
};

const std::map<Step, ServersAnswer> kAnswers = {
    {kFirstAnswer, {{13, 14}, 1, true}}, {kSecondAnswer, {{14, 15}, 2, true}}, {kPushedAnswer, {{13, 16}, 3, false}}};
const std::map<Step, Step> kAnswerOf = {
    {kFirstLogin, kFirstAnswer}, {kSecondLogin, kSecondAnswer}, {kDelayEnds, kPushedAnswer}};

/// The expected effects so far, by the rules.
struct Expected {
    uint64_t user = 0;
    unsigned long lastSession = 0;
    std::map<Step, unsigned long> sessions;  // by the answer that each waits for
    PremiumTable table;
    std::vector<BusMessage> messages;
    std::vector<StoreSave> saves;
    std::vector<std::string> lines;

    void Sends(Step step) {
        sessions[kAnswerOf.at(step)] = ++lastSession;
        lines.push_back("[Premium] Send Request For All Premium Access, Session = " + std::to_string(lastSession) +
                        ", Server Push = " + (step == kDelayEnds ? "true" : "false"));
    }

    void LogsIn(Step step, uint64_t who) {
        user = who;
        lines.emplace_back("[Premium] User Login Received, Request All Premium Data From Server");
        Sends(step);
    }

    void LogsOut() {
        user = 0;
        table.clear();
    }

    void IsAnswered(Step step, bool good) {
        const ServersAnswer& answer = kAnswers.at(step);
        const unsigned long session = sessions.at(step);
        if (!good) {
            lines.push_back("[Premium] Request Failed On Channel Error, Session = " + std::to_string(session) +
                            ", Error = -1");
            messages.push_back(BusMessage{kAnswered, 0, true, session, 2});
            return;
        }
        for (const int right : answer.rights) {
            table[Right(right)] = Record(right, answer.version);
        }
        messages.push_back(answer.isWaitedFor ? BusMessage{kAnswered, 0, true, session, 0}
                                              : BusMessage{kChanged, 0, false, 0, 0});
        saves.push_back(StoreSave{user, kSavedKey, SavedBytes(table)});
        lines.emplace_back("[Premium] Parse Response Success, Premium Data Updated And Saved");
    }
};

/// The orders that begin with this step, with this answer a failure; kSteps for none.
using Stories = std::tuple<Step, Step>;

class PremiumOrdersTest : public PremiumTest, public WithParamInterface<Stories> {
protected:
    bool IsGood(Step answer) const { return answer != std::get<1>(GetParam()); }

    void Do(Step step) {
        switch (step) {
            case kFirstLogin:
            case kSecondLogin:
                expected.LogsIn(step, step == kFirstLogin ? 501 : 502);
                account.Set(expected.user);
                manager->OnLogin();
                return;
            case kLogout:
                expected.LogsOut();
                account.Set(0);
                manager->OnLogout();
                return;
            case kPushComes:
                expected.lines.emplace_back(
                    "[Premium] Premium Change Push Received, Need All Access = true, "
                    "Custom Access Count = 0, Will Refresh After 10000 Ms");
                channel.Push(kPush, std::string("\x08\x0A\x10\x01"));
                return;
            case kDelayEnds:
                expected.Sends(step);
                time.Advance(10s);
                return;
            case kFirstAnswer:
            case kSecondAnswer:
            case kPushedAnswer: {
                expected.IsAnswered(step, IsGood(step));
                const ServersAnswer& answer = kAnswers.at(step);
                const unsigned long session = expected.sessions.at(step);
                if (IsGood(step)) {
                    channel.Reply(session, kRequest, Answer(answer.rights, answer.version));
                } else {
                    channel.Fail(session, kCSProtoTimedOut);
                }
                return;
            }
            case kSteps:
                break;
        }
        FAIL() << "There is no step " << int(step);
    }

    void Check() {
        EXPECT_EQ(manager->GetUIAccessData(), expected.table);
        EXPECT_EQ(bus.Sent(), expected.messages);
        EXPECT_EQ(store.Saves(), expected.saves);
        EXPECT_THAT(channel.Sent(), SizeIs(expected.lastSession));
        std::vector<std::string> lines;
        for (const LogLine& line : log.Lines()) {
            lines.push_back(line.text);
        }
        EXPECT_EQ(lines, expected.lines);
    }

    void Run(const Order& order) {
        account.Set(0);
        std::string story;
        for (const Step step : order) {
            story += std::string(story.empty() ? "" : ", ") + kStepNames[step];
            SCOPED_TRACE(story);
            Do(step);
            Check();
            if (HasFailure()) {
                return;
            }
        }
        time.Advance(30min);  // nothing is left to come before the hour
        Check();
    }

    Expected expected;
};

/// Runs `story` in a process of its own, which begins with all that is here now and takes nothing back.
void InChild(const std::function<void()>& story) {
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        story();
        std::cout.flush();
        std::fflush(nullptr);
        _exit(Test::HasFailure() ? 1 : 0);
    }
    ASSERT_GT(child, 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(PremiumOrderTableTest, ThereAreAsManyOrdersAsTheStepsAllow) {
    // the logins in a row with their first answer among what follows it: 4 ways; times 3 of 8 places for the push
    EXPECT_THAT(AllOrders(), SizeIs(4 * 56));
}

TEST_P(PremiumOrdersTest, LeaveTableStoreMessagesAndLinesAsTheRulesSay) {
    for (const Order& order : AllOrders()) {
        if (order[0] != std::get<0>(GetParam())) {
            continue;
        }
        InChild([&] { Run(order); });
        if (HasFailure()) {
            return;
        }
    }
}

std::string NameOf(const TestParamInfo<Stories>& row) {
    static const std::map<Step, std::string> kFailures = {{kSteps, "NothingFails"},
                                                          {kFirstAnswer, "FirstAnswerFails"},
                                                          {kSecondAnswer, "SecondAnswerFails"},
                                                          {kPushedAnswer, "PushedAnswerFails"}};
    const auto [begin, failure] = row.param;
    return (begin == kFirstLogin ? "LoginFirst" : "PushFirst") + kFailures.at(failure);
}

INSTANTIATE_TEST_SUITE_P(Stories, PremiumOrdersTest,
                         Combine(Values(kFirstLogin, kPushComes),
                                 Values(kSteps, kFirstAnswer, kSecondAnswer, kPushedAnswer)),
                         NameOf);

}  // namespace
