#pragma once

#include <QObject>

/// The root of the VIP subsystem: status and widgets. Init() runs inside the first use, and nothing stops it.
/// One per process, made at its first use and never deleted; its operations are for the main thread.
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
};
