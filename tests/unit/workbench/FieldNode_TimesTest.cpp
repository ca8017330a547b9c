#include <QDateTime>

#include "support/ScriptedHostTest.h"
#include "workbench/FieldNode.h"

using namespace ::testing;

namespace {

class TimeTextTest : public ScriptedHostTest {
protected:
    std::string OffsetAt(qint64 differenceMs) {
        time.SetServerTime(QDateTime::currentMSecsSinceEpoch() + differenceMs);
        return readable::ServerOffset().toStdString();
    }
};

}  // namespace

TEST_F(TimeTextTest, AnOffsetHasItsSignAndItsTwoLargestUnits) {
    EXPECT_EQ(OffsetAt(3'603'000), "+1 h 3 s");
    EXPECT_EQ(OffsetAt(-86'400'000 - 7'200'000 - 5'000), "-1 d 2 h");
    EXPECT_EQ(OffsetAt(150'000), "+2 min 30 s");
}

TEST_F(TimeTextTest, ADifferenceBelowTwoSecondsIsNoOffset) {
    EXPECT_EQ(OffsetAt(1'000), "");
    EXPECT_EQ(OffsetAt(-1'500), "");
    EXPECT_EQ(OffsetAt(-2'600), "-3 s");
}
