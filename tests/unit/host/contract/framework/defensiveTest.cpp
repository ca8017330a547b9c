#include "framework/defensive.h"

#include <gtest/gtest-spi.h>

#include <QFile>
#include <QTimer>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

/// Where the header has these words; 0 if nowhere.
int LineOf(const char* words) {
    QFile header(QStringLiteral(ZR_DEFENSIVE_HEADER));
    EXPECT_TRUE(header.open(QIODevice::ReadOnly));
    for (int line = 1; !header.atEnd(); ++line) {
        const QByteArray text = header.readLine();
        if (text.contains(words) && text.contains("__LINE__")) {
            return line;
        }
    }
    return 0;
}

class DefensiveTest : public ScriptedHostTest {
protected:
    QTimer sender;
    QObject receiver;
};

TEST_F(DefensiveTest, AConnectionThatIsMadeWorksAndRaisesNothing) {
    int calls = 0;

    FrameWork::ConnectChecked("ZRGrowth", &sender, &QTimer::timeout, &receiver, [&calls] { ++calls; });
    sender.start(10);
    time.Advance(std::chrono::milliseconds(10));

    EXPECT_EQ(calls, 1);
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(DefensiveTest, AFailedConnectionRaisesTheAssertionConnectionAtThisHeadersPlaceAndGoesOn) {
    QMetaObject::Connection connection;
    EXPECT_NONFATAL_FAILURE(connection = FrameWork::ConnectChecked("ZRGrowth", static_cast<QTimer*>(nullptr),
                                                                   &QTimer::timeout, &receiver, &QObject::deleteLater),
                            "QObject::connect(QTimer, QObject): invalid nullptr parameter");

    EXPECT_FALSE(connection);
    const auto assertions = log.Assertions();
    ASSERT_THAT(assertions, SizeIs(1));
    EXPECT_EQ(assertions[0].type, 3);
    EXPECT_EQ(assertions[0].detail, "");
    EXPECT_EQ(assertions[0].module, "ZRGrowth");
    EXPECT_EQ(assertions[0].file, "host/contract/framework/defensive.h");
    EXPECT_EQ(assertions[0].line, LineOf("\"connection\""));
    EXPECT_EQ(assertions[0].expression, "connection");
}

TEST_F(DefensiveTest, ASecondUniqueConnectionIsAFailedOne) {
    const auto connect = [this] {
        return FrameWork::ConnectChecked("ZRGrowth", &sender, &QTimer::timeout, &receiver, &QObject::deleteLater,
                                         Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
    };

    EXPECT_TRUE(connect());
    EXPECT_FALSE(connect());
    EXPECT_THAT(log.Assertions(), SizeIs(1));
}

TEST_F(DefensiveTest, TheOldStringFormIsCheckedToo) {
    QMetaObject::Connection connection;
    EXPECT_NONFATAL_FAILURE(
        connection = FrameWork::ConnectChecked("ZRGrowth", &sender, SIGNAL(timeout()), &receiver, SLOT(NoSuchSlot())),
        "QObject::connect: No such slot QObject::NoSuchSlot()");

    EXPECT_FALSE(connection);
    EXPECT_THAT(log.Assertions(), SizeIs(1));
}

}  // namespace
