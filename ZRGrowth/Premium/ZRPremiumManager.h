#pragma once

#include <QMap>
#include <QObject>
#include <QVector>
#include <memory>

#include "modules/ZRPremiumRecords.h"

class CZRPremiumAccessModel;
class CZRPremiumDataHandler;

/// The root of the premium subsystem: the user's rights. Started by Init(); until then its operations do
/// nothing and give empty values. One per process, made at its first use and never deleted.
/// Main thread, save the getters, which may be called from any thread once Init() has run.
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

    /// Asks the server for all rights, or for a list, and gives the session of the request; 0 before Init().
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
