// Input: the body of the ad server's answer to an exposure notice.
#include <gmock/gmock.h>

#include "Ad/Tools/ZRAdApiClient.h"
#include "FuzzTarget.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string body(reinterpret_cast<const char*>(data), size);
    const QList<QString> ads{QStringLiteral("18088"), QStringLiteral("18089")};
    CScriptedHost host;
    CZRAdApiClient client(nullptr);
    int answers = 0;
    QObject::connect(&client, &CZRAdApiClient::ExposeAdSuccess, &client, [&](const QList<QString>& told) {
        ++answers;
        EXPECT_EQ(told, ads);
    });
    QObject::connect(&client, &CZRAdApiClient::ExposeAdFailed, &client,
                     [&](const QString& code, const QString& content, const QList<QString>& told) {
                         ++answers;
                         EXPECT_THAT(code.toStdString(), AnyOf("1005", "2001"));
                         EXPECT_FALSE(content.isEmpty());
                         EXPECT_EQ(told, ads);
                     });
    client.ExposeAd(ZRAdTypeBanner, 7, ads, QStringLiteral("exposure"), 1'500, {});

    host.http.Answer(host.http.LastTask(), body);

    EXPECT_EQ(answers, 1) << "inside the callback, with nothing left for later";
    host.time.Settle();
    EXPECT_EQ(answers, 1);
    host.log.Forget();
    return 0;
}
