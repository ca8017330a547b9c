#include "workbench/WireDecoder.h"

#include "support/ScriptedHostTest.h"
#include "workbench/WireCommands.h"

using namespace ::testing;

namespace {

class WireDecoderTest : public ScriptedHostTest {
protected:
    /// "name=value" for each leaf, with the names that lead to it.
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
        Flatten(decoder.Decode(type, bytes), "", out);
        return out;
    }

    CWireDecoder decoder;
};

}  // namespace

TEST_F(WireDecoderTest, KnowsEachTypeThatTheTableNames) {
    for (const wire::Command& command : wire::Commands()) {
        for (const char* type : {command.request, command.reply, command.push}) {
            EXPECT_TRUE(!type || decoder.Knows(type)) << type;
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
