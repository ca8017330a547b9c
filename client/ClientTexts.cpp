#include "ClientTexts.h"

#include <QAbstractButton>
#include <QLabel>
#include <algorithm>

#include "core/langx.h"
#include "core/message_dispatch.h"
#include "core/message_ids.h"

namespace texts {

const std::vector<TextEntry>& All() {
    static const std::vector<TextEntry> texts = {
        {kKestrel, "Kestrel"},
        {kVelora, "Velora"},
        {kLanguageEnglish, "English"},
        {kLanguageSimplifiedChinese, "简体中文"},
        {kLanguageTraditionalChinese, "繁體中文"},
        {kLanguageJapanese, "日本語"},
        {kLanguageFrench, "Français"},
        {kWatchlist, "Watchlist"},
        {kQuotes, "Quotes"},
        {kResearch, "Research"},
        {kNews, "News"},
        {kPortfolio, "Portfolio"},
        {kWatchlistSubtitle, "The instruments you follow"},
        {kQuotesSubtitle, "Price, order book and key figures"},
        {kResearchSubtitle, "What our analysts think"},
        {kNewsSubtitle, "What moves the markets today"},
        {kPortfolioSubtitle, "What you hold, and how it does"},
        {kCollapseNavigation, "Collapse the navigation"},
        {kExpandNavigation, "Expand the navigation"},
        {kSampleData, "Sample data"},
        {kAIChat, "AI chat"},
        {kEntryOpen, "AI chat is open here (scene %1)"},
        {kEntryForcedOpen, "Forced open by the developer override (scene %1)"},
        {kEntryForcedClosed, "Forced closed by the developer override (scene %1)"},
        {kEntryClosedByServer, "Off: the server has not opened AI chat here to you (scene %1)"},
        {kEntryNobodyLoggedIn, "Off: log in to use AI chat (scene %1)"},
        {kEntryNoModule, "Off: the module that serves AI chat is not there (scene %1)"},
        {kEntryClicked, "AI chat, %1 (scene %2): opened by the server to this user"},
        {kEntryClickedForced, "AI chat, %1 (scene %2): forced open by the developer override"},
        {kConnected, "Connected"},
        {kNoConnection, "No connection (%1), trying again in %2 s"},
        {kServerStarts, "Starting the server"},
        {kServerLost, "The server does not run (%1), starting it again"},
        {kServerSilent, "The server does not answer (%1)"},
        {kLoginRefused, "The login of user %1 is refused: %2"},
        {kWithoutModule, "The client goes on without a module. %1"},
        {kNobodyLoggedIn, "Nobody is logged in"},
        {kLoggedInAs, "Logged in: %1 (%2)"},
        {kLogIn, "Log in"},
        {kLogOut, "Log out"},
        {kUserMenu, "Switch the user"},
        {kWorkbench, "Workbench"},
        {kShowWorkbench, "Show or hide the workbench"},
        {kUser, "User"},
        {kLanguage, "Language"},
        {kOverride, "Override"},
        {kOverrideNone, "No override"},
        {kOverrideOpen, "Force open"},
        {kOverrideClosed, "Force closed"},
        {kEntriesPerScene, "AI chat entries per scene"},
        {kScene, "Scene"},
        {kPage, "Page"},
        {kState, "State"},
        {kStateOpen, "Open"},
        {kStateForcedOpen, "Open, forced"},
        {kStateClosed, "Closed"},
        {kStateForcedClosed, "Closed, forced"},
        {kStateNobodyLoggedIn, "Closed, nobody logged in"},
        {kStateNoModule, "Closed, no module"},
        {kLog, "Log"},
        {kLogFilter, "Filter by text"},
        {kSeverityAll, "All severities"},
        {kSeverityError, "Errors and up"},
        {kSeverityFatal, "Fatal only"},
        {kSourceAll, "All sources"},
        {kSourceHost, "Host"},
        {kSourceModule, "Module"},
        {kLogPause, "Pause"},
        {kLogClear, "Clear"},
        {kLogCount, "%1 of %2 lines"},
        {kLogCountPaused, "%1 of %2 lines, paused"},
        {kLogTime, "Time"},
        {kLogSeverity, "Severity"},
        {kLogTag, "Tag"},
        {kLogText, "Text"},
        {kSeverityNameInfo, "Info"},
        {kSeverityNameError, "Error"},
        {kSeverityNameFatal, "Fatal"},
        {kSymbol, "Symbol"},
        {kName, "Name"},
        {kLastPrice, "Last"},
        {kChange, "Change"},
        {kChangePercent, "Change %"},
        {kVolume, "Volume"},
        {kPriceOpen, "Open"},
        {kPriceHigh, "High"},
        {kPriceLow, "Low"},
        {kPreviousClose, "Previous close"},
        {kTurnover, "Turnover"},
        {kMarketCap, "Market cap"},
        {kKeyFigures, "Key figures"},
        {kOrderBook, "Order book"},
        {kToday, "Today"},
        {kBid, "Bid"},
        {kAsk, "Ask"},
        {kBidSize, "Bid size"},
        {kAskSize, "Ask size"},
        {kRatingBuy, "Buy"},
        {kRatingHold, "Hold"},
        {kRatingReduce, "Reduce"},
        {kTargetPrice, "Target %1"},
        {kResearchAlder, "Order intake turns the corner"},
        {kResearchAlderSummary,
         "New lines come on stream two quarters early. We raise our estimates for the next year and see the margin "
         "back at its old level by autumn."},
        {kResearchElmwood, "Steady cash, few surprises"},
        {kResearchElmwoodSummary,
         "The clinics fill as planned and the dividend is covered twice. What is missing is a reason to pay more than "
         "today's price."},
        {kResearchFirth, "Freight rates weigh on the second half"},
        {kResearchFirthSummary,
         "Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; we take our "
         "target down."},
        {kNewsHarbour, "Brentfield Energy brings its third harbour wind park on line"},
        {kNewsRates, "Central bank keeps its rate, and says what would change its mind"},
        {kNewsCygnet, "Cygnet Robotics wins a ten-year warehouse contract"},
        {kNewsLogistics, "Dromore Logistics opens a rail link to the inland terminals"},
        {kNewsEarnings, "Glasshouse Software reports growth above its own guidance"},
        {kNewsClose, "Pacific 200 ends the week a little higher in quiet trade"},
        {kTotalValue, "Total value"},
        {kDayResult, "Today"},
        {kCash, "Cash"},
        {kQuantity, "Quantity"},
        {kAverageCost, "Avg. cost"},
        {kMarketValue, "Value"},
        {kProfitLoss, "Profit / loss"},
        {kTheme, "Theme"},
        {kThemeLight, "Light"},
        {kThemeDarkBlue, "Dark blue"},
        {kThemeBlack, "Black"},
        {kStoreNotAvailable, "Settings are neither read nor saved: their file is not available"},
        {kStoreReadOnly, "Settings are not saved: their file or folder is read-only"},
        {kStoreDiskFull, "Settings are not saved: the disk is full or fails"},
        {kStoreSecondClient, "Settings are not saved: another client uses this folder"},
        {kStoreNewerFile, "Settings are not saved: a newer version wrote their file"},
    };
    return texts;
}

QString Tr(EnText id) {
    const auto& all = All();
    const auto found = std::find_if(all.begin(), all.end(), [id](const TextEntry& text) { return text.id == id; });
    return core::langx::tr(id, found == all.end() ? std::string() : std::string(found->english));
}

void Keep(QObject* context, std::function<void()> show) {
    show();
    core::__CMessageDispatch("[Client]")
        .Bind(
            core::kMsgLanguageChanged,
            [show = std::move(show)](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                show();
            },
            context);
}

void Keep(QLabel* label, EnText id) {
    Keep(label, [label, id] { label->setText(Tr(id)); });
}

void Keep(QAbstractButton* button, EnText id) {
    Keep(button, [button, id] { button->setText(Tr(id)); });
}

}  // namespace texts
