#pragma once

#include <array>

#include "ClientTexts.h"
#include "modules/ZRGrowthTypes.h"

/// The growth module tells by it that entries may have opened or closed.
constexpr unsigned int kMsgAIChatEntriesChanged = 20300;

/// Of a page without an entry to the AI chat.
constexpr ZRAIChatEntryScene kNoEntryScene{};

/// A page of the client and its entry to the AI chat. The scene numbers are agreed with the server.
struct EntryPage {
    ZRAIChatEntryScene scene;
    const char* name;  // in object names, in links and of the icon
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
