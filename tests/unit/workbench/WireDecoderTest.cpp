#include "workbench/WireDecoder.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class WireDecoderTest : public ScriptedHostTest {
protected:
    /// "path.name=value" for each leaf.
    static void Flatten(const std::vector<FieldNode>& fields, const std::string& path, std::vector<std::string>& out) {
        for (const FieldNode& field : fields) {
            const std::string name = path + field.name.toStdString();
            if (field.children.empty()) {
                out.push_back(name + "=" + field.value.toStdString() + (field.raw ? " raw" : ""));
            }
            Flatten(field.children, name + ".", out);
        }
    }

    std::vector<std::string> Decode(const char* type, const std::string& bytes) const {
        std::vector<std::string> out;
        Flatten(wire::Decode(type, bytes), "", out);
        return out;
    }
};

}  // namespace

TEST_F(WireDecoderTest, KnowsEachTypeThatTheTableNames) {
    for (const wire::Command& command : wire::Commands()) {
        for (const char* type : {command.request, command.reply, command.push}) {
            EXPECT_TRUE(!type || Decode(type, "\xff") != Decode("", "\xff")) << type;
        }
    }
}

TEST_F(WireDecoderTest, ReadsFieldsByTheirNames) {
    // result_code 3, result_message "ok", data { entry_list { scene 4, is_all_open, detail { ids 7 } } }
    const std::string bytes("\x08\x03\x12\x02ok\x1a\x0a\x0a\x08\x08\x04\x10\x01\x1a\x02\x18\x07", 18);
    EXPECT_THAT(
        Decode("chat.GetChatEntryRsp", bytes),
        ElementsAre("result_code=3", "result_message=ok", "data.entry_list[0].scene=4",
                    "data.entry_list[0].is_all_open=true", "data.entry_list[0].stock_open_details[0].id_list[0]=7"));
}

TEST_F(WireDecoderTest, ShowsFieldsThatTheSchemaDoesNotKnow) {
    EXPECT_THAT(Decode("chat.GetChatEntryReq", std::string("\x48\x05\x52\x01\xff", 5)),
                ElementsAre("#9=5", "#10=ff raw"));
}

TEST_F(WireDecoderTest, ShowsBytesThatAreNoSuchMessageAsHex) {
    EXPECT_THAT(Decode("chat.GetChatEntryRsp", "\xff\x01"), ElementsAre("Bytes that are no such message=ff 01 raw"));
    EXPECT_THAT(Decode("", "\x02"), ElementsAre("Bytes without a schema=02 raw"));
    EXPECT_THAT(Decode("", ""), IsEmpty());
}

TEST_F(WireDecoderTest, ReadsRightsAndPushesOfThem) {
    // delay_seconds 5, need_all_access false, access_list 1 and 1000
    EXPECT_THAT(Decode(wire::Find(20837).push, std::string("\x08\x05\x10\x00\x18\x01\x18\xe8\x07", 9)),
                ElementsAre("delay_seconds=5", "need_all_access=false", "access_list[0]=1", "access_list[1]=1000"));
    // code 0, data { ui_data_and_access_data { access 5, access_data { access 5, has_permission } } }
    EXPECT_THAT(
        Decode(wire::Find(20637).reply, std::string("\x08\x00\x1a\x0a\x0a\x08\x08\x05\x1a\x04\x08\x05\x10\x01", 14)),
        ElementsAre("code=0", "data.ui_data_and_access_data[0].access=5",
                    "data.ui_data_and_access_data[0].access_data.access=5",
                    "data.ui_data_and_access_data[0].access_data.has_permission=true"));
    EXPECT_THAT(Decode(wire::Find(20637).request, std::string("\x08\x01", 2)), ElementsAre("need_all_access=true"));
    // data { vip_basic_data { vip_level 2, new_vip_state 1 }, has_vip_qualification }
    EXPECT_THAT(Decode(wire::Find(20831).reply, std::string("\x1a\x08\x0a\x04\x18\x02\x60\x01\x18\x01", 10)),
                ElementsAre("data.vip_basic_data.vip_level=2", "data.vip_basic_data.new_vip_state=1",
                            "data.has_vip_qualification=true"));
    EXPECT_THAT(Decode(wire::Find(20832).push, std::string("\x08\x1e", 2)), ElementsAre("refresh_window_seconds=30"));
}

TEST_F(WireDecoderTest, NamesWhatTheModuleSendsOnTheBus) {
    EXPECT_STREQ(wire::Find(80050).name, "PremiumDataChanged");
    EXPECT_STREQ(wire::Find(80051).name, "PremiumRequestAnswered");
    EXPECT_STREQ(wire::Find(80052).name, "VipStatusChanged");
    EXPECT_STREQ(wire::Find(20157).name, "TabFrameChanged");
    EXPECT_STREQ(wire::Find(20301).name, "AIChatHiddenButNotClosed");
    EXPECT_STREQ(wire::Find(20302).name, "AIChatPageSceneChanged");
    EXPECT_STREQ(wire::Find(80053).name, "");
}

TEST_F(WireDecoderTest, NamesTheNumbersOfAnEnumeration) {
    EXPECT_EQ(wire::EnumName("web_premium_access.PremiumAccess", 1000), QStringLiteral("MyPagePremium"));
    EXPECT_EQ(wire::EnumName("web_premium_access.PremiumAccess", 9), QString());
    EXPECT_EQ(wire::EnumName("web_premium_access.Nothing", 1), QString());
}

TEST_F(WireDecoderTest, HasARowForEachCommandAndPushOfTheModule) {
    for (const uint32_t command : {20982u, 20637u, 20831u, 20981u}) {
        EXPECT_TRUE(wire::Find(command).request && wire::Find(command).reply) << command;
    }
    for (const uint32_t push : {20145u, 20170u, 20171u, 20832u, 20837u}) {
        EXPECT_NE(wire::Find(push).push, nullptr) << push;
    }
}
