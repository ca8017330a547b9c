#pragma once

#include <array>

#include "TabPages.h"

/// The ad server's area of a main window's tab.
struct AdTab {
    int area;
    EnZRTabFrameKey tab;
};

constexpr std::array<AdTab, 8> kAdTabs{{
    {500, EnZRTabFrameWatchlist},
    {501, EnZRTabFrameQuotes},
    {502, EnZRTabFrameResearch},
    {503, EnZRTabFrameAccount},
    {504, EnZRTabFrameNews},
    {505, EnZRTabFrameMarket},
    {506, EnZRTabFrameAlerts},
    {507, EnZRTabFramePortfolio},
}};
