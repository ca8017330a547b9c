// The numbers of rights and of their states are the same in server and client.
#include <gmock/gmock.h>

#include <map>
#include <set>
#include <type_traits>

#include "modules/ZRGrowthTypes.h"
#include "premium_svr.pb.h"

using namespace ::testing;
using namespace web_premium_access;

namespace {

struct NamedRight {
    int number;
    const char* name;
    PremiumAccess wire;
    EnPremiumAccess client;
};

const NamedRight kRights[] = {
    {1, "us_arcabook", us_arcabook, EnPremiumAccess_us_arcabook},
    {2, "us_otc_order_book", us_otc_order_book, EnPremiumAccess_us_otc_order_book},
    {3, "us_option_lv1", us_option_lv1, EnPremiumAccess_us_option_lv1},
    {4, "us_option_lv2", us_option_lv2, EnPremiumAccess_us_option_lv2},
    {5, "us_cme_future_lv1", us_cme_future_lv1, EnPremiumAccess_us_cme_future_lv1},
    {6, "us_cme_future_lv2", us_cme_future_lv2, EnPremiumAccess_us_cme_future_lv2},
    {7, "us_cboe_future_lv1", us_cboe_future_lv1, EnPremiumAccess_us_cboe_future_lv1},
    {8, "us_cboe_future_lv2", us_cboe_future_lv2, EnPremiumAccess_us_cboe_future_lv2},
    {11, "can_stock_tmx_tsx_order_book_ss", can_stock_tmx_tsx_order_book_ss,
     EnPremiumAccess_can_stock_tmx_tsx_order_book_ss},
    {12, "can_stock_tmx_tsxv_order_book_ss", can_stock_tmx_tsxv_order_book_ss,
     EnPremiumAccess_can_stock_tmx_tsxv_order_book_ss},
    {13, "hk_stock_lv1", hk_stock_lv1, EnPremiumAccess_hk_stock_lv1},
    {14, "hk_option_lv1", hk_option_lv1, EnPremiumAccess_hk_option_lv1},
    {15, "hk_stock_lv2", hk_stock_lv2, EnPremiumAccess_hk_stock_lv2},
    {16, "hk_option_lv2", hk_option_lv2, EnPremiumAccess_hk_option_lv2},
    {17, "hk_option_dl_lv1", hk_option_dl_lv1, EnPremiumAccess_hk_option_dl_lv1},
    {18, "hk_future_dl_lv1", hk_future_dl_lv1, EnPremiumAccess_hk_future_dl_lv1},
    {19, "jp_stock_lv2", jp_stock_lv2, EnPremiumAccess_jp_stock_lv2},
    {20, "jp_future_lv2", jp_future_lv2, EnPremiumAccess_jp_future_lv2},
    {21, "myx_stock_lv1", myx_stock_lv1, EnPremiumAccess_myx_stock_lv1},
    {22, "sg_stock_lv2", sg_stock_lv2, EnPremiumAccess_sg_stock_lv2},
    {23, "jp_stock_lv1", jp_stock_lv1, EnPremiumAccess_jp_stock_lv1},
    {24, "ca_stock_neo_lv2", ca_stock_neo_lv2, EnPremiumAccess_ca_stock_neo_lv2},
    {25, "my_stock_lv2", my_stock_lv2, EnPremiumAccess_my_stock_lv2},
    {26, "ca_stock_TSX_snapshot_lv1", ca_stock_TSX_snapshot_lv1, EnPremiumAccess_ca_stock_TSX_snapshot_lv1},
    {27, "ca_stock_TSXV_snapshot_lv1", ca_stock_TSXV_snapshot_lv1, EnPremiumAccess_ca_stock_TSXV_snapshot_lv1},
    {28, "ca_stock_TSX_realtime_lv1", ca_stock_TSX_realtime_lv1, EnPremiumAccess_ca_stock_TSX_realtime_lv1},
    {29, "ca_stock_TSXV_realtime_lv1", ca_stock_TSXV_realtime_lv1, EnPremiumAccess_ca_stock_TSXV_realtime_lv1},
    {74, "us_total_view_lv2", us_total_view_lv2, EnPremiumAccess_us_total_view_lv2},
    {99, "k_line_shape", k_line_shape, EnPremiumAccess_k_line_shape},
    {101, "Morningstar", Morningstar, EnPremiumAccess_Morningstar},
    {102, "AnalystRatings", AnalystRatings, EnPremiumAccess_AnalystRatings},
    {103, "Insider", Insider, EnPremiumAccess_Insider},
    {104, "Shikiho", Shikiho, EnPremiumAccess_Shikiho},
    {105, "TrendProjection", TrendProjection, EnPremiumAccess_TrendProjection},
    {106, "IFIS", IFIS, EnPremiumAccess_IFIS},
    {107, "OfficialWebFundDistributionFlow", OfficialWebFundDistributionFlow,
     EnPremiumAccess_OfficialWebFundDistributionFlow},
    {108, "OfficialWebFinancePrediction", OfficialWebFinancePrediction, EnPremiumAccess_OfficialWebFinancePrediction},
    {109, "OfficialWebBusinessData", OfficialWebBusinessData, EnPremiumAccess_OfficialWebBusinessData},
    {110, "kline_Pattern", kline_Pattern, EnPremiumAccess_kline_Pattern},
    {111, "short_selling_analysis", short_selling_analysis, EnPremiumAccess_short_selling_analysis},
    {114, "algo_trading", algo_trading, EnPremiumAccess_algo_trading},
    {115, "second_k_line", second_k_line, EnPremiumAccess_second_k_line},
    {201, "MacroAnalysis", MacroAnalysis, EnPremiumAccess_MacroAnalysis},
    {202, "AIStockExplain", AIStockExplain, EnPremiumAccess_AIStockExplain},
    {203, "InvestmentStrategy", InvestmentStrategy, EnPremiumAccess_InvestmentStrategy},
    {1000, "MyPagePremium", MyPagePremium, EnPremiumAccess_MyPagePremium},
};

std::map<int, std::string> NamesByNumber() {
    std::map<int, std::string> names;
    for (const NamedRight& right : kRights) {
        names[right.number] = right.name;
    }
    return names;
}

TEST(PremiumEnumerationsTest, ThereAre46RightsEachWithItsNumberAndName) {
    EXPECT_EQ(NamesByNumber().size(), 46u);
    for (const NamedRight& right : kRights) {
        EXPECT_EQ(int(right.wire), right.number) << right.name;
        EXPECT_EQ(PremiumAccess_Name(right.number), right.name);
        PremiumAccess parsed{};
        EXPECT_TRUE(PremiumAccess_Parse(right.name, &parsed)) << right.name;
        EXPECT_EQ(parsed, right.wire) << right.name;
    }
}

TEST(PremiumEnumerationsTest, TheClientsNumbersAreTheServersOneToOne) {
    for (const NamedRight& right : kRights) {
        EXPECT_EQ(int(right.client), right.number) << right.name;
    }
}

TEST(PremiumEnumerationsTest, EveryOtherNumberIsNoRightAndHasNoName) {
    const auto names = NamesByNumber();
    for (int number = -1; number <= 1100; ++number) {
        const auto named = names.find(number);
        EXPECT_EQ(PremiumAccess_IsValid(number), named != names.end()) << number;
        EXPECT_EQ(PremiumAccess_Name(number), named == names.end() ? std::string() : named->second) << number;
    }
}

TEST(PremiumEnumerationsTest, AWordThatNamesNoRightIsNotParsed) {
    PremiumAccess parsed = Insider;

    EXPECT_FALSE(PremiumAccess_Parse("insider", &parsed));
    EXPECT_FALSE(PremiumAccess_Parse("", &parsed));
    EXPECT_EQ(parsed, Insider);
}

TEST(PremiumEnumerationsTest, AClientsRightIsA32BitNumberThatHoldsAnyInteger) {
    EXPECT_TRUE((std::is_same<std::underlying_type<EnPremiumAccess>::type, int>::value));
    EXPECT_EQ(sizeof(EnPremiumAccess), 4u);
    EXPECT_EQ(int(EnPremiumAccess(-2147483647 - 1)), -2147483647 - 1);
}

struct Enumeration {
    const char* name;
    bool (*isValid)(int);
    std::map<int, std::string> names;
    std::string (*nameOf)(int);
};

class PremiumSmallEnumerationTest : public TestWithParam<Enumeration> {};

TEST_P(PremiumSmallEnumerationTest, HasExactlyItsNumbersAndNames) {
    for (int number = -1; number <= 1100; ++number) {
        const auto named = GetParam().names.find(number);
        const bool known = named != GetParam().names.end();
        EXPECT_EQ(GetParam().isValid(number), known) << number;
        EXPECT_EQ(GetParam().nameOf(number), known ? named->second : std::string()) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, PremiumSmallEnumerationTest,
    Values(Enumeration{"RetCode",
                       RetCode_IsValid,
                       {{0, "SUCCESS"}, {1001, "ACTIVE_PERMISSION_STATE_REPEAT"}},
                       [](int number) { return std::string(RetCode_Name(number)); }},
           Enumeration{"PremiumActivationType",
                       PremiumActivationType_IsValid,
                       {{1, "LIMITED_TIME_ACTIVATION"},
                        {2, "FROZEN_ACTIVATION"},
                        {3, "FULL_ACTIVATION"},
                        {4, "EMPTY_STATE"},
                        {5, "NOT_ACTIVATION"},
                        {6, "READY_ACTIVATION"}},
                       [](int number) { return std::string(PremiumActivationType_Name(number)); }},
           Enumeration{"PremiumActivationSourceType",
                       PremiumActivationSourceType_IsValid,
                       {{1, "PremiumRule"}, {2, "VipRule"}, {3, "PrivateCustomer"}},
                       [](int number) { return std::string(PremiumActivationSourceType_Name(number)); }},
           Enumeration{"ActivePermissionOperate",
                       ActivePermissionOperate_IsValid,
                       {{1, "READY_TO_FULL"}, {2, "READY_TO_LIMITED"}},
                       [](int number) { return std::string(ActivePermissionOperate_Name(number)); }}),
    [](const auto& row) { return row.param.name; });

}  // namespace
