#pragma once

#include <QObject>

#include "core/IZRChannelProxy.h"
#include "modules/ZRGrowthTypes.h"

/// The logged-in user's VIP status, from the server's answers; in memory alone. Main thread.
class CZRVipDataHandler : public QObject {
    Q_OBJECT

public:
    explicit CZRVipDataHandler(QObject* parent);
    ~CZRVipDataHandler() override;

    void Init();

    /// Requests the status once, without retries. The last answer wins.
    void RequestVipStatus();

    /// Resets the status to its defaults, without a message: only answers are announced.
    void ClearVipStatus();

    bool HasVipQualification() const { return m_status.bHasVipQualification; }
    int GetVipGrade() const { return m_status.nVipGrade; }
    int GetVipState() const { return m_status.nVipState; }
    int GetNewVipState() const { return m_status.nNewVipState; }
    bool IsNewVipSystem() const;

    /// Computed at each call, since the trade module's answer may change.
    ZRVipEngineStatus GetVipEngineStatus() const;

protected Q_SLOTS:
    void OnRequestVipStatusCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                    const CSResponseExt* pRspExt);
    void OnVipStatusChangedPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData,
                                        const CSResponseExt* pRspExt);

private:
    struct Status {
        bool bHasVipQualification = false;
        int nVipGrade = 0;
        int nVipState = 0;
        int nVipVersion = 0;
        int nNewVipState = 0;
        int nNewVipSubState = 0;
        bool bAutoRenewal = false;
    };

    ZRVipEngineStatus EngineStatusOfMember() const;

    Status m_status;
};
