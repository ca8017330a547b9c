#pragma once

#include <json/value.h>

#include <QWidget>

#include "workbench/ControlClient.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Sends one of the three ad pushes to the logged-in users. Empty fields are omitted from the push. `server` must
/// outlive it.
class CAdPushPanel : public QWidget {
public:
    explicit CAdPushPanel(IControlClient& server, QWidget* parent = nullptr);

private:
    void AddRows(QGridLayout* grid);
    void Send();
    bool AddNumber(Json::Value& push, const char* member, const QLineEdit& field);
    void Say(const QString& words, bool good);
    void ShowTexts();
    void ShowIds();

    IControlClient& m_server;
    QComboBox* m_pPush;
    QLineEdit* m_pType;
    QLineEdit* m_pPosition;
    QLineEdit* m_pDelay;
    QLabel* m_pIdsTitle;
    QLineEdit* m_pIds;
    QLabel* m_pMessage;
};
