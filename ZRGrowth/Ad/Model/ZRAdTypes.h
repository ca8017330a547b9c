#pragma once

#include "modules/ZRGrowthTypes.h"

/// The vocabularies of ads. The numbers are those of the server; it may send others.

enum ZRAdType : int {
    ZRAdTypePopup = 2,
    ZRAdTypeBanner = 3,
};

/// Any other value is as ZRAdApiTypeCheck.
enum ZRAdApiType : int {
    ZRAdApiTypeSearch = 1,  // what is due at a position
    ZRAdApiTypeCheck = 2,   // exactly these ads
};

/// Why an ad left the screen.
enum ZRAdCloseType : int {
    ZRAdCloseTypeAdClicked = 0,
    ZRAdCloseTypeCloseButton = 1,
    ZRAdCloseTypeTimeout = 2,
    ZRAdCloseTypeTabSwitched = 3,
    ZRAdCloseTypeLanguageChanged = 4,
    ZRAdCloseTypeLogin = 5,
    ZRAdCloseTypeLogout = 6,
    ZRAdCloseTypePushOffline = 7,
};

/// An action of the user on an ad. 1 is never sent.
enum ZRAdActionType : int {
    ZRAdActionTypeClick = 0,
    ZRAdActionTypeClose = 2,
};

/// A place in the main window where a popup may appear; 0 is none.
enum ZRAdShowAreaType : int {};

constexpr int kAdPositionBottomPopup = ZRAdPositionBottomPopup;
