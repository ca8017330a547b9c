#include "Vip/Model/ZRVipTexts.h"

#include <gmock/gmock.h>

#include <climits>

using namespace ::testing;

namespace {

CPremiumUIAccessData RecordOfThreeTextSets() {
    CPremiumUIAccessData record;
    record.strMainTitle = QStringLiteral("main title");
    record.strMainBtn = QStringLiteral("main button");
    record.nMainBtnUrlID = 301;
    record.strDetailTitle = QStringLiteral("detail title");
    record.strDetailBtn = QStringLiteral("detail button");
    record.nDetailBtnUrlID = 302;
    record.strDetailSubTitle = QStringLiteral("sub title");
    record.strDetailSubBtn = QStringLiteral("sub button");
    record.nDetailSubBtnUrlID = 303;
    return record;
}

struct TextsRow {
    ZRVipUIDataType dataType;
    const char* title;
    const char* button;
    int linkId;
};

class VipTextsTest : public TestWithParam<TextsRow> {};

TEST_P(VipTextsTest, TextSetHasItsOwnTitleButtonAndLink) {
    const auto texts = SelectVipTexts(RecordOfThreeTextSets(), GetParam().dataType);

    ASSERT_TRUE(texts);
    EXPECT_EQ(texts->strTitle.toStdString(), GetParam().title);
    EXPECT_EQ(texts->strBtn.toStdString(), GetParam().button);
    EXPECT_EQ(texts->nBtnUrlID, GetParam().linkId);
}

INSTANTIATE_TEST_SUITE_P(TextSets, VipTextsTest,
                         Values(TextsRow{ZRVipUIDataMain, "main title", "main button", 301},
                                TextsRow{ZRVipUIDataDetail, "detail title", "detail button", 302},
                                TextsRow{ZRVipUIDataDetailSub, "sub title", "sub button", 303}),
                         [](const auto& row) { return "TextSet" + std::to_string(row.param.dataType); });

TEST(VipTextsNoneTest, ThereIsNoTextSetWhenTheTypeHasNoName) {
    for (const int dataType : {0, 4, -1, INT_MIN, INT_MAX}) {
        EXPECT_FALSE(SelectVipTexts(RecordOfThreeTextSets(), ZRVipUIDataType(dataType))) << dataType;
    }
}

TEST(VipTextsNoneTest, TextSetOfAnUnknownRightIsEmptyAndThere) {
    const auto texts = SelectVipTexts(CPremiumUIAccessData(), ZRVipUIDataMain);

    ASSERT_TRUE(texts);
    EXPECT_TRUE(texts->strTitle.isEmpty());
    EXPECT_TRUE(texts->strBtn.isEmpty());
    EXPECT_EQ(texts->nBtnUrlID, 0);
}

}  // namespace
