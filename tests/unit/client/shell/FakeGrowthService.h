#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "modules/IZRGrowthModuleInterface.h"

/// A growth module service for the client. The test sets the open scenes, the user's rights and the VIP status.
class CFakeGrowthService : public IZRGrowthModuleInterface {
public:
    /// Registers a service at the plug-in centre while the result exists.
    static std::shared_ptr<CFakeGrowthService> Offer();

    void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) override;
    void UpdateAdBottomPopupCoordinates() override { ++popupPlacings; }
    QWidget* GetAdBottomPopupDeveloperView() override;

    unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush) override;
    CPremiumUIData GetUIData(EnPremiumAccess access) const override { return table.value(access); }
    CPremiumAccessData GetAccessData(EnPremiumAccess access) const override { return table.value(access); }
    CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const override { return table.value(access); }
    QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const override { return table; }
    void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) override { table[access] = data; }
    bool HasVipQualification() override { return qualification; }
    int GetVipGrade() override { return grade; }
    int GetVipState() override { return state; }
    bool IsNewVipSystem() override { return isNewSystem; }
    int GetVipEngineStatus() override { return engine; }
    int GetNewVipState() override { return newState; }
    bool IsAIChatEnable(ZRAIChatEntryScene scene) override;
    void SetAIChatDevelopEnableType(unsigned int type) override;

    std::set<int> open;
    unsigned int overrideType = 0;

    struct BannerAsked {
        int position;
        QSize size;
        std::function<void(QWidget*)> callback;
    };
    std::vector<BannerAsked> banners;  // requests so far
    int popupPlacings = 0;
    int panels = 0;  // created so far

    QMap<EnPremiumAccess, CPremiumUIAccessData> table;
    unsigned long session = 0;       // of the next request
    std::vector<std::string> asked;  // "all push", "1 5 wait", one for each request
    bool qualification = false;
    int grade = 0;
    int state = 0;
    bool isNewSystem = false;
    int engine = kVipEngineUndetermined;
    int newState = 0;
};

/// A record with a different value in each field.
CPremiumUIAccessData RecordOf(EnPremiumAccess right, bool hasPermission, const char* mainTitle);
