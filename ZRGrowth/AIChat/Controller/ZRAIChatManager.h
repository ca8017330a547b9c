#pragma once

#include <json/value.h>

#include <QObject>
#include <QString>

#include "core/IZRChannelProxy.h"
#include "modules/ZRGrowthTypes.h"

/// The manager of AI chat: the entry scenes that the server has opened to the user.
/// One per process, created and started at its first use and never deleted. Main thread. After a first use on another
/// thread the start runs later, on the main thread.
class CZRAIChatManager : public QObject {
    Q_OBJECT

public:
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

    /// Checks that the cached list can be read. It always clears the list in memory.
    void ReadAIChatEnableCacheData();

protected Q_SLOTS:
    void OnRequestAIChatEnableStatusCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                             const CSResponseExt* pRspExt);

private:
    void SaveAIChatEnableCacheData();

    Json::Value m_jsonEnabledScenes;  // scenes as integers, in the server's order, duplicates and all
    unsigned int m_nDevelopEnableType = 0;
};
