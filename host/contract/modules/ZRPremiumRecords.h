#pragma once

#include <QString>

#include "modules/ZRGrowthTypes.h"

/// How a right is shown: the server's texts in the display language, and the ids of its links (0: none).
struct CPremiumUIData {
    EnPremiumAccess enUIAccess{};  // 0: nothing is known of how the right is shown
    QString strUIType;             // selects the layout: a letter
    QString strOtherInfo;          // a JSON text with further data, from the server and unchecked
    QString strMainTitle;
    QString strMainBtn;
    QString strDetailTitle;
    QString strDetailBtn;
    QString strDetailSubBtn;
    QString strDetailSubTitle;
    int nMainBtnUrlID = 0;
    int nDetailBtnUrlID = 0;
    int nDetailSubBtnUrlID = 0;
};

/// The user's state of a right.
struct CPremiumAccessData {
    int nDaysLeft = 0;
    EnPremiumAccess enAccess{};  // 0: nothing is known of the state
    bool bHasPermission = false;
    int nActivationType = 0;    // 1 limited time, 2 frozen, 3 full, 4 empty, 5 not activated, 6 ready; 0 not said
    int nActivationSource = 0;  // 1 a premium rule, 2 the VIP rule, 3 private customer; 0 not said
};

/// All that is known of a right. A right that nothing is known of has a default record.
struct CPremiumUIAccessData : CPremiumUIData, CPremiumAccessData {};
