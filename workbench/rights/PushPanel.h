#pragma once

#include <json/value.h>

#include <QWidget>

#include "workbench/ControlClient.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Pushes a change of rights or of the VIP status to the logged-in users. Empty fields are omitted from the push.
/// `server` must outlive it.
class CPushPanel : public QWidget {
public:
    explicit CPushPanel(IControlClient& server, QWidget* parent = nullptr);

private:
    void AddRows(QGridLayout* grid);
    void SendPremium();
    void SendVip();
    bool AddNumber(Json::Value& push, const char* member, const QLineEdit& field);
    void Send(const char* member, const Json::Value& push);
    void Say(const QString& words, bool good);
    void ShowTexts();

    IControlClient& m_server;
    QLineEdit* m_pDelay;
    QComboBox* m_pNeedAll;
    QLineEdit* m_pRights;
    QLineEdit* m_pWindow;
    QLabel* m_pMessage;
};
