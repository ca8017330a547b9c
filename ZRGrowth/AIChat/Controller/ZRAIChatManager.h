#pragma once

#include <json/value.h>

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>

#include "core/IZRChannelProxy.h"
#include "core/message_dispatch.h"
#include "core/scheme.h"
#include "modules/ZRGrowthTypes.h"

class CZRAIChatWebDialog;

/// The root of AI chat: which entry scenes the server has opened to the user, and the one window with the chat's page.
/// One per process, created and started at its first use and never deleted. Main thread only; after a first use on
/// another thread the start runs later, on the main thread.
class CZRAIChatManager : public QObject {
    Q_OBJECT

public:
    using JSAPIHandler = std::function<std::shared_ptr<Json::Value>(const Json::Value& params, int call)>;

    static CZRAIChatManager* Singleton();

    CZRAIChatManager();
    ~CZRAIChatManager() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    /// Sends one request to the server. The callback receives the answer. There is no retry.
    void RequestAIChatEnableStatus();

    bool IsAIChatEnable(ZRAIChatEntryScene scene);

    /// 0 no override, 1 every scene open, any other value every scene closed. Lasts until the process ends.
    void SetAIChatDevelopEnableType(unsigned int type);

    /// Returns the store key of the current user's list. The value belongs to the installation.
    QString GenerateAIChatEnableCacheDataKey();

    /// Opens the page for a scene. The page is loaded again only if necessary. With `showPage` false an existing window
    /// stays as it is. `isPreload` loads the preload page, invisibly. `url` replaces the page's address unless empty.
    /// Any thread.
    void OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params, bool needChangeSessionId,
                        bool showPage, bool isPreload, const QString& url);
    /// Deletes the window.
    void CloseAIChatPage();

    /// Sends an event to the page. Returns whether the page can receive it.
    bool InvokeWebJSAPI(const QString& name, const Json::Value& params);
    /// Answers a call of the page to a registered handler.
    void RespondToNativeJSAPI(const QString& name, const Json::Value& value);

    /// Offers a handler to the page, from the next window on. Returns false for an empty, reserved or known name.
    bool RegisterNativeJSAPI(const QString& name, const JSAPIHandler& handler);
    /// Removes a handler, for the next window.
    void UnregisterNativeJSAPI(const QString& name);

    /// Checks that the cached list can be read. The list in memory is empty afterwards, always.
    void ReadAIChatEnableCacheData();

protected Q_SLOTS:
    void OnLanguageChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnThemeChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnCommonConfigChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg);
    void OnRequestAIChatEnableStatusCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                             const CSResponseExt* pRspExt);
    bool OnHandleScheme(QObject* objFrom, const core::scheme::SchemeInfo& stScheme, QVariant varExtMsg);
    void OnWebDialogHiddenButNotClosed();
    void OnLoadEnd();

private:
    struct OpenRequest {
        ZRAIChatPageScene pageScene;
        QMap<QString, QString> params;
        bool needChangeSessionId;
        bool showPage;
        bool isPreload;
        QString url;
    };

    void SaveAIChatEnableCacheData();
    void Bind(unsigned int message,
              void (CZRAIChatManager::*slot)(uint32_t, qulonglong, std::shared_ptr<core::CMessageBody>));
    void GetPageUrlFromCommonConfig();
    static QString GenerateCustomParameters(const QMap<QString, QString>& params);
    void ReportClickEntryScene(ZRAIChatPageScene pageScene);
    void RegisterExtendJSAPIToDialog();
    void OpenOnMainThread(const OpenRequest& request);
    void CreateDialog();
    bool NeedsLoad(const OpenRequest& request, const QString& customParameters, bool mustLoad,
                   bool& needChangeSessionId);
    void LoadPage(const OpenRequest& request, const QString& customParameters, bool needChangeSessionId);

    Json::Value m_jsonEnabledScenes;  // scenes as integers, in the server's order, duplicates and all
    unsigned int m_nDevelopEnableType = 0;

    QPointer<CZRAIChatWebDialog> m_pWebDialog;
    // The last load.
    ZRAIChatPageScene m_enPageScene = ZRAIChatPageWatchlist;
    QString m_strCustomParameters;
    uint64_t m_nLastLoadUserId = 0;
    bool m_bLastLoadIsPreload = false;  // of the last call, whether it loaded or not
    bool m_bHiddenButNotClosed = false;
    QString m_strPageUrl;
    QString m_strPreloadUrl;
    QHash<QString, JSAPIHandler> m_mapExtendJSAPI;
};
