#include "core/Language.h"

#include <set>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class LanguageServiceTest : public ScriptedHostTest {
protected:
    QHash<unsigned int, QString> texts{{1, QStringLiteral("kept")}};
    std::string error;
};

TEST_F(LanguageServiceTest, EveryLanguageHasItsPackAndAnyOtherNumberIsEnglish) {
    for (const int id : {0, 1, 2, 5, 7, 3, -1}) {
        const CLanguage opened(id);
        EXPECT_EQ(opened.LanguageId(), id);
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(LanguageServiceTest, ATextThatNoPackHasIsAbsent) {
    EXPECT_FALSE(CLanguage(2).Text(4294967295u));
}

TEST_F(LanguageServiceTest, APackIsAnObjectOfIdsAndTexts) {
    ASSERT_TRUE(CLanguage::ReadPack(R"({"277229":"day","277228":"days"})", texts, error));

    EXPECT_EQ(texts.size(), 2);
    EXPECT_EQ(texts.value(277229), QStringLiteral("day"));
}

TEST_F(LanguageServiceTest, AWrongPackIsRefusedWithAReasonAndNothingIsTakenFromIt) {
    EXPECT_FALSE(CLanguage::ReadPack("[]", texts, error));
    EXPECT_EQ(error, "must be an object of text ids and texts");
    EXPECT_FALSE(CLanguage::ReadPack(R"({"day":"x"})", texts, error));
    EXPECT_EQ(error, "day: must be a number and its text");
    EXPECT_FALSE(CLanguage::ReadPack(R"({"1":2})", texts, error));
    EXPECT_EQ(error, "1: must be a number and its text");
    EXPECT_FALSE(CLanguage::ReadPack("{", texts, error));
    EXPECT_EQ(texts.value(1), QStringLiteral("kept"));
}

TEST_F(LanguageServiceTest, EachLanguageShowsItsOwnTexts) {
    constexpr unsigned int kMembership = 310783;
    const QString english = *CLanguage(2).Text(kMembership);
    std::set<QString> different;
    for (const int id : {0, 1, 2, 5, 7}) {
        different.insert(*CLanguage(id).Text(kMembership));
    }
    EXPECT_EQ(different.size(), 5u);
    for (const int id : {3, -1, 99}) {
        EXPECT_EQ(*CLanguage(id).Text(kMembership), english);
    }
}

}  // namespace
