#pragma once

#include <QMap>
#include <QVector>

#include "framework/export.h"
#include "modules/ZRGrowthTypes.h"
#include "modules/ZRPremiumRecords.h"
#include "plugin/IZRPluginInterface.h"

/// The growth module's one service, under the interface name "24IZRGrowthModuleInterface".
/// Main thread only, save the getters of rights. The order of the operations is fixed.
class ZRHOST_API IZRGrowthModuleInterface : public IZRPluginInterface {
public:
    ~IZRGrowthModuleInterface() override;

    /// Asks the server for the user's rights: for all of them, or for a list (also an empty one). The result
    /// is the session of the request, 0 before the module has started. The answer changes the table and comes
    /// as a bus message: with `serverPush` false as 80051 with p1 the session and p2 0, with true as 80050
    /// without a body; a failure as 80051 with p2 2 in both cases, and the table unchanged.
    virtual unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush) = 0;
    virtual unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) = 0;
    virtual unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush) = 0;

    /// Copies from the table of rights; a default record for a right that is not in it. Callable from any
    /// thread. The table is empty from a logout until the server's next answer.
    virtual CPremiumUIData GetUIData(EnPremiumAccess access) const = 0;
    virtual CPremiumAccessData GetAccessData(EnPremiumAccess access) const = 0;
    virtual CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const = 0;
    virtual QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const = 0;

    /// Replaces the whole record of a right, until the server's next word on it. Tells and saves nothing.
    virtual void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) = 0;

    /// The user's VIP status as the server last told it; all false and 0 from a logout until the next answer.
    /// Ask again at bus message 80052.
    virtual bool HasVipQualification() = 0;
    virtual int GetVipGrade() = 0;
    virtual int GetVipState() = 0;  // of the older VIP system: 1 is a member
    /// Whether the newer VIP system serves the user. Always false in a client of another edition than Velora.
    virtual bool IsNewVipSystem() = 0;
    virtual int GetVipEngineStatus() = 0;  // a ZRVipEngineStatus
    virtual int GetNewVipState() = 0;      // of the newer VIP system: 0 no member, 1 member, 2 expired

    /// Whether the AI chat entry of that scene is open to the user. False from the login until the server
    /// has answered. Ask again at bus message 20300.
    virtual bool IsAIChatEnable(ZRAIChatEntryScene scene) = 0;

    /// Overrides the server's answer for all scenes until the process ends: 0 no override, 1 open,
    /// any other value closed. Sends bus message 20300.
    virtual void SetAIChatDevelopEnableType(unsigned int type) = 0;
};
