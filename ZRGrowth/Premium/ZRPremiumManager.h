#pragma once

#include <QMap>
#include <QObject>
#include <QVector>
#include <memory>

#include "modules/ZRPremiumRecords.h"

class CZRPremiumAccessModel;
class CZRPremiumDataHandler;

/// The manager of the user's premium rights. Started by Init(); before that its operations do nothing and return empty
/// values. One per process, created at its first use and never deleted.
/// Main thread, except the getters, which any thread may call after Init().
class CZRPremiumManager : public QObject {
    Q_OBJECT

public:
    static CZRPremiumManager* Singleton();

    CZRPremiumManager();
    ~CZRPremiumManager() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    /// Requests all rights or a list from the server. Returns the session of the request; 0 before Init().
    unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush);
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush);
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush);

    CPremiumUIData GetUIData(EnPremiumAccess access) const;
    CPremiumAccessData GetAccessData(EnPremiumAccess access) const;
    CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const;
    QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const;

    void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data);
    void SavePremiumData();

private:
    CZRPremiumDataHandler* m_pDataHandler = nullptr;  // a child
    std::unique_ptr<CZRPremiumAccessModel> m_pModel;
};
