#pragma once

#include <QtGlobal>
#include <array>

#include "modules/ZRGrowthTypes.h"

/// Bus message of the growth module: entries can have been opened or closed.
constexpr unsigned int kMsgAIChatEntriesChanged = 20300;

/// Scenes of a page without an entry to the AI chat.
constexpr ZRAIChatEntryScene kNoEntryScene{};
constexpr ZRAIChatPageScene kNoChat{};

/// A page and its entry to the AI chat. The server uses the same entry scenes. The chat and reports use other numbers.
struct EntryPage {
    ZRAIChatEntryScene scene;
    ZRAIChatPageScene chat;  // for which the chat opens
    const char* name;        // in object names, in links and of the icon
    const char* title;
    const char* subtitle;
};

/// The pages with an entry, in the order of the navigation.
constexpr std::array<EntryPage, 5> kEntryPages{{
    {ZRAIChatEntryScene(1), ZRAIChatPageWatchlist, "watchlist", QT_TRANSLATE_NOOP("Pages", "Watchlist"),
     QT_TRANSLATE_NOOP("Pages", "The instruments you follow")},
    {ZRAIChatEntryScene(2), ZRAIChatPageQuotes, "quotes", QT_TRANSLATE_NOOP("Pages", "Quotes"),
     QT_TRANSLATE_NOOP("Pages", "Price, order book and key figures")},
    {ZRAIChatEntryScene(3), ZRAIChatPageResearch, "research", QT_TRANSLATE_NOOP("Pages", "Research"),
     QT_TRANSLATE_NOOP("Pages", "What our analysts think")},
    {ZRAIChatEntryScene(4), ZRAIChatPageNews, "news", QT_TRANSLATE_NOOP("Pages", "News"),
     QT_TRANSLATE_NOOP("Pages", "What moves the markets today")},
    {ZRAIChatEntryScene(5), ZRAIChatPagePortfolio, "portfolio", QT_TRANSLATE_NOOP("Pages", "Portfolio"),
     QT_TRANSLATE_NOOP("Pages", "What you hold, and how it does")},
}};
