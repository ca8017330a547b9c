#pragma once

#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <memory>
#include <string>

#include "framework/Ports.h"
#include "picture/PictureService.h"
#include "support/RawHttpServer.h"
#include "support/RealTime.h"
#include "support/ScriptedLog.h"
#include "support/ScriptedState.h"
#include "unit/host/services/picture/PictureBytes.h"

/// The picture service and a server whose bytes the test writes, over a real connection.
class RealPictureTest : public ::testing::Test {
protected:
    RealPictureTest() {
        host::Ports ports;
        ports.log = &log;
        host::Install(ports);
        environment.SetRelease(false);
        EXPECT_TRUE(server.Listen());
        Restart();
    }
    ~RealPictureTest() override {
        pictures.reset();
        log.Forget();
        host::Uninstall();
    }

    void Restart(const CPictureService::Options& options = {}) {
        pictures.reset();
        pictures = std::make_unique<CPictureService>(environment, folder.filePath(QStringLiteral("pictures")), options);
    }

    struct Result {
        int calls = 0;
        std::shared_ptr<const Picture> picture;
    };

    void Load(const QString& url, Result& result, QObject* by, const QSize& size = QSize(30, 15)) {
        pictures->Load(url, size, true, by, [&result](const std::shared_ptr<const Picture>& picture) {
            ++result.calls;
            result.picture = picture;
        });
    }
    QString Url(const char* path) const { return QString::fromStdString(server.Url()) + QString::fromLatin1(path); }
    bool WaitFor(const Result& result) {
        return WaitInRealTime([&] { return result.calls > 0; }) &&
               WaitInRealTime([this] { return pictures->RunningCount() == 0; });
    }
    RawHttpRequest Arrived() {
        EXPECT_TRUE(WaitInRealTime([this] { return server.Requests().size() > taken; }));
        return server.Requests().size() > taken ? server.Requests()[taken++] : RawHttpRequest();
    }
    void Answer(int line, const std::string& bytes, const QByteArray& headers = {}, int status = 200) {
        server.Answer(line, status, QByteArray::fromStdString(bytes), headers);
    }

    /// Loads a picture and answers. Returns whether it was decoded.
    bool Exchange(const std::string& bytes, const QByteArray& headers = {}, int status = 200) {
        Result result;
        Load(Url("/a"), result, &guard);
        Answer(Arrived().connection, bytes, headers, status);
        EXPECT_TRUE(WaitFor(result));
        EXPECT_EQ(result.calls, 1);
        return result.picture != nullptr;
    }
    void ExpectItGoesOn() { EXPECT_TRUE(Exchange(picture_bytes::Png())); }

    QTemporaryDir folder;
    CScriptedLog log;
    CScriptedEnvironment environment;
    CRawHttpServer server;
    QObject guard;
    std::unique_ptr<CPictureService> pictures;
    size_t taken = 0;
};
