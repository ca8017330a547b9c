// The action of a click on a VIP widget, and the page of the membership.
#include <climits>

#include "Ad/AdSamples.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/VipStatusTest.h"
#include "premium_svr.pb.h"
#include "ui/ZToast.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;

namespace {

constexpr auto kRight = EnPremiumAccess(101);
constexpr const char* kGoodTarget = R"({"active_premium_popup_info":{"target_url":"https://target.test/a"}})";

/// A record whose three link ids differ from each other and from every other number in it.
CPremiumUIAccessData RecordOf(int activationType, const std::string& otherInfo = "") {
    CPremiumUIAccessData record;
    record.nActivationType = activationType;
    record.strOtherInfo = QString::fromStdString(otherInfo);
    record.nMainBtnUrlID = 301;
    record.nDetailBtnUrlID = 302;
    record.nDetailSubBtnUrlID = 303;
    return record;
}

std::string ParseError(const std::string& reason) {
    return "[Vip] Parse strOtherInfo failed, error = " + reason;
}

std::string ClickFailed(int dataType) {
    return "[Vip] Click vip widget failed, btnUrlID = 0, access = 101, dataType = " + std::to_string(dataType);
}

class VipClickTest : public ScriptedHostTest {
protected:
    VipClickTest() {
        manager.Init();
        links.Set(301, "https://links.test/main");
        links.Set(302, "https://links.test/detail");
        links.Set(303, "https://links.test/sub");
        CZRPremiumManager::Singleton()->Init();
        log.Forget();
    }

    static void SetRecord(const CPremiumUIAccessData& record, EnPremiumAccess access = kRight) {
        CZRPremiumManager::Singleton()->SetUIAccessData(access, record);
    }

    void ClickOn(int dataType, QWidget* window = nullptr) {
        manager.HandleVipWidgetClicked(kRight, ZRVipUIDataType(dataType), window);
    }

    std::vector<std::string> OpenedUrls() {
        std::vector<std::string> opened;
        for (const OpenedUrl& url : urls.Opened()) {
            opened.push_back(url.url);
        }
        return opened;
    }

    void ExpectOpensTheLinkOfDetail() {
        EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/detail"));
        EXPECT_THAT(links.Asked(), ElementsAre(302ul));
        EXPECT_THAT(channel.Sent(), IsEmpty());
    }

    void ExpectActivates() {
        EXPECT_THAT(channel.Sent(), ElementsAre(Field(&SentCommand::cmd, 20981u)));
        EXPECT_THAT(OpenedUrls(), IsEmpty());
        EXPECT_THAT(links.Asked(), IsEmpty());
    }

    CZRVipManager manager;
};

struct LinkRow {
    int dataType;
    unsigned long linkId;
    const char* url;
};

class VipClickLinkTest : public VipClickTest, public WithParamInterface<LinkRow> {};

TEST_P(VipClickLinkTest, ClickOpensTheLinkOfItsTextSet) {
    SetRecord(RecordOf(5));
    const auto& [dataType, linkId, url] = GetParam();

    ClickOn(dataType);

    EXPECT_THAT(links.Asked(), ElementsAre(linkId));
    EXPECT_THAT(OpenedUrls(), ElementsAre(url));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Click vip widget, access = 101, dataType = " + std::to_string(dataType) +
                                 ", btnUrlID = " + std::to_string(linkId) + ", url = " + url)));
}

INSTANTIATE_TEST_SUITE_P(TextSets, VipClickLinkTest,
                         Values(LinkRow{1, 301, "https://links.test/main"},
                                LinkRow{2, 302, "https://links.test/detail"},
                                LinkRow{3, 303, "https://links.test/sub"}),
                         [](const auto& row) { return "TextSet" + std::to_string(row.param.dataType); });

