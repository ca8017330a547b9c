#include "Options.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

COptions Parse(const QStringList& arguments) {
    return COptions::Parse(QStringList{QStringLiteral("zrclient")} + arguments);
}

TEST(OptionsTest, TokenComesFromTheEnvironment) {
    qputenv("ZR_DEVSERVER_TOKEN", "T0ken");

    const COptions options = Parse({QStringLiteral("--server"), QStringLiteral("http://127.0.0.1:9956")});

    EXPECT_EQ(options.server, QUrl(QStringLiteral("http://127.0.0.1:9956")));
    EXPECT_EQ(options.token, QByteArray("T0ken"));
    qunsetenv("ZR_DEVSERVER_TOKEN");
}

}  // namespace
