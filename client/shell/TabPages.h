#pragma once

#include <array>

#include "EntryScenes.h"
#include "modules/ZRTabFrameKey.h"

/// The keys of the main window's tabs. Modules and server use the same numbers.
enum EnTab : int64_t {
    kTabWatchlist = 20001,
    kTabQuotes = 20002,
    kTabResearch = 20003,
    kTabNews = 20004,
    kTabPortfolio = 20005,
    kTabMarket = 20013,
    kTabAccount = 20017,
    kTabAlerts = 20018,
};

/// A tab of the main window and its page.
struct TabPage {
    EnTab tab;
    EntryPage page;

    constexpr EnZRTabFrameKey Key() const { return EnZRTabFrameKey(tab); }
};

/// All tabs, in the order of the navigation.
constexpr std::array<TabPage, 8> kTabPages{{
    {kTabWatchlist, kEntryPages[0]},
    {kTabMarket,
     {kNoEntryScene, kNoChat, "market", QT_TRANSLATE_NOOP("Pages", "Market"),
      QT_TRANSLATE_NOOP("Pages", "The day, sector by sector")}},
    {kTabQuotes, kEntryPages[1]},
    {kTabResearch, kEntryPages[2]},
    {kTabNews, kEntryPages[3]},
    {kTabAlerts,
     {kNoEntryScene, kNoChat, "alerts", QT_TRANSLATE_NOOP("Pages", "Alerts"),
      QT_TRANSLATE_NOOP("Pages", "The prices you want to hear of")}},
    {kTabPortfolio, kEntryPages[4]},
    {kTabAccount,
     {kNoEntryScene, kNoChat, "account", QT_TRANSLATE_NOOP("Pages", "Account"),
      QT_TRANSLATE_NOOP("Pages", "Your means, and the day's orders")}},
}};
