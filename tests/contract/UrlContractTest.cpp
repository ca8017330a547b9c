#include "HostSet.h"
#include "core/urlhandler.h"

using namespace core::urlhandler;

namespace {

class UrlContractTest : public HostContractTest {
protected:
    static bool Open(const char* url) {
        return DispatchUrl(QString::fromLatin1(url), kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
    }
};

}  // namespace

TEST_F(UrlContractTest, TheWebAndTheClientsOwnPagesAreOpened) {
    EXPECT_TRUE(Open("https://a.example/path?query=1#part"));
    EXPECT_TRUE(Open("zrclient://page/news"));
}

TEST_F(UrlContractTest, WhatItIsOpenedForAndWithIsFree) {
    QObject context;

    EXPECT_TRUE(
        DispatchUrl(QStringLiteral("https://a.example/"), kBusinessAdClick, &context, QVariant(7), kFallbackMenu));
    EXPECT_TRUE(
        DispatchUrl(QStringLiteral("https://a.example/"), BusinessType(99), nullptr, QVariant(), FallbackMode(-1)));
}

TEST_F(UrlContractTest, AllElseIsRefused) {
    EXPECT_FALSE(Open(""));
    EXPECT_FALSE(Open("a.example"));
    EXPECT_FALSE(Open("https:///path"));
    EXPECT_FALSE(Open("http://a.example/"));
    EXPECT_FALSE(Open("file:///etc/hosts"));
    EXPECT_FALSE(Open("javascript:alert(1)"));
    EXPECT_FALSE(Open("ftp://a.example/"));
}

TEST_F(UrlContractTest, PlainHttpOfThisMachineIsForInternalBuildsAlone) {
    EXPECT_FALSE(Open("http://127.0.0.1:7000/"));

    m_set->BeInternalBuild();

    EXPECT_TRUE(Open("http://127.0.0.1:7000/"));
    EXPECT_TRUE(Open("http://localhost/"));
    EXPECT_FALSE(Open("http://a.example/"));
}
