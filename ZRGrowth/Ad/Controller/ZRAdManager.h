#pragma once

#include <QObject>

/// The root of the ad subsystem: banners and the bottom popup. Started by Init().
/// One per process, made at its first use and never deleted; its operations are for the main thread.
class CZRAdManager : public QObject {
    Q_OBJECT

public:
    static CZRAdManager* Singleton();

    CZRAdManager();
    ~CZRAdManager() override;

    void Init();
    void UnInit();
    void OnLogin();
    void OnLogout();
};
