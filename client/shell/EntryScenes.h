#pragma once

#include <array>

#include "ClientTexts.h"
#include "modules/ZRGrowthTypes.h"

/// Bus message of the growth module: entries can have been opened or closed.
constexpr unsigned int kMsgAIChatEntriesChanged = 20300;

/// Scene of a page without an entry to the AI chat.
constexpr ZRAIChatEntryScene kNoEntryScene{};

/// A page and its entry to the AI chat. The server uses the same scene numbers.
struct EntryPage {
    ZRAIChatEntryScene scene;
    const char* name;  // used in object names, links and icons
    texts::EnText title;
    texts::EnText subtitle;
};

/// The pages with an entry, in the order of the navigation.
constexpr std::array<EntryPage, 5> kEntryPages{{
    {ZRAIChatEntryScene(1), "watchlist", texts::kWatchlist, texts::kWatchlistSubtitle},
    {ZRAIChatEntryScene(2), "quotes", texts::kQuotes, texts::kQuotesSubtitle},
    {ZRAIChatEntryScene(3), "research", texts::kResearch, texts::kResearchSubtitle},
    {ZRAIChatEntryScene(4), "news", texts::kNews, texts::kNewsSubtitle},
    {ZRAIChatEntryScene(5), "portfolio", texts::kPortfolio, texts::kPortfolioSubtitle},
}};
