#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <vector>

class QAbstractButton;
class QLabel;

/// The client's own texts: their ids in the language packs. Main thread.
namespace texts {

/// An id never gets another meaning: translations are kept by it.
enum EnText : unsigned int {
    kKestrel = 900001,
    kVelora = 900002,
    kLanguageEnglish = 900003,
    kLanguageSimplifiedChinese = 900004,
    kLanguageTraditionalChinese = 900005,
    kLanguageJapanese = 900006,
    kLanguageFrench = 900007,
    kWatchlist = 900008,
    kQuotes = 900009,
    kResearch = 900010,
    kNews = 900011,
    kPortfolio = 900012,
    kWatchlistSubtitle = 900013,
    kQuotesSubtitle = 900014,
    kResearchSubtitle = 900015,
    kNewsSubtitle = 900016,
    kPortfolioSubtitle = 900017,
    kCollapseNavigation = 900018,
    kExpandNavigation = 900019,
    kSampleData = 900020,
    kAIChat = 900021,
    kEntryOpen = 900022,
    kEntryForcedOpen = 900023,
    kEntryForcedClosed = 900024,
    kEntryClosedByServer = 900025,
    kEntryNobodyLoggedIn = 900026,
    kEntryNoModule = 900027,
    kEntryClicked = 900028,
    kEntryClickedForced = 900029,
    kConnected = 900030,
    kNoConnection = 900031,
    kServerStarts = 900032,
    kServerLost = 900033,
    kServerSilent = 900034,
    kLoginRefused = 900035,
    kWithoutModule = 900036,
    kNobodyLoggedIn = 900037,
    kLoggedInAs = 900038,
    kLogIn = 900039,
    kLogOut = 900040,
    kUserMenu = 900041,
    kWorkbench = 900042,
    kShowWorkbench = 900043,
    kUser = 900044,
    kLanguage = 900045,
    kOverride = 900046,
    kOverrideNone = 900047,
    kOverrideOpen = 900048,
    kOverrideClosed = 900049,
    kEntriesPerScene = 900050,
    kScene = 900051,
    kPage = 900052,
    kState = 900053,
    kStateOpen = 900054,
    kStateForcedOpen = 900055,
    kStateClosed = 900056,
    kStateForcedClosed = 900057,
    kStateNobodyLoggedIn = 900058,
    kStateNoModule = 900059,
    kLog = 900060,
    kLogFilter = 900061,
    kSeverityAll = 900062,
    kSeverityError = 900063,
    kSeverityFatal = 900064,
    kSourceAll = 900065,
    kSourceHost = 900066,
    kSourceModule = 900067,
    kLogPause = 900068,
    kLogClear = 900069,
    kLogCount = 900070,
    kLogCountPaused = 900071,
    kLogTime = 900072,
    kLogSeverity = 900073,
    kLogTag = 900074,
    kLogText = 900075,
    kSeverityNameInfo = 900076,
    kSeverityNameError = 900077,
    kSeverityNameFatal = 900078,
    kSymbol = 900079,
    kName = 900080,
    kLastPrice = 900081,
    kChange = 900082,
    kChangePercent = 900083,
    kVolume = 900084,
    kPriceOpen = 900085,
    kPriceHigh = 900086,
    kPriceLow = 900087,
    kPreviousClose = 900088,
    kTurnover = 900089,
    kMarketCap = 900090,
    kKeyFigures = 900091,
    kOrderBook = 900092,
    kToday = 900093,
    kBid = 900094,
    kAsk = 900095,
    kBidSize = 900096,
    kAskSize = 900097,
    kRatingBuy = 900098,
    kRatingHold = 900099,
    kRatingReduce = 900100,
    kTargetPrice = 900101,
    kResearchAlder = 900102,
    kResearchAlderSummary = 900103,
    kResearchElmwood = 900104,
    kResearchElmwoodSummary = 900105,
    kResearchFirth = 900106,
    kResearchFirthSummary = 900107,
    kNewsHarbour = 900108,
    kNewsRates = 900109,
    kNewsCygnet = 900110,
    kNewsLogistics = 900111,
    kNewsEarnings = 900112,
    kNewsClose = 900113,
    kTotalValue = 900114,
    kDayResult = 900115,
    kCash = 900116,
    kQuantity = 900117,
    kAverageCost = 900118,
    kMarketValue = 900119,
    kProfitLoss = 900120,
    kTheme = 900121,
    kThemeLight = 900122,
    kThemeDarkBlue = 900123,
    kThemeBlack = 900124,
    kStoreNotAvailable = 900301,
    kStoreReadOnly = 900302,
    kStoreDiskFull = 900303,
    kStoreSecondClient = 900304,
    kStoreNewerFile = 900305,
};

/// A text and what is shown where a language has none for it.
struct TextEntry {
    EnText id;
    const char* english;
};

/// All texts, by id.
const std::vector<TextEntry>& All();

/// The text in the display language.
QString Tr(EnText id);

/// Runs `show` now and at each change of the display language, as long as `context` lives.
void Keep(QObject* context, std::function<void()> show);

/// Shows the text, in the display language of the moment.
void Keep(QLabel* label, EnText id);
void Keep(QAbstractButton* button, EnText id);

}  // namespace texts
