// Answers that parse and are absurd, and how much work they make.
#include <algorithm>
#include <ctime>

#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

constexpr int kMany = 46'000;
constexpr size_t kMebibyte = 1024 * 1024;

class PremiumBadInputTest : public PremiumTest {
protected:
    /// Answers with success and gives the CPU time that the handling took.
    std::chrono::nanoseconds TimeOf(const std::string& answer) {
        manager->OnLogout();
        const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(false);
        const auto begin = ThreadTime();
        channel.Reply(session, kRequest, answer);
        const auto took = ThreadTime() - begin;
        Forget();
        return took;
    }

    std::chrono::nanoseconds BestTimeOf(const std::string& answer) { return std::min(TimeOf(answer), TimeOf(answer)); }

    /// Half as many rights as elements, from the last to the first and each of them twice.
    static std::string ManyRights(int elements) {
        PremiumAnswer answer = Answer({});
        for (int i = 0; i < elements; ++i) {
            const int right = (elements - i + 1) / 2;
            auto* element = answer.mutable_data()->add_ui_data_and_access_data();
            element->set_access(right);
            element->mutable_ui_data()->set_access(right);
            element->mutable_ui_data()->mutable_ui_text()->set_main_title(std::to_string(i));
            element->mutable_access_data()->set_access(right);
            element->mutable_access_data()->set_days_left(i);
        }
        return answer.SerializeAsString();
    }

private:
    static std::chrono::nanoseconds ThreadTime() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }
};

struct Malformed {
    const char* name;
    std::string bytes;
};

class MalformedPremiumBytesTest : public PremiumTest, public WithParamInterface<Malformed> {};

TEST_P(MalformedPremiumBytesTest, AreNeitherAnAnswerNorAPushNorASavedTable) {
    const std::string& bytes = GetParam().bytes;
    TableHolds({13});

    const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(true);
    channel.Reply(session, kRequest, Bytes({0x08, 0x00}) + bytes);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2)));
    EXPECT_THAT(log.Lines().back(), Error("[Premium] Parse Response Failed, Invalid Protobuf Data"));

    channel.Push(kPush, Bytes({0x08, 0x00}) + bytes);
    time.Settle();
    EXPECT_THAT(log.Lines().back(), Error("[Premium] Parse Push Failed, Invalid Protobuf Data"));
    EXPECT_THAT(channel.Sent(), SizeIs(1));

    store.SetUserString(kUser, kSavedKey, Bytes({0x0A, 0x02, 0x08, 0x0E}) + bytes);
    CZRPremiumAccessModel restored;
    restored.InitPremiumData();
    EXPECT_TRUE(restored.GetUIAccessData().isEmpty());
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, MalformedPremiumBytesTest,
    Values(Malformed{"TagWithoutValue", Bytes({0x08})}, Malformed{"UnfinishedNumber", Bytes({0x08, 0x80})},
           Malformed{"NumberOfElevenBytes",
                     Bytes({0x08, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x01})},
           Malformed{"LengthBeyondTheEnd", Bytes({0x1A, 0x02, 0x08})},
           Malformed{"UnknownLengthBeyondTheEnd", Bytes({0xFA, 0x01, 0x05, 'u'})},
           Malformed{"HugeLength", Bytes({0x1A, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F})},
           Malformed{"FieldNumberZero", Bytes({0x00, 0x00})}, Malformed{"WireTypeSix", Bytes({0x0E, 0x00})},
           Malformed{"WireTypeSeven", Bytes({0xFF, 0x01, 0x00})},
           Malformed{"EndOfAGroupThatWasNotBegun", Bytes({0x0C})},
           Malformed{"GroupWithoutEnd", Bytes({0x0B, 0x08, 0x01})},
           Malformed{"FourBytesOfAnEightByteNumber", Bytes({0x09, 0x00, 0x00, 0x00, 0x00})}),
    [](const auto& row) { return row.param.name; });

