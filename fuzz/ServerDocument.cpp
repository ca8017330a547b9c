// Input: a document of the server, as the common configuration or the link table. The same text also tests the host's
// JSON parser.
#include <gmock/gmock.h>
#include <json/writer.h>

#include "FuzzTarget.h"
#include "core/ServerDocument.h"
#include "framework/JsonText.h"
#include "support/ScriptedHost.h"

namespace {

using Configs = std::map<std::string, Json::Value>;

void CheckParsing(const std::string& text) {
    std::string error;
    const auto value = host::ParseJson(text, error);
    if (!value) {
        EXPECT_FALSE(error.empty());
        return;
    }
    EXPECT_EQ(text.find('\0'), std::string::npos);
    Json::StreamWriterBuilder writer;
    writer["emitUTF8"] = true;  // also writes malformed UTF-8 unchanged
    const std::string written = Json::writeString(writer, *value);
    const auto again = host::ParseJson(written, error);
    EXPECT_TRUE(again && *again == *value) << written << error;
}

void ExpectHolds(const CServerDocument& config, const Configs& configs) {
    for (const auto& [name, value] : configs) {
        EXPECT_EQ(config.Member(name), value) << name;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckParsing(text);

    const Configs before = {{"ai_chat", "as it was"}};
    Configs configs = before;
    std::string error;
    const bool taken = CServerDocument::Decode(text, configs, error);
    EXPECT_TRUE(taken || (configs == before && !error.empty()));

    CScriptedHost host;
    CCommonConfig config(host.store);
    config.Receive(R"({"ai_chat":"as it was"})");
    int changes = 0;
    QObject::connect(&config, &CServerDocument::Changed, &config, [&changes] { ++changes; });
    config.Receive(text);
    config.Receive(text);

    EXPECT_EQ(changes, configs == before ? 0 : 1);
    ExpectHolds(config, configs);
    // The saved configuration is the same at a start without the server.
    ExpectHolds(CCommonConfig(host.store), configs);
    host.log.Forget();
    host.store.Forget();
    return 0;
}
