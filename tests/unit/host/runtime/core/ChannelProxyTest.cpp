#include "core/IZRChannelProxy.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class ChannelProxyTest : public ScriptedHostTest {};

TEST_F(ChannelProxyTest, AChannelThatDoesNotExistTakesNothingAndIsLogged) {
    QObject context;

    EXPECT_EQ(IZRChannelProxy::SendCommand(CSChannelType(2), CSProtoData{1, ""}, nullptr, {}, &context), 0u);
    IZRChannelProxy::BindCallback(
        CSChannelType(0), 7, [](auto, auto, auto, auto) {}, &context);

    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("There is no channel 2"), Error("There is no channel 0")));
}

}  // namespace
