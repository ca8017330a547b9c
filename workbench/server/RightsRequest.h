#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;

/// Makes the module request the user's rights from the server: all of them, or a list.
class CRightsRequest : public QWidget {
public:
    explicit CRightsRequest(QWidget* parent = nullptr);

private:
    void AskAll();
    void AskList();
    void ShowSession(unsigned long session);

    QLineEdit* m_pRights;
    QCheckBox* m_pServerPush;
    QLabel* m_pOutcome;
};
