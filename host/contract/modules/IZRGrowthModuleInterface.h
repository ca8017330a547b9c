#pragma once

#include <QList>
#include <QMap>
#include <QSize>
#include <QString>
#include <QVector>
#include <functional>

#include "framework/export.h"
#include "modules/ZRGrowthTypes.h"
#include "modules/ZRPremiumRecords.h"
#include "plugin/IZRPluginInterface.h"

class QWidget;

/// The growth module's one service, under the interface name "24IZRGrowthModuleInterface".
/// Main thread only, save the getters of rights and GetAdBannerAsync. The order of the operations is fixed.
class ZRHOST_API IZRGrowthModuleInterface : public IZRPluginInterface {
public:
    ~IZRGrowthModuleInterface() override;

    /// A banner of ads for that position, later, through `callback`, on the main thread. The widget has the size (in
    /// pixels) and belongs to the caller; its deletion is the banner's end. The callback may never come: there is
    /// nothing to show, no answer that can be read, another caller has asked for the same position since, or the last
    /// request for it is less than ten seconds ago; in an internal build it may come with null. Without a callback
    /// nothing is shown. In the strip at the top, of that height, a
    /// click does nothing. With `useCheck` exactly the ads in `adIds` are wanted, otherwise what is due. Callable
    /// from any thread.
    /// A logout, another language or another user leaves the banner as it is: it keeps its ads and goes on reporting
    /// exposures and clicks until its deletion. The caller deletes it at such a change and asks for a new one.
    virtual void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                  int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) = 0;

    /// To be called when the main window's layout has changed: the bottom popup moves to its place.
    virtual void UpdateAdBottomPopupCoordinates() = 0;

    /// A new panel for developer tools, without a parent; the caller owns it.
    virtual QWidget* GetAdBottomPopupDeveloperView() = 0;

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