TEST_F(PremiumBadInputTest, FortySixThousandElementsAreAllReadTheLaterOfEachRightCounts) {
    const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(false);

    channel.Reply(session, kRequest, ManyRights(kMany));

    const PremiumTable table = manager->GetUIAccessData();
    EXPECT_EQ(table.size(), kMany / 2);
    for (const int right : {1, 2, kMany / 4, kMany / 2}) {
        const int last = kMany - 2 * right + 1;
        EXPECT_EQ(table[Right(right)].nDaysLeft, last) << right;
        EXPECT_EQ(table[Right(right)].strMainTitle, QString::number(last)) << right;
    }
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    EXPECT_EQ(store.UserString(kUser, kSavedKey), SavedBytes(table));
}

TEST_F(PremiumBadInputTest, TenTimesTheElementsAreAboutTenTimesTheWork) {
    const auto few = BestTimeOf(ManyRights(kMany / 10));
    const auto many = BestTimeOf(ManyRights(kMany));

    // work that grows with the square would be a hundred times as much
    EXPECT_LT(many.count(), few.count() * 40);
}

TEST_F(PremiumBadInputTest, OneRightThousandsOfTimesIsOneRecordAndOneSave) {
    PremiumAnswer answer = Answer({});
    for (int version = 1; version <= kMany; ++version) {
        auto* element = answer.mutable_data()->add_ui_data_and_access_data();
        element->set_access(13);
        element->mutable_access_data()->set_access(13);
        element->mutable_access_data()->set_days_left(version);
    }

    ServerAnswers(answer);

    EXPECT_THAT(Rights(manager->GetUIAccessData()), ElementsAre(13));
    EXPECT_EQ(manager->GetAccessData(Right(13)).nDaysLeft, kMany);
    EXPECT_THAT(store.Saves(), SizeIs(1));
    EXPECT_THAT(bus.Sent(), SizeIs(1));
}

TEST_F(PremiumBadInputTest, ThousandsOfElementsThatAreAllDroppedLeaveTheTableAndSaveIt) {
    TableHolds({13});
    PremiumAnswer answer = Answer({});
    for (int i = 0; i < kMany; ++i) {
        answer.mutable_data()->add_ui_data_and_access_data()->mutable_ui_data()->set_access(i);
    }

    ServerAnswers(answer);

    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{kUser, kSavedKey, SavedBytes(Table({13}))}));
}

TEST_F(PremiumBadInputTest, TextsOfAMebibyteEachAreKeptWhole) {
    PremiumAnswer answer = Answer({13});
    auto* display = answer.mutable_data()->mutable_ui_data_and_access_data(0)->mutable_ui_data();
    display->set_ui_type(std::string(kMebibyte, 'a'));
    display->set_other_info(std::string(kMebibyte, 'b'));
    display->mutable_ui_text()->set_main_title(std::string(kMebibyte, 'c'));
    display->mutable_ui_text()->set_main_btn(std::string(kMebibyte, 'd'));
    display->mutable_ui_text()->set_detail_title(std::string(kMebibyte, 'e'));
    display->mutable_ui_text()->set_detail_sub_title(std::string(kMebibyte, 'f'));
    display->mutable_ui_text()->set_detail_btn(std::string(kMebibyte, 'g'));
    display->mutable_ui_text()->set_detail_sub_btn(std::string(kMebibyte, 'h'));

    ServerAnswers(answer);

    const CPremiumUIData shown = manager->GetUIData(Right(13));
    const auto letters = [](char letter) { return QString(int(kMebibyte), QLatin1Char(letter)); };
    EXPECT_TRUE(shown.strUIType == letters('a'));
    EXPECT_TRUE(shown.strOtherInfo == letters('b'));
    EXPECT_TRUE(shown.strMainTitle == letters('c'));
    EXPECT_TRUE(shown.strMainBtn == letters('d'));
    EXPECT_TRUE(shown.strDetailTitle == letters('e'));
    EXPECT_TRUE(shown.strDetailSubTitle == letters('f'));
    EXPECT_TRUE(shown.strDetailBtn == letters('g'));
    EXPECT_TRUE(shown.strDetailSubBtn == letters('h'));
    EXPECT_TRUE(store.UserString(kUser, kSavedKey) == SavedBytes(manager->GetUIAccessData()));
}

