#pragma once

#include <QMap>
#include <QObject>
#include <QSize>
#include <functional>
#include <memory>

#include "Ad/Model/ZRAdTypes.h"
#include "core/IZRChannelProxy.h"
#include "core/message_dispatch.h"
#include "modules/ZRTabFrameKey.h"

class CZRAdBannerController;
class CZRAdBottomPopupController;

/// The root of the ad subsystem: the bottom popup's slot and one slot for each banner position, driven by the host's
/// events and the server's pushes. Started by Init().
/// One per process, made at its first use and never deleted. Main thread, save GetAdBannerAsync.
class CZRAdManager : public QObject {
    Q_OBJECT

public:
    static CZRAdManager* Singleton();

    CZRAdManager();
    ~CZRAdManager() override;

    void Init();
    void UnInit();

    /// Nothing: ads are asked for when the login's channel connects.
    void OnLogin();
    void OnLogout();

    /// A banner, later, through `callback`; see CZRAdBannerController. Callable from any thread.
    void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds);

    /// A new panel without a parent, which the caller owns.
    QWidget* GetAdBottomPopupDeveloperView();

    void UpdateAdBottomPopupCoordinates();

public Q_SLOTS:
    void OnLoginChannelConnect(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnLanguageChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnTabFrameChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnAdStatusChangedPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                       const CSResponseExt* pRspExt);
    void OnAdPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                          const CSResponseExt* pRspExt);
    void OnAdCheckPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                               const CSResponseExt* pRspExt);

private:
    /// Makes the request of a push after `delay` seconds. Only the position of the bottom popup reacts.
    void RequestAfterPush(uint32_t adType, uint32_t adPosition, uint32_t delay, ZRAdApiType apiType,
                          const QList<QString>& adIds);

    CZRAdBottomPopupController* m_adBottomPopupController = nullptr;
    QMap<int, CZRAdBannerController*> m_adBannerControllerMap;  // by ad position
    EnZRTabFrameKey m_currentTab{};                             // 0 until the first change
};
