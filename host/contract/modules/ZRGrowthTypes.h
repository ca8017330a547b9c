#pragma once

/// A premium right, with the server's number. Numbers without a name here are valid. 0 is no right.
enum EnPremiumAccess : int {
    /// Quotes of the United States. lv1 is the best price, lv2 the order book.
    EnPremiumAccess_us_arcabook = 1,
    EnPremiumAccess_us_otc_order_book = 2,
    EnPremiumAccess_us_option_lv1 = 3,
    EnPremiumAccess_us_option_lv2 = 4,
    EnPremiumAccess_us_cme_future_lv1 = 5,
    EnPremiumAccess_us_cme_future_lv2 = 6,
    EnPremiumAccess_us_cboe_future_lv1 = 7,
    EnPremiumAccess_us_cboe_future_lv2 = 8,
    /// Order books of Canada as snapshots.
    EnPremiumAccess_can_stock_tmx_tsx_order_book_ss = 11,
    EnPremiumAccess_can_stock_tmx_tsxv_order_book_ss = 12,
    /// Quotes of Hong Kong. dl marks delayed quotes.
    EnPremiumAccess_hk_stock_lv1 = 13,
    EnPremiumAccess_hk_option_lv1 = 14,
    EnPremiumAccess_hk_stock_lv2 = 15,
    EnPremiumAccess_hk_option_lv2 = 16,
    EnPremiumAccess_hk_option_dl_lv1 = 17,
    EnPremiumAccess_hk_future_dl_lv1 = 18,
    /// Quotes of Japan, Malaysia, Singapore and Canada.
    EnPremiumAccess_jp_stock_lv2 = 19,
    EnPremiumAccess_jp_future_lv2 = 20,
    EnPremiumAccess_myx_stock_lv1 = 21,
    EnPremiumAccess_sg_stock_lv2 = 22,
    EnPremiumAccess_jp_stock_lv1 = 23,
    EnPremiumAccess_ca_stock_neo_lv2 = 24,
    EnPremiumAccess_my_stock_lv2 = 25,
    EnPremiumAccess_ca_stock_TSX_snapshot_lv1 = 26,
    EnPremiumAccess_ca_stock_TSXV_snapshot_lv1 = 27,
    EnPremiumAccess_ca_stock_TSX_realtime_lv1 = 28,
    EnPremiumAccess_ca_stock_TSXV_realtime_lv1 = 29,
    /// Depth of the United States from a further source.
    EnPremiumAccess_us_total_view_lv2 = 74,
    /// Charts, research and tools.
    EnPremiumAccess_k_line_shape = 99,
    EnPremiumAccess_Morningstar = 101,
    EnPremiumAccess_AnalystRatings = 102,
    EnPremiumAccess_Insider = 103,
    EnPremiumAccess_Shikiho = 104,
    EnPremiumAccess_TrendProjection = 105,
    EnPremiumAccess_IFIS = 106,
    EnPremiumAccess_OfficialWebFundDistributionFlow = 107,
    EnPremiumAccess_OfficialWebFinancePrediction = 108,
    EnPremiumAccess_OfficialWebBusinessData = 109,
    EnPremiumAccess_kline_Pattern = 110,
    EnPremiumAccess_short_selling_analysis = 111,
    EnPremiumAccess_algo_trading = 114,
    EnPremiumAccess_second_k_line = 115,
    EnPremiumAccess_MacroAnalysis = 201,
    EnPremiumAccess_AIStockExplain = 202,
    EnPremiumAccess_InvestmentStrategy = 203,
    /// The membership itself, and no single feature.
    EnPremiumAccess_MyPagePremium = 1000,
};

/// One of the three text sets of a right. It selects the texts of a VIP widget and the link of its button.
enum ZRVipUIDataType : int {
    /// Main title, button and link.
    ZRVipUIDataMain = 1,
    /// Detail title, button and link.
    ZRVipUIDataDetail = 2,
    /// Second detail title, button and link.
    ZRVipUIDataDetailSub = 3,
};

/// The kind of a mask. Any other value creates no mask.
enum ZRVipMaskType : int {
    /// Text and button.
    ZRVipMaskLocked = 0,
    /// Button only.
    ZRVipMaskLockedCompact = 1,
    /// A mask of the right's own design, for members of the new system.
    ZRVipMaskExclusive = 2,
};

/// The image family of a tag. Any other value is treated as ZRVipTagName.
enum ZRVipTagType : int {
    /// An image for the grade.
    ZRVipTagGrade = 0,
    /// An image with the name of the membership, in the display language.
    ZRVipTagName = 1,
};

/// The grade of a member of the older VIP system. The server also sends 4 and may send other numbers.
enum ZRVipGrade : int {
    /// No member.
    ZRVipGradeNone = 0,
    ZRVipGrade1 = 1,
    ZRVipGrade2 = 2,
    ZRVipGrade3 = 3,
};

/// The user's state in each edition of the VIP system. The server may send other numbers.
constexpr int kVipStateMember = 1;
constexpr int kNewVipStateNone = 0;
constexpr int kNewVipStateMember = 1;
constexpr int kNewVipStateExpired = 2;

/// The VIP state of a user as one number, which reports contain.
using ZRVipEngineStatus = int;
/// The data of the user has not arrived, or fits none of the values below.
constexpr ZRVipEngineStatus kVipEngineUndetermined = -1;
constexpr ZRVipEngineStatus kVipEngineTrial = 0;
constexpr ZRVipEngineStatus kVipEngineMember = 1;  // gift, by assets, or paid with auto renewal on
constexpr ZRVipEngineStatus kVipEngineAssetProtection = 2;
constexpr ZRVipEngineStatus kVipEngineExpired = 3;
constexpr ZRVipEngineStatus kVipEngineNonMember = 4;
constexpr ZRVipEngineStatus kVipEngineRenewalOff = 5;  // paid with auto renewal off

/// An entry to the AI chat. The entries and the server agree on the numbers; the growth module only compares them.
enum ZRAIChatEntryScene : int {
    ZRAIChatEntryWatchlist = 1,
    ZRAIChatEntryQuotes = 2,
    ZRAIChatEntryResearch = 3,
    ZRAIChatEntryNews = 4,
    ZRAIChatEntryPortfolio = 5,
};

/// The page that the AI chat opens for. The number reaches the page; the names below are those that reports know.
enum ZRAIChatPageScene : int {
    ZRAIChatPageWatchlist = 1,
    ZRAIChatPageNews = 4,
    ZRAIChatPagePortfolio = 5,
    ZRAIChatPageQuotes = 12,
    ZRAIChatPageResearch = 42,
};

/// A position of ads. The callers and the server agree on the numbers; the growth module only passes them on, except
/// that of the bottom popup.
enum ZRAdPosition : int {
    ZRAdPositionMarketBanner = 7,
    ZRAdPositionAlertsBanner = 9,
    ZRAdPositionBottomPopup = 42,
};