TEST_F(PremiumBadInputTest, ATextOfAMebibyteThatIsNoUtf8IsShownAsReplacementsAndSavedAsThem) {
    PremiumAnswer answer = Answer({13});
    answer.mutable_data()->mutable_ui_data_and_access_data(0)->mutable_ui_data()->set_other_info(
        std::string(kMebibyte, '\xFF'));

    ServerAnswers(answer);

    const QString shown = manager->GetUIData(Right(13)).strOtherInfo;
    EXPECT_EQ(shown.size(), int(kMebibyte));
    EXPECT_EQ(shown.count(QChar(QChar::ReplacementCharacter)), int(kMebibyte));
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    ASSERT_TRUE(saved.ParseFromString(*store.UserString(kUser, kSavedKey)));
    EXPECT_EQ(saved.ui_data_and_access_data(0).ui_data().other_info().substr(0, 6), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST_F(PremiumBadInputTest, TheLargestAndSmallestNumbersGoThroughTableAndStore) {
    PremiumAnswer answer = Answer({});
    for (const int number : {2147483647, -2147483647 - 1}) {
        auto* element = answer.mutable_data()->add_ui_data_and_access_data();
        Write(13, 1, *element);
        element->set_access(number);
        element->mutable_ui_data()->set_access(number);
        element->mutable_ui_data()->mutable_jump_url_msg()->set_main_btn_url(number);
        element->mutable_access_data()->set_access(number);
        element->mutable_access_data()->set_days_left(number);
        element->mutable_access_data()->set_activation_type(number);
    }

    ServerAnswers(answer);

    EXPECT_THAT(Rights(manager->GetUIAccessData()), ElementsAre(-2147483647 - 1, 2147483647));
    store.Forget();
    CZRPremiumAccessModel restored;
    restored.InitPremiumData();
    for (const int number : {2147483647, -2147483647 - 1}) {
        EXPECT_EQ(restored.GetUIData(Right(number)), manager->GetUIData(Right(number)));
        EXPECT_EQ(restored.GetUIData(Right(number)).nMainBtnUrlID, number);
        EXPECT_EQ(restored.GetAccessData(Right(number)).nDaysLeft, number);
        EXPECT_EQ(restored.GetAccessData(Right(number)).nActivationType, number);
    }
}

TEST_F(PremiumBadInputTest, NestingThatTheMessageDoesNotKnowIsParsedPastUpToItsDepthAndRefusedBeyond) {
    TableHolds({13});
    std::string groups = Bytes({0x08, 0x00}) + std::string(90, '\x53') + std::string(90, '\x54');
    ServerAnswers(Answer({14}));
    channel.Reply(manager->GetUiMsgAndPremiumAccessReq(true), kRequest, groups);
    EXPECT_THAT(bus.Sent().back(), ::Message(kChanged));

    groups = Bytes({0x08, 0x00}) + std::string(100'000, '\x53');
    channel.Reply(manager->GetUiMsgAndPremiumAccessReq(true), kRequest, groups);
    EXPECT_EQ(bus.Sent().back().p2, 2u);
    EXPECT_THAT(log.Lines().back(), Error("[Premium] Parse Response Failed, Invalid Protobuf Data"));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13, 14}));
    store.Forget();
}

TEST_F(PremiumBadInputTest, APushWithThousandsOfRightsAsksForThemAll) {
    std::string push = Bytes({0x08, 0x00});
    std::string request = Bytes({0x08, 0x00});
    for (int i = 0; i < kMany; ++i) {
        push += Bytes({0x18, i % 128});
        request += Bytes({0x10, i % 128});
    }

    channel.Push(kPush, push);
    time.Settle();

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_TRUE(channel.Sent()[0].body == request);
}

TEST_F(PremiumBadInputTest, ARefusedSaveOfEachAnswerChangesNothingInMemory) {
    store.RefuseSaves(Failing::From(2));
    PremiumTable expected;
    for (int version = 1; version <= 3; ++version) {
        ServerAnswers(Answer({13, 13 + version}, version));
        expected[Right(13)] = Record(13, version);
        expected[Right(13 + version)] = Record(13 + version, version);
        EXPECT_EQ(manager->GetUIAccessData(), expected);
    }

    EXPECT_EQ(store.UserString(kUser, kSavedKey), SavedBytes(Table({13, 14}, 1)));
    const auto lines = log.Lines();
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const LogLine& line) { return line.severity == kZRLogError; }), 2);
}

}  // namespace
