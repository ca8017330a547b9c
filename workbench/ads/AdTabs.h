#pragma once

#include <array>

#include "TabPages.h"

/// The ad server's area of a main window's tab.
struct AdTab {
    int area;
    EnTab tab;
};

constexpr std::array<AdTab, 8> kAdTabs{{
    {500, kTabWatchlist},
    {501, kTabQuotes},
    {502, kTabResearch},
    {503, kTabAccount},
    {504, kTabNews},
    {505, kTabMarket},
    {506, kTabAlerts},
    {507, kTabPortfolio},
}};
