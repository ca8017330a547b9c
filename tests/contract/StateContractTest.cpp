// Queries of the client's state: environment, language, configuration, interruption slots, domains, links.
#include <gmock/gmock.h>

#include "HostSet.h"
#include "core/config_common.h"
#include "core/environment.h"
#include "core/lang.h"
#include "core/langx.h"
#include "core/message_ids.h"
#include "core/uniform_resource_slot.h"
#include "core/url_data.h"
#include "core/url_linkid.h"

using namespace ::testing;
using core::config_common::GetJsonConfigByName;
using core::lang::GetLanguageID;
using core::uniform_resource_slot::IsAllowedToShowUniformResourceSlot;
using core::url_linkid::GetLinkUrlWithTargetLinkId;

namespace {

using EnvironmentContractTest = HostContractTest;
using LanguageContractTest = HostContractTest;
using ConfigContractTest = HostContractTest;
using SlotContractTest = HostContractTest;
using DomainContractTest = HostContractTest;
using LinkContractTest = HostContractTest;

std::string Domain(const std::string& key) {
    return core::url_data::GetDomainUrl(key, core::url_data::kDomainBizDefault);
}

}  // namespace

TEST_F(EnvironmentContractTest, BuildIsAReleaseExceptInInternalBuilds) {
    EXPECT_TRUE(core::environment::IsReleaseAppVersion());

    m_set->BeInternalBuild();

    EXPECT_FALSE(core::environment::IsReleaseAppVersion());
}

TEST_F(EnvironmentContractTest, EditionFollowsASwitch) {
    EXPECT_FALSE(core::environment::IsVelora());

    m_set->SetVelora(true);

    EXPECT_TRUE(core::environment::IsVelora());
}

TEST_F(EnvironmentContractTest, DeviceIdIsATextWithoutBlanksAndIsKept) {
    const std::string id = core::environment::GetDeviceId();
    EXPECT_THAT(id, AllOf(Not(IsEmpty()), Not(MatchesRegex(".*[ \t\n].*"))));

    m_set->BeInternalBuild();

    EXPECT_EQ(core::environment::GetDeviceId(), id);
}

TEST_F(LanguageContractTest, LanguageChangesBeforeItsMessage) {
    RecordMessage(core::kMsgLanguageChanged, [] { return std::to_string(GetLanguageID()); });

    m_set->SetLanguage(core::lang::kLanguageFrench);
    m_set->SetLanguage(core::lang::kLanguageJapanese);

    EXPECT_THAT(recorded, ElementsAre("20100: 7", "20100: 5"));
}

TEST_F(LanguageContractTest, ChineseIsSimplifiedOrTraditional) {
    const auto isChinese = [this](core::lang::LanguageId language) {
        m_set->SetLanguage(language);
        return core::lang::IsChinese();
    };

    EXPECT_TRUE(isChinese(core::lang::kLanguageSimplifiedChinese));
    EXPECT_TRUE(isChinese(core::lang::kLanguageTraditionalChinese));
    EXPECT_FALSE(isChinese(core::lang::kLanguageEnglish));
    EXPECT_FALSE(isChinese(core::lang::kLanguageJapanese));
    EXPECT_FALSE(isChinese(core::lang::kLanguageFrench));
}

TEST_F(LanguageContractTest, TextChangesBeforeTheMessage) {
    const auto text = [this] { return core::langx::tr(m_set->KnownTextId(), "fallback").toStdString(); };
    m_set->SetLanguage(core::lang::kLanguageEnglish);
    const std::string english = text();
    RecordMessage(core::kMsgLanguageChanged, text);

    m_set->SetLanguage(core::lang::kLanguageFrench);

    EXPECT_NE(english, "fallback");
    EXPECT_THAT(recorded, ElementsAre("20100: " + text()));
    EXPECT_THAT(text(), AllOf(Ne(english), Ne("fallback")));
}

