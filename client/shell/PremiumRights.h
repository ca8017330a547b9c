#pragma once

#include <QMap>
#include <QObject>
#include <QVector>

#include "modules/ZRPremiumRecords.h"

/// The user's VIP status, as the growth module's service tells it.
struct VipStatus {
    bool qualification = false;
    int grade = 0;
    int state = 0;  // of the older system
    bool isNewSystem = false;
    int newState = 0;
    ZRVipEngineStatus engine = kVipEngineUndetermined;
};

/// What the growth module says of the user's rights and VIP status, asked anew at its bus messages. Main thread.
/// The service is asked of the plug-in centre for each call: the module may be missing or replaced.
class CPremiumRights : public QObject {
    Q_OBJECT

public:
    explicit CPremiumRights(QObject* parent = nullptr);

    /// As of the last refresh; empty and default without the module.
    const QMap<EnPremiumAccess, CPremiumUIAccessData>& Table() const { return m_table; }
    const VipStatus& Vip() const { return m_vip; }

    /// The right's record at this moment, also of one that is not in the table.
    static CPremiumUIAccessData Record(EnPremiumAccess access);

    static bool HasModule();

    /// Has the module ask the server for all rights, or for these. The result is the session; 0 without the
    /// module.
    static unsigned long AskAll(bool serverPush);
    static unsigned long AskList(const QVector<int>& rights, bool serverPush);

    /// Asks the module for everything. Called when a user was logged in or out, which the module tells nobody,
    /// and when the edition or the session has changed; the rest comes by itself.
    void Refresh();

Q_SIGNALS:
    void Changed();

private:
    QMap<EnPremiumAccess, CPremiumUIAccessData> m_table;
    VipStatus m_vip;
};
