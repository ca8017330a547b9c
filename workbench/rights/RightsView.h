#pragma once

#include <QWidget>

#include "workbench/rights/RightsModel.h"

class QLabel;
class QLineEdit;
class QTableView;

/// The table of rights. One is selected by a click or by its number. The selection is kept when the table changes, and
/// can be a right that is not in the table. Both arguments must outlive it.
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
