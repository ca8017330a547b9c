#pragma once

#include <QComboBox>
#include <QWidget>

#include "workbench/EntryModel.h"

class QLabel;
class QTableView;

/// Entries, live: a filter line and choices above, rows below, and in full the row that is chosen. It follows the
/// youngest row while that is in sight. Object names begin with the view's name.
class CEntryView : public QWidget {
protected:
    CEntryView(const QString& name, QWidget* parent);

    /// Called once, by the constructor of the view that owns all of this. `detail` shows the chosen row.
    void SetUp(CEntryModel& model, CEntryFilter& filter, const std::vector<int>& widths,
               const std::vector<QComboBox*>& choices, QWidget* detail);

    /// Sets the filter when another item is chosen. An item's data is what `choose` gets.
    QComboBox* NewChoice(const char* part, const std::function<void(const QVariant& item)>& choose);

    /// The words of the choices are others.
    virtual void ShowChoices() = 0;
    /// -1 for none.
    virtual void ShowDetail(int row) = 0;

    template <class Widget>
    Widget* New(const char* part) {
        auto* widget = new Widget(this);
        widget->setObjectName(m_strName + QString::fromLatin1(part));
        return widget;
    }

private:
    QLayout* NewFilters(const std::vector<QComboBox*>& choices);
    QLayout* NewControls();
    void SetUpTable(const std::vector<int>& widths);
    void Follow();
    void ShowCount();
    void ShowChosen();

    const QString m_strName;
    CEntryModel* m_pModel = nullptr;
    CEntryFilter* m_pFilter = nullptr;
    QLabel* m_pCount;
    QTableView* m_pTable;
    bool m_bFollow = true;
};
