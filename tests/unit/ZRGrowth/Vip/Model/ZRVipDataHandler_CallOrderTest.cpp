// The order of log lines, requests and notifications of the VIP handler.
#include <QMetaMethod>
#include <memory>

#include "CallList.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/VipStatusTest.h"

using namespace ::testing;

namespace {

class VipHandlerOrderTest : public Test {
protected:
    VipHandlerOrderTest() { host.Install(); }
    ~VipHandlerOrderTest() override {
        handler.reset();
        host::Uninstall();
    }

    void Start() {
        handler = std::make_unique<CZRVipDataHandler>(nullptr);
        host.calls.clear();
    }

    void ServerAnswers(const vip_base_service::GetAppEntryMessageRsp& answer) {
        handler->RequestVipStatus();
        host.calls.clear();
        host.reply(1, kCSProtoOk, CSProtoData{20831, answer.SerializeAsString()}, nullptr);
    }

    CCallList host;
    std::unique_ptr<CZRVipDataHandler> handler;
};

TEST_F(VipHandlerOrderTest, TheBindingStandsBetweenItsTwoLines) {
    handler = std::make_unique<CZRVipDataHandler>(nullptr);

    EXPECT_THAT(host.calls, ElementsAre("[Vip] Vip Data Handler Module Init Begin", "bind push 20832",
                                        "[Vip] Vip Data Handler Module Init End, Push Callback Ready"));
}

TEST_F(VipHandlerOrderTest, ARequestIsLoggedAndThenSent) {
    Start();

    handler->RequestVipStatus();

    EXPECT_THAT(host.calls, ElementsAre("[Vip] Send Request For Vip Status From Server", "send 20831"));
}

TEST_F(VipHandlerOrderTest, AnAnswerIsLoggedAndThenTold) {
    Start();

    ServerAnswers(FullAnswer());

    EXPECT_THAT(host.calls, ElementsAre(StartsWith("[Vip] Vip Status Updated, Level = 3"), "send message 80052"));
}

TEST_F(VipHandlerOrderTest, AnAnswerWithoutBasicDataClearsAndThenTells) {
    Start();

    ServerAnswers({});

    EXPECT_THAT(host.calls, ElementsAre("[Vip] Clear Vip Status, Reset To Default", "send message 80052"));
}

TEST_F(VipHandlerOrderTest, APushIsLoggedAndThenWaits) {
    Start();

    host.push(0, kCSProtoOk, CSProtoData{20832, {}}, nullptr);

    EXPECT_THAT(host.calls,
                ElementsAre("[Vip] Vip Status Change Push Received, Will Refresh After 0 Ms", "post after 0"));
}

TEST_F(VipHandlerOrderTest, AnUnexpectedSubStateIsAssertedAndThenLogged) {
    Start();
    auto answer = FullAnswer();
    answer.mutable_data()->mutable_vip_basic_data()->set_new_vip_sub_state(9);
    ServerAnswers(answer);
    host.calls.clear();

    EXPECT_EQ(handler->GetVipEngineStatus(), -1);

    EXPECT_THAT(host.calls, ElementsAre("Unexpected New Vip Sub State While Active",
                                        "[Vip] Unexpected Sub State While Active, Sub State = 9"));
}

/// Reads the grade at each line of the log.
class CGradeReadingList : public CCallList {
public:
    void Write(const LogRecord& record) override {
        CCallList::Write(record);
        calls.back() += ", grade " + std::to_string(handler ? handler->GetVipGrade() : 0);
    }

    const CZRVipDataHandler* handler = nullptr;
};

TEST(VipHandlerClearTest, ClearIsLoggedAndThenResets) {
    CGradeReadingList host;
    host.Install();
    {
        CZRVipDataHandler handler(nullptr);
        handler.RequestVipStatus();
        host.reply(1, kCSProtoOk, CSProtoData{20831, FullAnswer().SerializeAsString()}, nullptr);
        host.handler = &handler;
        host.calls.clear();

        handler.ClearVipStatus();

        EXPECT_THAT(host.calls, ElementsAre("[Vip] Clear Vip Status, Reset To Default, grade 3"));
        EXPECT_EQ(handler.GetVipGrade(), 0);
    }
    host::Uninstall();
}

TEST(VipHandlerShapeTest, TheTwoCallbacksAreSlotsAndThereAreNoSignals) {
    const QMetaObject& meta = CZRVipDataHandler::staticMetaObject;

    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 2);
    const char* const kArguments = "(qulonglong,CSProtoError,CSProtoData,const CSResponseExt*)";
    EXPECT_EQ(meta.method(meta.methodOffset()).methodSignature(),
              QByteArray("OnRequestVipStatusCallback") + kArguments);
    EXPECT_EQ(meta.method(meta.methodOffset() + 1).methodSignature(),
              QByteArray("OnVipStatusChangedPushCallback") + kArguments);
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        EXPECT_EQ(meta.method(i).methodType(), QMetaMethod::Slot);
    }
}

}  // namespace
