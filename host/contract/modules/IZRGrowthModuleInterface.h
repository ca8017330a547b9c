#pragma once

#include <json/value.h>

#include <QList>
#include <QMap>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QVector>
#include <QWidget>
#include <functional>
#include <memory>

#include "framework/CSafeFunction.h"
#include "framework/export.h"
#include "modules/IGrowthPremiumWidget.h"
#include "modules/IGrowthVipBaseWidget.h"
#include "modules/ZRGrowthMessages.h"
#include "modules/ZRGrowthTypes.h"
#include "modules/ZRPremiumRecords.h"
#include "plugin/IZRPluginInterface.h"
#include "ui/image_blur.h"

class ZAction;
class ZMenu;

/// The service of the growth module, under the interface name "24IZRGrowthModuleInterface". The order of the operations
/// is part of the binary interface.
/// Thread: main thread, except for the getters of rights, GetAdBannerAsync and OpenAIChatPage.
class ZRHOST_API IZRGrowthModuleInterface : public IZRPluginInterface {
public:
    ~IZRGrowthModuleInterface() override;

    /// Requests a banner for a ZRAdPosition. The callback receives the widget, later. `size` and
    /// `topNonClickableAreaHeight` are in pixels; a click in the strip at the top, of that height, has no effect.
    /// With `useCheck` the banner displays exactly the ads in `adIds`, otherwise those that are due.
    /// Thread: callable from any thread. The callback runs on the main thread.
    /// Ownership: the widget belongs to the caller. It survives logout and a change of language or user, and continues
    /// to report exposures and clicks until it is deleted. The caller deletes it at such a change and requests a new
    /// one.
    /// Failure: the callback never runs if no ad is due, the answer is unreadable, or another caller requested the same
    /// position meanwhile. The same is true less than ten seconds after the last request for the position. In an
    /// internal build it may run with null. Without a callback nothing is displayed.
    virtual void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                  int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) = 0;

    /// Moves the bottom popup to its place. The client calls it when the layout of the main window changed.
    virtual void UpdateAdBottomPopupCoordinates() = 0;

    /// Returns a new panel for developer tools.
    /// Ownership: the caller owns the panel, which has no parent.
    virtual QWidget* GetAdBottomPopupDeveloperView() = 0;

    /// Requests the user's rights from the server: all of them, or those of a list, which may be empty.
    /// Returns the session of the request.
    /// The answer changes the table and is announced on the bus. With `serverPush` false the message is 80051, with p1
    /// the session and p2 0. With `serverPush` true it is 80050 without a body.
    /// Failure: 0 before the module is initialised. A failed request is announced as 80051 with p2 2 and leaves the
    /// table unchanged.
    virtual unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush) = 0;
    virtual unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) = 0;
    virtual unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush) = 0;

    /// Returns copies from the table of rights. The table is empty after a logout until the server's next answer.
    /// Thread: any.
    /// Failure: a default record for a right that is not in the table.
    virtual CPremiumUIData GetUIData(EnPremiumAccess access) const = 0;
    virtual CPremiumAccessData GetAccessData(EnPremiumAccess access) const = 0;
    virtual CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const = 0;
    virtual QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const = 0;

    /// Replaces the whole record of a right until the server's next answer. It sends no message and saves nothing.
    virtual void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) = 0;

    /// Returns a new strip for a right of limited time. It shows these texts, see IGrowthPremiumWidget::UpdateUiData;
    /// the caller takes them from the right's record and updates them after bus messages 80050 and 80051.
    /// Ownership: `parent` owns the strip.
    virtual IGrowthPremiumWidget* GetPremiumTimeActivationStateWidget(const QString& mainTitle, const QString& mainBtn,
                                                                      const QString& uiType, const QString& detailTitle,
                                                                      int daysLeft, QWidget* parent) = 0;

    /// Returns a new menu entry that leads to the member page of right 1000. It follows bus messages 80050 and 80051,
    /// and is hidden while the right has no state, link or button text.
    /// Ownership: `menu` owns the entry. The caller adds it to the menu.
    virtual ZAction* GetPremiumMenuEntryAction(ZMenu* menu) = 0;

    /// Returns a new menu entry that leads to the membership centre. It follows the VIP status; create it again after a
    /// change of language or edition.
    /// Ownership: `menu` owns the entry. The caller adds it to the menu.
    virtual ZAction* GetVipMenuEntryAction(ZMenu* menu) = 0;

    /// Returns a new entry for the title bar, which is visible to members only. It follows the VIP status and calls
    /// `fnChanged` after each change; create it again after a change of language or edition.
    /// Ownership: `parent` owns the entry. Without a parent a member's entry opens as a window.
    virtual QWidget* GetVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged) = 0;

    /// Return the user's VIP status as the server last reported it. Bus message 80052 announces a change.
    /// Failure: false and 0 after a logout until the next answer.
    virtual bool HasVipQualification() = 0;
    virtual int GetVipGrade() = 0;
    /// The state in the older VIP system: 1 is a member.
    virtual int GetVipState() = 0;
    /// Returns whether the newer VIP system applies to the user. It applies to the Velora edition only.
    virtual bool IsNewVipSystem() = 0;
    /// A ZRVipEngineStatus.
    virtual int GetVipEngineStatus() = 0;
    /// The state in the newer VIP system: 0 no member, 1 member, 2 expired.
    virtual int GetNewVipState() = 0;

    /// Return whether a VIP widget may be shown for a right. Ask before creating one, and again after bus messages
    /// 80050, 80051 and 80052: a widget does not hide itself. Return a new widget, or the name and size in pixels of
    /// its image, which is a name of ZResource and may be empty. `pageId` names the caller's page in reports.
    /// Ownership: `parent` owns the widget.
    virtual bool IsVipIconEnabled(EnPremiumAccess access) = 0;
    virtual IGrowthVipBaseWidget* GetVipIcon(EnPremiumAccess access, QWidget* parent) = 0;
    virtual QString GetVipIconImageName() = 0;
    virtual QSize GetVipIconImageSize() = 0;
    virtual bool IsVipTagEnabled(EnPremiumAccess access) = 0;
    virtual IGrowthVipBaseWidget* GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                            QWidget* parent) = 0;
    virtual QString GetVipTagImageName(ZRVipTagType tagType) = 0;
    virtual QSize GetVipTagImageSize(ZRVipTagType tagType) = 0;
    virtual bool IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) = 0;
    virtual IGrowthVipBaseWidget* GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType, const QString& pageId,
                                               QWidget* parent) = 0;
    virtual bool IsVipMaskEnabled(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType) = 0;

    /// Returns a new mask, which blurs what is behind it: the painting of `bufferSource`. The radii are in pixels, for
    /// theme 3 and for the other themes. `popupStyle` selects the colour over the blur.
    /// A mask stops neither keyboard nor screen reader: the caller disables what it covers.
    /// Ownership: `parent` owns the mask.
    /// Failure: null for a mask type without a name.
    virtual IGrowthVipBaseWidget* GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType,
                                             const QString& pageId, QWidget* parent,
                                             zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                                             double blurRadiusTheme3, double blurRadiusOther, bool popupStyle) = 0;

    /// Activates a right that is ready, otherwise opens the page of the text set's link. An activation shows its result
    /// over `activeVipPopupParent`.
    /// Failure: a text set without a link opens nothing and is logged.
    virtual void HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                        QPointer<QWidget> activeVipPopupParent) = 0;

    /// Opens a page of the membership, in a web window of 390 by 848 pixels.
    /// Failure: an empty URL opens nothing and is logged.
    virtual void OpenVipWebPage(const QString& url) = 0;

    /// Returns whether the AI chat entry of that scene is open to the user. Bus message 20300 announces a change.
    /// Failure: false after a login until the server answered.
    virtual bool IsAIChatEnable(ZRAIChatEntryScene scene) = 0;

    /// Opens the window of the AI chat for a page. The page is loaded again only if scene, parameters or user changed,
    /// or if the user had closed the window. `params` become part of its address, unescaped; pairs without a key or
    /// value are left out. `needChangeSessionId` asks the page for a new session. With `showPage` false an existing
    /// window stays as it is, and nothing happens without one. Bus messages: 20302 with p1 the previous and p2 the new
    /// scene, 20301 when the user closes the window. Thread: any; the window opens later.
    virtual void OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params,
                                bool needChangeSessionId, bool showPage) = 0;

    /// Sends an event to the page of the chat.
    /// Returns whether the page can receive it.
    virtual bool InvokeAIChatWebJSAPI(const QString& name, const Json::Value& params) = 0;

    /// Offers a handler to the page, from the next window on. The handler gets the object that the page passes and the
    /// number of the call. It returns the answer, or null for an answer that comes later by RespondToNativeJSAPI.
    /// Returns whether it was registered.
    /// Failure: false for an empty name or handler, a name of the window's own handlers, and a known name.
    virtual bool RegisterAIChatNativeJSAPI(
        const QString& name, std::function<std::shared_ptr<Json::Value>(const Json::Value&, int)> handler) = 0;

    /// Answers the oldest open call of that name. Nothing happens without a window or an open call.
    virtual void RespondToNativeJSAPI(const QString& name, const Json::Value& value) = 0;

    /// Removes a handler, for the next window. Unknown names are ignored.
    virtual void UnregisterAIChatNativeJSAPI(const QString& name) = 0;

    /// Overrides the server's answer for all scenes until the process ends: 0 removes the override, 1 opens, any other
    /// value closes. It sends bus message 20300.
    virtual void SetAIChatDevelopEnableType(unsigned int type) = 0;
};
