// Users, pages, pushes and faults in turns. ZR_SOAK_MINUTES=20 shows whether the client's memory and files stay
// constant; by default there are a few turns only.
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <chrono>
#include <fstream>
#include <iostream>

#include "TourFixture.h"

using namespace ::testing;

namespace {

constexpr quint64 kUsers[] = {10001, 20003, 10007, 20002, 10004, 20012, 20008, 20018};
constexpr const char* kPushes[] = {R"({"premiumChange":{"delaySeconds":0,"needAll":true}})",
                                   R"({"premiumChange":{"delaySeconds":0,"needAll":false,"access":[13,15,74]}})",
                                   R"({"vipChange":{"windowSeconds":0}})",
                                   R"({"adNew":{"adType":3,"adPosition":7,"delay":0}})",
                                   R"({"adChange":{"adType":2,"adPosition":42,"delay":0}})"};
constexpr const char* kReplyFaults[] = {R"({"20982":{"bodyHex":"1a7f","times":1}})",
                                        R"({"20637":{"error":7,"times":1}})", R"({"20831":{"drop":true,"times":1}})",
                                        R"({"20982":{"delayMs":1500,"copies":2,"times":1}})"};
constexpr const char* kHttpFaults[] = {R"({"/ad/search":{"status":500,"times":1}})",
                                       R"({"/ad/search":{"body":"{\"code\":[","times":1}})",
                                       R"({"/report/events":{"cutBytes":1,"times":1}})"};

// Short enough to fill the workbench's lists, which keep their latest rows, in the first minutes.
constexpr int kTurnMs = 250;

struct Sample {
    double mebibytes = 0;
    int files = 0;
};

int OpenFiles() {
    return int(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size());
}

double Mebibytes() {
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    statm >> pages >> pages;
    return pages * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

class SoakTest : public TourTest {
protected:
    void LogInAs(quint64 user) {
        OpenTab(kTabUser);
        Select("WorkbenchUser", user);
        Click(Child<QPushButton>("WorkbenchLogin"));
        ASSERT_TRUE(WaitInRealTime([=] { return client->UserId() == user; })) << user;
    }

    void Turn(int turn) {
        messages.clear();
        statuses.clear();
        ASSERT_NO_FATAL_FAILURE(LogInAs(kUsers[turn % std::size(kUsers)]));
        Choose(kTabPages[size_t(turn) % kTabPages.size()].page.name);
        server->Put("/v1/clock", R"({"offsetMs":)" + std::to_string(turn * 15'000) + "}");
        if (turn % 5 == 0) {
            server->Put("/v1/faults", kReplyFaults[turn / 5 % std::size(kReplyFaults)]);
            server->Put("/v1/httpFaults", kHttpFaults[turn / 5 % std::size(kHttpFaults)]);
        }
        for (const char* push : kPushes) {
            server->Post("/v1/push", push);
        }
        if (turn % 40 == 39) {
            server->Post("/v1/drop", "{}");
        }
        OpenTab(EnTab(turn % (kTabUrls + 1)));
        EXPECT_TRUE(WaitInRealTime([this] { return IsWorkbenchSettled(); }));
    }
};

TEST_F(SoakTest, ClientKeepsItsMemoryAndFilesWhenItRunsForLong) {
    const double minutes = qEnvironmentVariable("ZR_SOAK_MINUTES", QStringLiteral("0.1")).toDouble();
    ASSERT_NO_FATAL_FAILURE(StartTour());
    ASSERT_NO_FATAL_FAILURE(Turn(0));
    const auto length = std::chrono::milliseconds(qint64(minutes * 60'000));
    std::vector<Sample> samples;
    QElapsedTimer time;
    time.start();

    for (int turn = 1; time.elapsed() < length.count(); ++turn) {
        ASSERT_NO_FATAL_FAILURE(Turn(turn));
        WaitInRealTime([&] { return time.elapsed() >= turn * kTurnMs; });
        if (time.elapsed() * 40 >= length.count() * qint64(samples.size() + 1)) {
            samples.push_back({Mebibytes(), OpenFiles()});
            std::cout << time.elapsed() / 1'000 << " s, turn " << turn << ": " << samples.back().mebibytes << " MiB, "
                      << samples.back().files << " files\n"
                      << std::flush;
        }
    }

    ASSERT_GE(samples.size(), 4u);
    EXPECT_LT(samples.back().files, 60);
    // The workbench fills its lists for some minutes.
    if (minutes >= 10) {
        const Sample middle = samples[samples.size() / 2];
        EXPECT_TRUE(WaitInRealTime([=] { return OpenFiles() == middle.files; })) << OpenFiles();
        for (size_t i = samples.size() / 2; i < samples.size(); ++i) {
            EXPECT_LT(samples[i].mebibytes, middle.mebibytes * 1.05) << i;
        }
    }
}

}  // namespace
