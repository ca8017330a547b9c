#pragma once

#include "workbench/PushForm.h"

class QComboBox;
class QGridLayout;
class QLineEdit;

/// Pushes a change of rights or of the VIP status to the logged-in users. Empty fields are omitted from the push.
/// `server` must outlive it.
class CPushPanel : public CPushForm {
public:
    explicit CPushPanel(IControlClient& server, QWidget* parent = nullptr);

private:
    void AddRows(QGridLayout* grid);
    void SendPremium();
    void SendVip();
    void ShowTexts();

    QLineEdit* m_pDelay;
    QComboBox* m_pNeedAll;
    QLineEdit* m_pRights;
    QLineEdit* m_pWindow;
};
