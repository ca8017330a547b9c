#include <gmock/gmock.h>

#include <thread>

#include "HostSet.h"
#include "framework/Ports.h"
#include "framework/assertion.h"
#include "framework/log.h"

using namespace ::testing;

namespace {

void WriteLine(const QString& text, ZRLogType type = kZRLogInfo) {
    FrameWork::_WriteLogRaw("file.cpp", 7, "Function", type, "Module", text, -128);
}

// Before the host exists.
const bool g_isEarlyLineWritten = [] {
    WriteLine(QStringLiteral("early line"));
    return true;
}();

class LogContractTest : public HostContractTest {
protected:
    std::vector<std::string> LinesWith(const std::string& text) {
        std::vector<std::string> found;
        for (const std::string& line : m_set->LogLines()) {
            if (line.find(text) != std::string::npos) {
                found.push_back(line);
            }
        }
        return found;
    }
};

}  // namespace

TEST_F(LogContractTest, LineIsDroppedWhenNoHostIsInstalledYet) {
    ASSERT_TRUE(g_isEarlyLineWritten);
    WriteLine(QStringLiteral("line of now"));

    EXPECT_THAT(LinesWith("early line"), IsEmpty());
    EXPECT_THAT(LinesWith("line of now"), SizeIs(1));
}

TEST_F(LogContractTest, LineOfEachSeverityIsWritten) {
    for (const ZRLogType type : {kZRLogInfo, kZRLogError, kZRLogFatal}) {
        WriteLine(QStringLiteral("severity %1").arg(type), type);
        EXPECT_THAT(LinesWith("severity " + std::to_string(type)), SizeIs(1));
    }
}

TEST_F(LogContractTest, LineIsWrittenFromAnyThread) {
    std::thread([] { WriteLine(QStringLiteral("from a thread")); }).join();

    EXPECT_THAT(LinesWith("from a thread"), SizeIs(1));
}

TEST_F(LogContractTest, CallIsOneLineWhenItsTextHasControlCharacters) {
    WriteLine(QStringLiteral("first\nsecond\r\n\tthird"));

    const auto lines = LinesWith("first");
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_THAT(lines[0], AllOf(HasSubstr("second"), HasSubstr("third")));
}

TEST_F(LogContractTest, SourceAndModuleMayBeNull) {
    FrameWork::_WriteLogRaw(nullptr, 0, nullptr, kZRLogInfo, nullptr, QStringLiteral("without source"), 0);

    EXPECT_THAT(LinesWith("without source"), SizeIs(1));
}

TEST_F(LogContractTest, AssertionIsLoggedAndReturns) {
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "detail", "Module", "file.cpp", 7, "pointer");
    std::thread([] {
        FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", "Module", "file.cpp", 7, "connection");
    }).join();

    EXPECT_THAT(LinesWith("pointer"), ElementsAre(HasSubstr("Module")));
    EXPECT_THAT(LinesWith("connection"), ElementsAre(HasSubstr("Module")));
}
