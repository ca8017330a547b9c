#pragma once

#include <QMap>
#include <QObject>
#include <QVector>

#include "modules/ZRPremiumRecords.h"

/// The user's VIP status, read from the growth module.
struct VipStatus {
    bool qualification = false;
    int grade = 0;
    int state = 0;  // in the older VIP system
    bool isNewSystem = false;
    int newState = 0;
    ZRVipEngineStatus engine = kVipEngineUndetermined;
};

/// The user's rights and VIP status, read from the growth module and refreshed at its bus messages. The service is
/// looked up for each call, because the module can be missing or replaced. Main thread.
class CPremiumRights : public QObject {
    Q_OBJECT

public:
    explicit CPremiumRights(QObject* parent = nullptr);

    /// The values at the last refresh. Empty or default without the module.
    const QMap<EnPremiumAccess, CPremiumUIAccessData>& Table() const { return m_table; }
    const VipStatus& Vip() const { return m_vip; }

    /// The current record of a right, even if it is not in the table.
    static CPremiumUIAccessData Record(EnPremiumAccess access);

    static bool HasModule();

    /// Requests all rights, or these, from the server. Returns the request's session; 0 without the module.
    static unsigned long AskAll(bool serverPush);
    static unsigned long AskList(const QVector<int>& rights, bool serverPush);

    /// Reads everything from the module. Must be called after a login, a logout and a change of edition or session;
    /// other changes are noticed.
    void Refresh();

Q_SIGNALS:
    /// The values, or the language of their texts, can have changed.
    void Changed();

private:
    QMap<EnPremiumAccess, CPremiumUIAccessData> m_table;
    VipStatus m_vip;
};
