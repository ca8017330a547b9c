#include "GrowthBizLogUtil.h"

#include <gmock/gmock.h>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Premium;

class GrowthBizLogUtilTest : public ScriptedHostTest {};

TEST_F(GrowthBizLogUtilTest, ModuleTypesHaveTheirNumbersAndNames) {
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(0)), "AIChat");
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(1)), "Ad");
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(2)), "Premium");
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(3)), "Vip");
}

TEST_F(GrowthBizLogUtilTest, AnUnknownModuleTypeHasAnEmptyName) {
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(4)), "");
    EXPECT_EQ(CGrowthBizLogUtil::GetModuleName(CGrowthBizLogUtil::ModuleType(-1)), "");
}

TEST_F(GrowthBizLogUtilTest, ALineIsTheMessageBehindTheSubsystemsNameInBrackets) {
    LogInfo("Count {} of {}", 3, "rights");

    ASSERT_THAT(log.Lines(), ElementsAre(Info("[Premium] Count 3 of rights")));
    EXPECT_EQ(log.Lines()[0].module, "ZRGrowth");
    EXPECT_EQ(log.Lines()[0].file, GROWTH_SOURCE);
    EXPECT_EQ(log.Lines()[0].function, "TestBody");
    EXPECT_EQ(log.Lines()[0].line, __LINE__ - 6);
}

TEST_F(GrowthBizLogUtilTest, ALineWithoutValuesIsItsLiteral) {
    LogInfo("Nothing to fill in");

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Nothing to fill in")));
}

TEST_F(GrowthBizLogUtilTest, InformationIsFourAndAnErrorEight) {
    LogInfo("a");
    LogError("b");

    ASSERT_THAT(log.Lines(), SizeIs(2));
    EXPECT_EQ(int(log.Lines()[0].severity), 4);
    EXPECT_EQ(int(log.Lines()[1].severity), 8);
}

TEST_F(GrowthBizLogUtilTest, TextIsTakenByteByByteAndNotAsUtf8) {
    LogInfo("{}", std::string("\xE6\x97\xA5\x00!", 5));

    // Lines() gives the bytes back: one character of the line per byte, to the last
    EXPECT_THAT(log.Lines(), ElementsAre(Info(std::string("[Premium] \xE6\x97\xA5\x00!", 15))));
}

TEST_F(GrowthBizLogUtilTest, ABusHandleSaysWhereItStands) {
    EXPECT_EQ(std::string(GROWTH_HERE), "[ZRGrowth]:" GROWTH_SOURCE "@" + std::to_string(__LINE__));
}

}  // namespace
