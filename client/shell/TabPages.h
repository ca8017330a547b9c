#pragma once

#include <array>

#include "EntryScenes.h"
#include "modules/ZRTabFrameKey.h"

/// A tab of the main window and its page.
struct TabPage {
    EnZRTabFrameKey tab;
    EntryPage page;
};

/// All tabs, in the order of the navigation.
constexpr std::array<TabPage, 8> kTabPages{{
    {EnZRTabFrameWatchlist, kEntryPages[0]},
    {EnZRTabFrameMarket,
     {kNoEntryScene, kNoChat, "market", QT_TRANSLATE_NOOP("Pages", "Market"),
      QT_TRANSLATE_NOOP("Pages", "The day, sector by sector")}},
    {EnZRTabFrameQuotes, kEntryPages[1]},
    {EnZRTabFrameResearch, kEntryPages[2]},
    {EnZRTabFrameNews, kEntryPages[3]},
    {EnZRTabFrameAlerts,
     {kNoEntryScene, kNoChat, "alerts", QT_TRANSLATE_NOOP("Pages", "Alerts"),
      QT_TRANSLATE_NOOP("Pages", "The prices you want to hear of")}},
    {EnZRTabFramePortfolio, kEntryPages[4]},
    {EnZRTabFrameAccount,
     {kNoEntryScene, kNoChat, "account", QT_TRANSLATE_NOOP("Pages", "Account"),
      QT_TRANSLATE_NOOP("Pages", "Your means, and the day's orders")}},
}};
