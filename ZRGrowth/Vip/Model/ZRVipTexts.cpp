#include "Vip/Model/ZRVipTexts.h"

std::optional<CZRVipTexts> SelectVipTexts(const CPremiumUIAccessData& data, ZRVipUIDataType dataType) {
    switch (dataType) {
        case ZRVipUIDataMain:
            return CZRVipTexts{data.strMainTitle, data.strMainBtn, data.nMainBtnUrlID};
        case ZRVipUIDataDetail:
            return CZRVipTexts{data.strDetailTitle, data.strDetailBtn, data.nDetailBtnUrlID};
        case ZRVipUIDataDetailSub:
            return CZRVipTexts{data.strDetailSubTitle, data.strDetailSubBtn, data.nDetailSubBtnUrlID};
    }
    return std::nullopt;
}
