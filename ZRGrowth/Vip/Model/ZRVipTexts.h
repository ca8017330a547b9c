#pragma once

#include <QString>
#include <optional>

#include "modules/ZRPremiumRecords.h"

/// One text set of a right: title, button text and the link id of the button.
struct CZRVipTexts {
    QString strTitle;
    QString strBtn;
    int nBtnUrlID = 0;
};

/// Returns the text set that a VIP widget displays. Nothing for a data type without a name.
std::optional<CZRVipTexts> SelectVipTexts(const CPremiumUIAccessData& data, ZRVipUIDataType dataType);