TEST_F(VipClickTest, ClickFailsWhenTheTextSetHasNoName) {
    SetRecord(RecordOf(5));
    for (const int dataType : {0, 4, -1, INT_MIN, INT_MAX}) {
        ClickOn(dataType);

        EXPECT_THAT(log.Lines(), ElementsAre(Error(ClickFailed(dataType))));
        log.Forget();
    }
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, ClickFailsWhenTheLinkIdIsNotAboveZero) {
    links.Set(0, "https://links.test/zero");
    links.Set(static_cast<unsigned long>(-1), "https://links.test/wrapped");
    for (const int linkId : {0, -1, -302, INT_MIN}) {
        CPremiumUIAccessData record = RecordOf(5);
        record.nDetailBtnUrlID = linkId;
        SetRecord(record);

        ClickOn(2);

        EXPECT_THAT(log.Lines(), ElementsAre(Error(ClickFailed(2)))) << linkId;
        log.Forget();
    }
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, ClickOpensTheLinkWhenItsIdIsTheLeastOrTheGreatest) {
    for (const int linkId : {1, INT_MAX}) {
        links.Set(static_cast<unsigned long>(linkId), "https://links.test/" + std::to_string(linkId));
        CPremiumUIAccessData record = RecordOf(5);
        record.nDetailSubBtnUrlID = linkId;
        SetRecord(record);
        ClickOn(3);
    }
    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/1", "https://links.test/2147483647"));
}

TEST_F(VipClickTest, ClickFailsWhenTheRightHasNoRecord) {
    ClickOn(1);

    EXPECT_THAT(log.Lines(), ElementsAre(Error(ClickFailed(1))));
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, ClickReadsTheRecordOfItsOwnRight) {
    CPremiumUIAccessData other = RecordOf(6, kGoodTarget);
    SetRecord(other, EnPremiumAccess(102));
    SetRecord(RecordOf(5));

    ClickOn(2);

    ExpectOpensTheLinkOfDetail();
}

TEST_F(VipClickTest, ClickOpensNothingWhenTheTableHasNoSuchLink) {
    CPremiumUIAccessData record = RecordOf(5);
    record.nMainBtnUrlID = 999;
    SetRecord(record);

    ClickOn(1);

    EXPECT_THAT(links.Asked(), ElementsAre(999ul));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Click vip widget, access = 101, dataType = 1, btnUrlID = 999, url = "),
                            Error("[Vip] Open Vip Web Page failed, strUrl is empty")));
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, LinkIsReadAsUtf8) {
    links.Set(301, "https://links.test/\xE6\x9D\x83");
    SetRecord(RecordOf(5));

    ClickOn(1);

    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/\xE6\x9D\x83"));
    log.Forget();
}

struct TypeRow {
    int type;
    bool activates;
};

class VipClickTypeTest : public VipClickTest, public WithParamInterface<TypeRow> {};

TEST_P(VipClickTypeTest, OnlyAReadyRightIsActivated) {
    SetRecord(RecordOf(GetParam().type, kGoodTarget));

    ClickOn(2);

    GetParam().activates ? ExpectActivates() : ExpectOpensTheLinkOfDetail();
}

TEST_P(VipClickTypeTest, FurtherDataIsParsedForAReadyRightAlone) {
    SetRecord(RecordOf(GetParam().type, "}"));

    ClickOn(2);

    ExpectOpensTheLinkOfDetail();
    EXPECT_THAT(log.Lines(), SizeIs(GetParam().activates ? 2 : 1));
}

INSTANTIATE_TEST_SUITE_P(Types, VipClickTypeTest,
                         Values(TypeRow{0, false}, TypeRow{1, false}, TypeRow{2, false}, TypeRow{3, false},
                                TypeRow{4, false}, TypeRow{5, false}, TypeRow{6, true}, TypeRow{7, false},
                                TypeRow{-6, false}),
                         [](const auto& row) {
                             return (row.param.type < 0 ? "Minus" : "Type") + std::to_string(std::abs(row.param.type));
                         });

TEST_F(VipClickTest, AReadyRightIsActivatedWhateverTextSetItShows) {
    SetRecord(RecordOf(6, kGoodTarget));
    for (const int dataType : {1, 2, 3, 0, 4, -1}) {
        ClickOn(dataType);

        ExpectActivates();
        EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Active vip, access = 101, dataType = " +
                                                  std::to_string(dataType) + ", targetUrl = https://target.test/a")));
        channel.Forget();
        log.Forget();
    }
}

TEST_F(VipClickTest, AReadyRightIsActivatedWhenItHasNoLink) {
    CPremiumUIAccessData record;
    record.nActivationType = 6;
    record.strOtherInfo = QString::fromUtf8(kGoodTarget);
    SetRecord(record);

    ClickOn(2);

    ExpectActivates();
}

TEST_F(VipClickTest, ActivationIsOfTheClickedRight) {
    SetRecord(RecordOf(6, kGoodTarget));

    ClickOn(2);

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].body, std::string("\x08\x02\x10\x65", 4));  // operation 2, right 101
}