TEST_F(LanguageContractTest, UnknownTextIsItsFallbackReadAsUtf8) {
    EXPECT_EQ(core::langx::tr(4'000'000'000U, "f\xC3\xBCr"), QStringLiteral("f\u00FCr"));
    EXPECT_EQ(core::langx::tr(4'000'000'000U, ""), QString());
}

TEST_F(ConfigContractTest, UnknownNameIsNull) {
    EXPECT_TRUE(GetJsonConfigByName("unknown").isNull());
    EXPECT_TRUE(GetJsonConfigByName("").isNull());
}

TEST_F(ConfigContractTest, ValueChangesBeforeItsMessage) {
    RecordMessage(core::kMsgCommonConfigChanged, [] { return GetJsonConfigByName("name").asString(); });

    m_set->SetConfig("name", "first");
    m_set->SetConfig("name", "second");

    EXPECT_THAT(recorded, ElementsAre("10250: first", "10250: second"));
}

TEST_F(ConfigContractTest, ValueMayHaveAnyJsonType) {
    Json::Value list(Json::arrayValue);
    list.append(1);
    list.append("two");
    for (const Json::Value& value : {Json::Value(7), Json::Value(true), Json::Value("text"), list}) {
        m_set->SetConfig("name", value);
        EXPECT_EQ(GetJsonConfigByName("name"), value);
    }
}

TEST_F(ConfigContractTest, CallerGetsACopy) {
    Json::Value value;
    value["member"] = 1;
    m_set->SetConfig("name", value);

    Json::Value copy = GetJsonConfigByName("name");
    copy["member"] = 2;

    EXPECT_EQ(GetJsonConfigByName("name"), value);
}

TEST_F(SlotContractTest, SlotIsAllowedUntilItIsForbidden) {
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));

    m_set->AllowSlot(kSlotAdPopup, false);
    EXPECT_FALSE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(ZRUniformResourceSlotType(99)));

    m_set->AllowSlot(kSlotAdPopup, true);
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
}

TEST_F(SlotContractTest, QueryReservesNothing) {
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
}

TEST_F(DomainContractTest, UnknownKeyIsEmpty) {
    EXPECT_EQ(Domain("unknown"), "");
}

TEST_F(DomainContractTest, UrlIsTheLastOneWithoutASlashAtItsEnd) {
    m_set->SetDomain("api", "https://a.example");
    m_set->SetDomain("api", "https://b.example:8080/base");

    EXPECT_EQ(Domain("api"), "https://b.example:8080/base");
}

TEST_F(LinkContractTest, UrlIsEmptyForAnUnknownLink) {
    EXPECT_EQ(GetLinkUrlWithTargetLinkId(202011732, 0), "");

    m_set->SetLink(202011732, "https://a.example/");

    EXPECT_EQ(GetLinkUrlWithTargetLinkId(202011733, 0), "");
    EXPECT_EQ(GetLinkUrlWithTargetLinkId(0, 0), "");
    // a negative id that a caller did not refuse
    EXPECT_EQ(GetLinkUrlWithTargetLinkId(static_cast<unsigned long>(-1), 0), "");
}

TEST_F(LinkContractTest, UrlIsTheLastOneOfTheServer) {
    m_set->SetLink(202011732, "https://a.example/");
    m_set->SetLink(202011732, "https://b.example/page?x=1&y=\xC3\xA9");

    EXPECT_EQ(GetLinkUrlWithTargetLinkId(202011732, 0), "https://b.example/page?x=1&y=\xC3\xA9");
    EXPECT_EQ(GetLinkUrlWithTargetLinkId(202011732, 5), "https://b.example/page?x=1&y=\xC3\xA9");
}

TEST_F(LinkContractTest, LinkOfAReplacedTableIsUnknown) {
    m_set->SetLink(1, "https://a.example/");
    m_set->SetLink(2, "https://b.example/");

    EXPECT_EQ(GetLinkUrlWithTargetLinkId(1, 0), "");
    EXPECT_EQ(GetLinkUrlWithTargetLinkId(2, 0), "https://b.example/");
}
