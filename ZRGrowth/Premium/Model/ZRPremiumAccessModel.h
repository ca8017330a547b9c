#pragma once

#include <QMap>
#include <QReadWriteLock>
#include <memory>
#include <string>

#include "modules/ZRPremiumRecords.h"

/// The table of the user's premium rights, as received from the server since the login.
/// The getters return copies and are callable from any thread. All other operations are for the main thread.
class CZRPremiumAccessModel {
public:
    CZRPremiumAccessModel();
    ~CZRPremiumAccessModel();
    CZRPremiumAccessModel(const CZRPremiumAccessModel&) = delete;
    CZRPremiumAccessModel& operator=(const CZRPremiumAccessModel&) = delete;

    /// Return a default record, or half of one, for a right that is not in the table.
    CPremiumUIData GetUIData(EnPremiumAccess access) const;
    CPremiumAccessData GetAccessData(EnPremiumAccess access) const;
    CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const;

    /// Returns the whole table. The copy is shared until one of them changes.
    QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const;

    /// Replaces the whole record of the right.
    void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data);

    /// Clears the table. The saved copy stays, since it belongs to the user.
    void ClearPremiumData();

    /// Saves the table for the logged-in user. A failure is logged and does not change the table.
    void SavePremiumData();

    /// Loads the saved table of the logged-in user. Without one the table is unchanged. It is intended that nothing
    /// calls it: rights that the server did not confirm in this session must not be shown.
    void InitPremiumData();

private:
    std::unique_ptr<QReadWriteLock> m_pLock;
    QMap<EnPremiumAccess, CPremiumUIAccessData> m_mapData;
    std::string m_strKey;
};
