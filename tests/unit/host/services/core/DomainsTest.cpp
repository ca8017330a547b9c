#include "core/Domains.h"

#include <gmock/gmock.h>

namespace {

TEST(DomainsTest, AKeyNobodySetHasNoServer) {
    EXPECT_EQ(CDomains().DomainUrl("api"), "");
}

TEST(DomainsTest, AnAddressIsGivenWithoutSlashesAtItsEnd) {
    CDomains domains;
    domains.Set("api", "http://127.0.0.1:4711//");

    EXPECT_EQ(domains.DomainUrl("api"), "http://127.0.0.1:4711");
    EXPECT_EQ(domains.DomainUrl("other"), "");
}

TEST(DomainsTest, AChangeIsToldAndASecondWordOfItIsNot) {
    CDomains domains;
    int changes = 0;
    QObject::connect(&domains, &CDomains::Changed, &domains, [&] { ++changes; });

    domains.Set("api", "https://a.example");
    domains.Set("api", "https://a.example/");
    EXPECT_EQ(changes, 1);

    domains.Set("api", "");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(domains.DomainUrl("api"), "");
}

}  // namespace
