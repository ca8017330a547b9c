#include "log/LibraryMessages.h"

#include <google/protobuf/stubs/logging.h>

#include <QLoggingCategory>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

int g_nFormer = 0;

class LibraryMessagesTest : public ScriptedHostTest {
protected:
    LibraryMessagesTest() {
        g_nFormer = 0;
        m_fnBefore = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++g_nFormer; });
    }
    ~LibraryMessagesTest() override { qInstallMessageHandler(m_fnBefore); }

    std::vector<std::string> Modules() {
        std::vector<std::string> modules;
        for (const LogLine& line : log.Lines()) {
            modules.push_back(line.module);
        }
        return modules;
    }

    QtMessageHandler m_fnBefore = nullptr;
};

TEST_F(LibraryMessagesTest, MessageOfTheToolkitIsALogLineAndReachesTheFormerHandler) {
    {
        const CLibraryMessages messages;
        static const QLoggingCategory category("qt.svg", QtDebugMsg);
        qWarning("a %s", "warning");
        qCCritical(category, "bad drawing");
        qCInfo(category, "a remark");
    }
    qWarning("after its life");

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("default: a warning"), Error("qt.svg: bad drawing"), Info("qt.svg: a remark")));
    EXPECT_THAT(Modules(), Each("Host.Qt"));
    EXPECT_EQ(g_nFormer, 4);
}

TEST_F(LibraryMessagesTest, MessageOfProtobufIsALogLine) {
    {
        const CLibraryMessages messages;
        GOOGLE_LOG(ERROR) << "contains invalid UTF-8";
        GOOGLE_LOG(INFO) << "a remark";
    }

    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr(": contains invalid UTF-8")), Info(HasSubstr(": a remark"))));
    EXPECT_THAT(Modules(), Each("Host.Protobuf"));
}

}  // namespace
