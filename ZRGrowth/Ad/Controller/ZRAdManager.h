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

/// The manager of ads: a controller for the bottom popup and one for each banner position. Events of the host and
/// pushes of the server drive them. Started by Init().
/// One per process, created at its first use and never deleted. Main thread, except GetAdBannerAsync.
class CZRAdManager : public QObject {
    Q_OBJECT

public:
    static CZRAdManager* Singleton();

    CZRAdManager();
    ~CZRAdManager() override;

    void Init();
    void UnInit();

    /// Does nothing: ads are requested when the login channel is connected.
    void OnLogin();
    void OnLogout();

    /// Creates a banner and passes it to `callback` later; see CZRAdBannerController. Any thread.
    void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds);

    /// Returns a new panel without a parent. The caller owns it.
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
    /// Sends the request for a push after `delay` seconds. Only the position of the bottom popup reacts.
    void RequestAfterPush(uint32_t adType, uint32_t adPosition, uint32_t delay, ZRAdApiType apiType,
                          const QList<QString>& adIds);

    CZRAdBottomPopupController* m_adBottomPopupController = nullptr;
    QMap<int, CZRAdBannerController*> m_adBannerControllerMap;  // by ad position
    EnZRTabFrameKey m_currentTab{};                             // 0 until the first change
};