TEST_F(VipClickTest, ResultOfAnActivationIsOverTheGivenWindow) {
    SetRecord(RecordOf(6, kGoodTarget));
    QWidget window;
    QWidget other;

    ClickOn(2, &window);
    channel.Fail(channel.LastSession(), CSProtoError(3));
    time.Settle();

    EXPECT_THAT(window.findChildren<ZToast*>(), SizeIs(1));
    EXPECT_THAT(other.findChildren<ZToast*>(), IsEmpty());
    log.Forget();
}

TEST_F(VipClickTest, ActivationIsRequestedWhenItsWindowIsGone) {
    SetRecord(RecordOf(6, kGoodTarget));
    auto window = std::make_unique<QWidget>();
    const QPointer<QWidget> gone(window.get());
    window.reset();

    manager.HandleVipWidgetClicked(kRight, ZRVipUIDataMain, gone);
    ExpectActivates();
    channel.Fail(channel.LastSession(), CSProtoError(3));
    time.Settle();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Active vip, access = 101, dataType = 1, targetUrl = https://target.test/a"),
                            Error("[Vip] RequestActiveVip callback, receive cmd error, error = 3, cmd = 20981"),
                            Fatal("[Vip] Show toast failed, parent is empty, toastLangId = 292248")));
}

TEST_F(VipClickTest, ClickIsFinishedWhenThereIsNothingThatActivates) {
    CZRVipManager unstarted;
    SetRecord(RecordOf(6, kGoodTarget));

    unstarted.HandleVipWidgetClicked(kRight, ZRVipUIDataDetail, nullptr);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Active vip, access = 101, dataType = 2, targetUrl = https://target.test/a")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, LinkIsOpenedWhenTheManagerHasNotStarted) {
    CZRVipManager unstarted;
    SetRecord(RecordOf(5));

    unstarted.HandleVipWidgetClicked(kRight, ZRVipUIDataDetail, nullptr);

    ExpectOpensTheLinkOfDetail();
}

struct InfoRow {
    const char* name;
    std::string text;
    std::string target;                // empty: the click opens the link
    const char* parseError = nullptr;  // a part of the error; null: there is none
};

void PrintTo(const InfoRow& row, std::ostream* stream) {
    *stream << row.name;
}

class VipClickOtherInfoTest : public VipClickTest, public WithParamInterface<InfoRow> {};

TEST_P(VipClickOtherInfoTest, AReadyRightIsActivatedOnlyWithATarget) {
    const InfoRow& row = GetParam();
    SetRecord(RecordOf(6, row.text));

    EXPECT_NO_THROW(ClickOn(2));

    std::vector<Matcher<LogLine>> expected;
    if (row.parseError) {
        expected.push_back(Error(AllOf(StartsWith(ParseError("")), HasSubstr(row.parseError))));
    }
    if (row.target.empty()) {
        expected.push_back(Info(
            "[Vip] Click vip widget, access = 101, dataType = 2, btnUrlID = 302, url = https://links.test/detail"));
        ExpectOpensTheLinkOfDetail();
    } else {
        expected.push_back(Info("[Vip] Active vip, access = 101, dataType = 2, targetUrl = " + row.target));
        ExpectActivates();
    }
    EXPECT_THAT(log.Lines(), ElementsAreArray(expected));
}

std::string Nested(int depth, char open, char close) {
    return std::string(size_t(depth), open) + std::string(size_t(depth), close);
}

