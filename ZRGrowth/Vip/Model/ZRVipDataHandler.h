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

    /// Asks the server, once; whichever answer comes last stands. Nothing is tried again.
    void RequestVipStatus();

    /// Back to the defaults. Tells nobody: listeners hear of answers alone.
    void ClearVipStatus();

    bool HasVipQualification() const { return m_status.bHasVipQualification; }
    int GetVipGrade() const { return m_status.nVipGrade; }
    int GetVipState() const { return m_status.nVipState; }
    int GetNewVipState() const { return m_status.nNewVipState; }
    bool IsNewVipSystem() const;

    /// Worked out anew at each call, as the trade module's answer may change.
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
