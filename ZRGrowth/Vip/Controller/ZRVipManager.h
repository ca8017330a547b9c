#pragma once

#include <QObject>

#include "modules/ZRGrowthTypes.h"

class CZRVipDataHandler;

/// The root of the VIP subsystem: the user's status. Init() runs inside the first use, and nothing stops it.
/// One per process, made at its first use and never deleted; its operations are for the main thread. After a first
/// use on another thread Init() runs later, on the main thread.
class CZRVipManager : public QObject {
    Q_OBJECT

public:
    static CZRVipManager* Singleton();

    CZRVipManager();
    ~CZRVipManager() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();

    void RequestVipStatus();
    void ClearVipStatus();

    /// Return the status as last received. Before Init() it is false and 0, and the engine status is undetermined.
    bool HasVipQualification() const;
    int GetVipGrade() const;
    int GetVipState() const;
    int GetNewVipState() const;
    ZRVipEngineStatus GetVipEngineStatus() const;

    /// Returns false in a client of another edition than Velora, whatever the server reports.
    bool IsNewVipSystem() const;

private:
    CZRVipDataHandler* m_pDataHandler = nullptr;  // a child
};