// The reader's default rules allow comments, trailing commas, a byte-order mark and text behind the value.
const std::string kTarget = "https://target.test/a";
const InfoRow kInfoRows[] = {
    {"Empty", "", ""},
    {"Good", kGoodTarget, kTarget},
    {"OtherMembersBeside", R"({"a":[1],"active_premium_popup_info":{"x":{},"target_url":"https://target.test/a"}})",
     kTarget},
    {"Comment", R"(/* c */{"active_premium_popup_info":{"target_url":"https://target.test/a"}})", kTarget},
    {"TrailingComma", R"({"active_premium_popup_info":{"target_url":"https://target.test/a",},})", kTarget},
    {"JunkBehind", std::string(kGoodTarget) + "}]x", kTarget},
    {"ByteOrderMark", std::string("\xEF\xBB\xBF") + kGoodTarget, kTarget},
    {"ChineseTarget", "{\"active_premium_popup_info\":{\"target_url\":\"zrclient://\xE6\x9D\x83\"}}",
     "zrclient://\xE6\x9D\x83"},
    {"EscapedTarget", R"({"active_premium_popup_info":{"target_url":"https:\/\/target.test\u002fa"}})", kTarget},
    {"BracesInTheTarget", R"({"active_premium_popup_info":{"target_url":"{}"}})", "{}"},
    {"BlankTarget", R"({"active_premium_popup_info":{"target_url":" "}})", " "},
    {"LastOfTwo", R"({"active_premium_popup_info":{"target_url":"x","target_url":"https://target.test/a"}})", kTarget},
    {"NoObject", "{}", ""},
    {"NoInfo", R"({"target_url":"https://target.test/a"})", ""},
    {"OtherCase", R"({"active_premium_popup_info":{"Target_url":"https://target.test/a"}})", ""},
    {"InfoEmpty", R"({"active_premium_popup_info":{}})", ""},
    {"InfoNull", R"({"active_premium_popup_info":null})", ""},
    {"InfoText", R"({"active_premium_popup_info":"target_url"})", ""},
    {"InfoNumber", R"({"active_premium_popup_info":5})", ""},
    {"InfoTrue", R"({"active_premium_popup_info":true})", ""},
    {"InfoReal", R"({"active_premium_popup_info":1.5})", ""},
    {"InfoArray", R"({"active_premium_popup_info":[{"target_url":"https://target.test/a"}]})", ""},
    {"TargetEmpty", R"({"active_premium_popup_info":{"target_url":""}})", ""},
    {"TargetNull", R"({"active_premium_popup_info":{"target_url":null}})", ""},
    {"TargetNumber", R"({"active_premium_popup_info":{"target_url":5}})", ""},
    {"TargetReal", R"({"active_premium_popup_info":{"target_url":1e300}})", ""},
    {"TargetTrue", R"({"active_premium_popup_info":{"target_url":true}})", ""},
    {"TargetArray", R"({"active_premium_popup_info":{"target_url":["https://target.test/a"]}})", ""},
    {"TargetObject", R"({"active_premium_popup_info":{"target_url":{"target_url":"x"}}})", ""},
    {"RootNull", "null", ""},
    {"RootTrue", "true", ""},
    {"RootNumber", "5", ""},
    {"RootBigNumber", "18446744073709551615", ""},
    {"RootReal", "-1.5", ""},
    {"RootText", R"("active_premium_popup_info")", ""},
    {"RootArray", std::string("[") + kGoodTarget + "]", ""},
    {"RootEmptyArray", "[]", ""},
    {"Blank", " ", "", "Syntax error: value, object or array expected"},
    {"NoJson", "target", "", "Syntax error: value, object or array expected"},
    {"Brace", "}", "", "Syntax error: value, object or array expected"},
    {"LastBraceCut", R"({"active_premium_popup_info":{"target_url":"https://target.test/a"})", "",
     "Missing ',' or '}'"},
    {"TextCut", R"({"active_premium_popup_info":{"target_url":"https://ta)", "", "Syntax error"},
    {"JunkInside", R"({"active_premium_popup_info":{"target_url":"https://target.test/a"} x})", "",
     "Missing ',' or '}'"},
    {"Nested999", Nested(999, '[', ']'), ""},
    {"Nested2000Arrays", Nested(2000, '[', ']'), "", "Exceeded stackLimit"},
    {"Nested2000Open", std::string(2000, '['), "", "Exceeded stackLimit"},
    {"Nested2000InTheTarget",
     R"({"active_premium_popup_info":{"target_url":"https://target.test/a","x":)" + Nested(2000, '[', ']') + "}}", "",
     "Exceeded stackLimit"},
};

INSTANTIATE_TEST_SUITE_P(Texts, VipClickOtherInfoTest, ValuesIn(kInfoRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(VipClickTest, ParseErrorIsLoggedInFull) {
    SetRecord(RecordOf(6, R"({"active_premium_popup_info":{"target_url":"https://target.test/a"})"));

    ClickOn(0);

    EXPECT_THAT(log.Lines(), ElementsAre(Error(ParseError("* Line 1, Column 68\n  Missing ',' or '}' in object "
                                                          "declaration\n")),
                                         Error(ClickFailed(0))));
}

TEST_F(VipClickTest, LongTargetIsPassedOnWhole) {
    const std::string target = "https://target.test/" + std::string(10'000, 'x');
    SetRecord(RecordOf(6, R"({"active_premium_popup_info":{"target_url":")" + target + "\"}}"));

    ClickOn(1);

    ExpectActivates();
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Active vip, access = 101, dataType = 1, targetUrl = " + target)));
}

TEST_F(VipClickTest, PageOpensInAWindowOfItsSize) {
    manager.OpenVipWebPage(QStringLiteral("https://vip.test/centre"));

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const OpenedUrl& opened = urls.Opened()[0];
    EXPECT_EQ(opened.url, "https://vip.test/centre");
    EXPECT_EQ(opened.businessType, 0);
    EXPECT_EQ(opened.context, nullptr);
    EXPECT_EQ(opened.fallbackMode, 1);
    EXPECT_STREQ(opened.extra.typeName(), "core::webview::ZRWebWindowInfo");
    const auto info = opened.extra.value<core::webview::ZRWebWindowInfo>();
    EXPECT_EQ(info.size, QSize(390, 848));
    EXPECT_EQ(info.minimumSize, QSize(390, 848));
    EXPECT_EQ(info.parent, nullptr);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipClickTest, ClickedLinkOpensInAWindowOfTheSameSize) {
    SetRecord(RecordOf(5));

    ClickOn(1);

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].extra.value<core::webview::ZRWebWindowInfo>().size, QSize(390, 848));
    EXPECT_EQ(urls.Opened()[0].fallbackMode, 1);
}

TEST_F(VipClickTest, PageWithoutUrlIsRefused) {
    for (const QString& url : {QString(), QStringLiteral("")}) {
        manager.OpenVipWebPage(url);

        EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Open Vip Web Page failed, strUrl is empty")));
        log.Forget();
    }
    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

TEST_F(VipClickTest, AnyOtherUrlIsTheHostsToRefuse) {
    manager.OpenVipWebPage(QStringLiteral(" "));

    EXPECT_THAT(OpenedUrls(), ElementsAre(" "));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(Not(HasSubstr("[Vip]")))));
}

struct MemberRow {
    const char* name;
    bool velora;
    uint32_t version;
    int state;
    uint32_t newState;
    bool isNew;
    bool member;
};

void PrintTo(const MemberRow& row, std::ostream* stream) {
    *stream << row.name;
}

class VipMemberTest : public ScriptedHostTest, public WithParamInterface<MemberRow> {};

TEST_P(VipMemberTest, MembershipIsOfTheSystemThatApplies) {
    const MemberRow& row = GetParam();
    environment.SetVelora(row.velora);
    CZRVipManager manager;
    EXPECT_FALSE(manager.IsVipMember());
    manager.Init();
    EXPECT_FALSE(manager.IsVipMember());
    auto answer = FullAnswer();
    answer.mutable_data()->mutable_vip_basic_data()->set_vip_version(row.version);
    answer.mutable_data()->mutable_vip_basic_data()->set_vip_state(row.state);
    answer.mutable_data()->mutable_vip_basic_data()->set_new_vip_state(row.newState);
    manager.OnLogin();

    channel.Reply(channel.LastSession(), 20831, answer);

    EXPECT_EQ(manager.IsNewVipSystem(), row.isNew);
    EXPECT_EQ(manager.IsVipMember(), row.member);
}

INSTANTIATE_TEST_SUITE_P(Users, VipMemberTest,
                         Values(MemberRow{"OlderMember", true, 0, 1, 0, false, true},
                                MemberRow{"OlderOther", true, 0, 0, 1, false, false},
                                MemberRow{"NewerMember", true, 1, 0, 1, true, true},
                                MemberRow{"NewerOther", true, 1, 1, 0, true, false},
                                MemberRow{"NewerExpired", true, 1, 1, 2, true, false},
                                MemberRow{"OlderStateTwo", true, 0, 2, 1, false, false},
                                MemberRow{"OlderStateNegative", true, 0, -1, 1, false, false},
                                MemberRow{"VersionTwo", true, 2, 1, 0, false, true},
                                MemberRow{"OtherEditionMember", false, 1, 1, 0, false, true},
                                MemberRow{"OtherEditionOther", false, 1, 0, 1, false, false}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
