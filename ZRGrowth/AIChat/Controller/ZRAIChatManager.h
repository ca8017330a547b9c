#pragma once

#include <json/value.h>

#include <QObject>
#include <QString>

#include "core/IZRChannelProxy.h"
#include "modules/ZRGrowthTypes.h"

/// The root of AI chat: which entry scenes the server has opened to the user.
/// One per process, made and started at its first use and never deleted. Main thread only; after a first use on
/// another thread the start runs later, on the main thread.
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

    /// Asks the server, once; the answer comes to the callback. Nothing is tried again.
    void RequestAIChatEnableStatus();

    bool IsAIChatEnable(ZRAIChatEntryScene scene);

    /// 0 no override, 1 every scene open, any other value every scene closed. Lasts until the process ends.
    void SetAIChatDevelopEnableType(unsigned int type);

    /// The key of the present user's list in the store of the installation.
    QString GenerateAIChatEnableCacheDataKey();

    /// Checks that the cached list can be read. The list in memory is empty afterwards, always.
    void ReadAIChatEnableCacheData();

protected Q_SLOTS:
    void OnRequestAIChatEnableStatusCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                             const CSResponseExt* pRspExt);

private:
    void SaveAIChatEnableCacheData();

    Json::Value m_jsonEnabledScenes;  // scenes as integers, in the server's order, duplicates and all
    unsigned int m_nDevelopEnableType = 0;
};
