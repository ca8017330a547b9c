#pragma once

#include "workbench/PushForm.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Sends one of the three ad pushes to the logged-in users. Empty fields are omitted from the push. `server` must
/// outlive it.
class CAdPushPanel : public CPushForm {
public:
    explicit CAdPushPanel(IControlClient& server, QWidget* parent = nullptr);

private:
    void AddRows(QGridLayout* grid);
    void Send();
    void ShowTexts();
    void ShowIds();

    QComboBox* m_pPush;
    QLineEdit* m_pType;
    QLineEdit* m_pPosition;
    QLineEdit* m_pDelay;
    QLabel* m_pIdsTitle;
    QLineEdit* m_pIds;
};
