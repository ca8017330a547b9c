#include "support/ForkedRounds.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr unsigned kMostSeconds = 300;

struct Child {
    std::string test;
    FILE* printed = nullptr;  // a file without a name
};

std::vector<std::string> AllTests() {
    std::vector<std::string> tests;
    const ::testing::UnitTest& unit = *::testing::UnitTest::GetInstance();
    for (int suite = 0; suite < unit.total_test_suite_count(); ++suite) {
        const ::testing::TestSuite& cases = *unit.GetTestSuite(suite);
        for (int test = 0; test < cases.total_test_count(); ++test) {
            tests.push_back(std::string(cases.name()) + "." + cases.GetTestInfo(test)->name());
        }
    }
    return tests;
}

size_t Said(const char* variable, size_t otherwise) {
    const char* const said = std::getenv(variable);
    return said ? std::strtoul(said, nullptr, 10) : otherwise;
}

/// Returns the tests of this shard. The children do not see the shard: each has its one test.
std::vector<std::string> OfThisShard(const std::vector<std::string>& tests) {
    const size_t shards = Said("GTEST_TOTAL_SHARDS", 1);
    std::vector<std::string> chosen;
    for (size_t index = Said("GTEST_SHARD_INDEX", 0); index < tests.size(); index += shards) {
        chosen.push_back(tests[index]);
    }
    unsetenv("GTEST_TOTAL_SHARDS");
    unsetenv("GTEST_SHARD_INDEX");
    return chosen;
}

[[noreturn]] void RunAsChild(const std::string& test, FILE* printed, const std::function<int()>& runTests) {
    dup2(fileno(printed), STDOUT_FILENO);
    dup2(fileno(printed), STDERR_FILENO);
    alarm(kMostSeconds);
    // A death test starts the program again, which must run that test alone and no rounds.
    unsetenv("ZR_ROUNDS");
    ::testing::GTEST_FLAG(filter) = test;
    const int result = runTests();
    std::cout.flush();
    std::fflush(nullptr);
#ifdef ZR_COVERAGE
    std::exit(result);  // writes the counters
#endif
    _exit(result);
}

class CChildren {
public:
    explicit CChildren(const std::function<int()>& runTests) : m_fnRunTests(runTests) {}

    void Start(const std::string& test) {
        Child child{test, std::tmpfile()};
        if (!child.printed) {
            throw std::runtime_error("there is no room for what a test prints");
        }
        std::cout.flush();
        std::fflush(nullptr);
        const pid_t pid = fork();
        if (pid == 0) {
            RunAsChild(test, child.printed, m_fnRunTests);
        }
        if (pid < 0) {
            throw std::runtime_error("a test can't have a process of its own");
        }
        m_running.emplace(pid, child);
    }

    void AwaitOne() {
        int status = 0;
        const pid_t pid = waitpid(-1, &status, 0);
        const auto found = m_running.find(pid);
        if (found == m_running.end()) {
            return;
        }
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            ++m_nFailed;
            ShowFailed(found->second, status);
        }
        std::fclose(found->second.printed);
        m_running.erase(found);
    }

    size_t Running() const { return m_running.size(); }
    int Failed() const { return m_nFailed; }

private:
    static void ShowFailed(const Child& child, int status) {
        std::cout << "FAILED " << child.test << ", status " << status << "\n";
        std::rewind(child.printed);
        for (int byte = std::fgetc(child.printed); byte != EOF; byte = std::fgetc(child.printed)) {
            std::cout.put(static_cast<char>(byte));
        }
    }

    const std::function<int()>& m_fnRunTests;
    std::map<pid_t, Child> m_running;
    int m_nFailed = 0;
};

int Run(size_t rounds, const std::function<int()>& runTests, size_t atATime) {
    std::vector<std::string> tests = OfThisShard(AllTests());
    CChildren children(runTests);
    const size_t seed = Said("ZR_SEED", std::random_device()());
    for (size_t round = 0; round < rounds; ++round) {
        std::shuffle(tests.begin(), tests.end(), std::mt19937(static_cast<unsigned>(seed + round)));
        for (const std::string& test : tests) {
            if (children.Running() == atATime) {
                children.AwaitOne();
            }
            children.Start(test);
        }
        while (children.Running() > 0) {
            children.AwaitOne();
        }
    }
    std::cout << rounds << " rounds of " << tests.size() << " tests, first seed " << seed << ": " << children.Failed()
              << " failed" << std::endl;
    return children.Failed() == 0 ? 0 : 1;
}

}  // namespace

int forked_rounds::RunOrRepeat(const std::function<int()>& runTests, size_t atATime) {
    return AreAskedFor() ? Run(Said("ZR_ROUNDS", 0), runTests, atATime) : runTests();
}

bool forked_rounds::AreAskedFor() {
    return Said("ZR_ROUNDS", 0) > 0;
}
