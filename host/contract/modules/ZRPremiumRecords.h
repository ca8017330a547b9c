#pragma once

#include <QString>

#include "modules/ZRGrowthTypes.h"

/// The activation of a right. The server may send other numbers.
enum ZRPremiumActivationType : int {
    ZRPremiumActivationUnknown = 0,
    ZRPremiumActivationLimitedTime = 1,
    ZRPremiumActivationFrozen = 2,
    ZRPremiumActivationFull = 3,
    ZRPremiumActivationEmpty = 4,
    ZRPremiumActivationNotActivated = 5,
    ZRPremiumActivationReady = 6,
};

/// The reason of an activation. The server may send other numbers.
enum ZRPremiumActivationSource : int {
    ZRPremiumSourceUnknown = 0,
    ZRPremiumSourcePremium = 1,
    ZRPremiumSourceVip = 2,
    ZRPremiumSourcePrivateCustomer = 3,
};

/// The display half of a right: the server's texts in the display language, and link ids (0: no link).
struct CPremiumUIData {
    /// 0: the server sent no display half.
    EnPremiumAccess enUIAccess{};
    /// Selects the layout: a letter.
    QString strUIType;
    /// Further data as JSON text, from the server and not validated.
    QString strOtherInfo;
    /// Title, button text and link of each of the three text sets, see ZRVipUIDataType.
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

/// The state half of a right: the user's permission and activation.
struct CPremiumAccessData {
    /// Days until the right ends.
    int nDaysLeft = 0;
    /// 0: the server sent no state half.
    EnPremiumAccess enAccess{};
    /// Whether the user may use the feature.
    bool bHasPermission = false;
    /// A ZRPremiumActivationType.
    int nActivationType = 0;
    /// A ZRPremiumActivationSource.
    int nActivationSource = 0;
};

/// The record of a right. An unknown right has a default record.
struct CPremiumUIAccessData : CPremiumUIData, CPremiumAccessData {};
