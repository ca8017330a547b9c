#pragma once

#include <QWidget>

#include "workbench/rights/RightsModel.h"

class QLabel;
class QLineEdit;
class QTableView;

/// The table of rights, in which one is chosen by a click or by its number: the choice stays with the right
/// whatever becomes of the table, and may be of one that is not in it. Both must outlive it.
class CRightsView : public QWidget {
    Q_OBJECT

public:
    CRightsView(const CPremiumRights& rights, const CWireDecoder& decoder, QWidget* parent = nullptr);

Q_SIGNALS:
    void Chosen(EnPremiumAccess right);

private:
    QWidget* NewHead();
    void SetUpTable();
    void Choose(EnPremiumAccess right);
    void OnTyped(const QString& text);
    void SelectChosen();
    void ShowCount();

    CRightsModel m_model;
    EnPremiumAccess m_chosen{};
    bool m_bSelecting = false;
    QLineEdit* m_pNumber;
    QLabel* m_pCount;
    QTableView* m_pTable;
};
