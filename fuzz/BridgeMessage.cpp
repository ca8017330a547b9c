// Input: the text of a message that a page sends over the bridge.
#include <gmock/gmock.h>

#include <QUrl>
#include <optional>

#include "FuzzTarget.h"
#include "framework/JsonText.h"
#include "support/ScriptedHost.h"
#include "webview/WebBridge.h"

using namespace ::testing;

namespace {

struct Expected {
    bool called = false;
    std::optional<int> answered;  // the number of the call
};

Expected ExpectedOf(const std::string& bytes) {
    std::string error;
    const std::optional<Json::Value> message = host::ParseJson(bytes, error);
    if (!message || !message->isObject() || !(*message)["page"].isString()) {
        return {};
    }
    const size_t page = (*message)["page"].asString().size();
    const Json::Value& id = (*message)["call"];
    const bool numbered = id.isInt() && id.asInt() > 0;
    if (page == 0 || page > 64 || !(message->isMember("name") || message->isMember("call"))) {
        return {};
    }
    Expected expected;
    expected.called = (numbered || id.isNull()) && (*message)["name"] == "echo" && (*message)["params"].isObject();
    if (numbered) {
        expected.answered = id.asInt();
    }
    return expected;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The engine delivers text, in which damaged bytes are already replaced.
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    CScriptedHost host;
    Json::Value config;
    config["origins"].append("https://ours.test");
    host.state.config.Set("web_bridge", config);
    std::vector<std::string> sent;
    int calls = 0;
    host::web::CWebBridge bridge([] { return QUrl(QStringLiteral("https://ours.test/")); },
                                 [&sent](const QString& message) { sent.push_back(message.toStdString()); });
    bridge.Register(
        QStringLiteral("echo"),
        [&calls](const Json::Value& params, int call) {
            EXPECT_TRUE(params.isObject());
            EXPECT_EQ(call, 1);
            ++calls;
            return std::make_shared<Json::Value>(params);
        },
        nullptr);
    bridge.BeginLoad(true);
    const Expected expected = ExpectedOf(text.toStdString());

    bridge.Receive(text);

    EXPECT_EQ(calls, int(expected.called));
    EXPECT_EQ(sent.size(), size_t(expected.answered.has_value()));
    for (const std::string& message : sent) {
        std::string error;
        const std::optional<Json::Value> answer = host::ParseJson(message, error);
        EXPECT_TRUE(answer) << message << error;
        EXPECT_EQ((*answer)["call"].asInt(), *expected.answered);
        EXPECT_EQ(answer->isMember("answer"), expected.called);
        EXPECT_EQ(answer->isMember("error"), !expected.called);
    }
    host.log.Forget();
    return 0;
}
