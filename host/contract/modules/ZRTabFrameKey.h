#pragma once

#include <cstdint>

/// A tab of the main window; 0 is no tab. The server uses the same numbers. Numbers without a name here are valid.
enum EnZRTabFrameKey : int64_t {
    EnZRTabFrameWatchlist = 20001,
    EnZRTabFrameQuotes = 20002,
    EnZRTabFrameResearch = 20003,
    EnZRTabFrameNews = 20004,
    EnZRTabFramePortfolio = 20005,
    EnZRTabFrameMarket = 20013,
    EnZRTabFrameAccount = 20017,
    EnZRTabFrameAlerts = 20018,
};
