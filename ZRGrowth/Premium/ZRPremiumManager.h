#pragma once

#include <QObject>

/// The root of the premium subsystem: the user's rights. Started by Init().
/// One per process, made at its first use and never deleted; its operations are for the main thread.
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
};
