#include "framework/HostLog.h"

#include <stdexcept>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class HostLogTest : public ScriptedHostTest {
protected:
    host::CHostLog hostLog{"Area"};
};

TEST_F(HostLogTest, ALineNamesTheAreaAsItsModule) {
    hostLog.Info(FMT_STRING("{} of {}"), 1, 2);

    ASSERT_THAT(log.Lines(), ElementsAre(Info("1 of 2")));
    EXPECT_EQ(log.Lines()[0].module, "Host.Area");
}

TEST_F(HostLogTest, WhatAGuardedCallbackThrowsIsLoggedAndGoesNoFurther) {
    host::CallAndLogExceptions(hostLog, "A guest", [] { throw std::runtime_error("out of order"); });
    host::CallAndLogExceptions(hostLog, "A guest", [] { throw 42; });

    EXPECT_THAT(log.Lines(), ElementsAre(Error("A guest threw: out of order"),
                                         Error("A guest threw something that is no exception")));
}

}  // namespace
