#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <QByteArray>
#include <QPair>
#include <QVector>
#include <memory>
#include <string>

#include "ChannelClient.h"
#include "DevServer.h"

struct HttpAnswer {
    int status = 0;
    Json::Value body;

    std::string Error() const { return body.get("error", "").asString(); }
};

/// A server on free ports, with the users Ann (1: markets 2 and 5, one open scene), Bob (2: without AI chat)
/// and Cid (3: refused as "closed account"), and clients of it.
class DevServerTest : public testing::Test {
protected:
    using Headers = QVector<QPair<QByteArray, QByteArray>>;

    static constexpr const char* kToken = "test-token";
    static constexpr uint32_t kCmdChatEntry = 20982;

    DevServerTest();

    /// Returns a connected client, whose first configuration is taken.
    std::unique_ptr<ChannelClient> Connected();
    std::unique_ptr<ChannelClient> LoggedIn(uint64_t user);

    HttpAnswer Http(const char* method, const char* path, const std::string& body = {});
    HttpAnswer HttpWith(const Headers& headers, const char* method, const char* path, const std::string& body = {});

    devserver::CDevServer server;
};

/// Sends a request to a control interface and waits for the answer.
HttpAnswer HttpTo(quint16 port, const QVector<QPair<QByteArray, QByteArray>>& headers, const char* method,
                  const char* path, const std::string& body);

/// Returns null if the text is no JSON.
Json::Value FromJson(const std::string& text);
