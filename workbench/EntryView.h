#pragma once

#include <QComboBox>
#include <QWidget>

#include "workbench/EntryModel.h"

class QLabel;
class QTableView;

/// Shows entries live: filters above, rows below, and the selected row in full. The view scrolls with new rows while
/// the last row is visible. Object names begin with the view's name.
class CEntryView : public QWidget {
protected:
    CEntryView(const QString& name, QWidget* parent);

    /// Must be called once, by the constructor of the derived view. `detail` shows the selected row.
    void SetUp(CEntryModel& model, CEntryFilter& filter, const std::vector<int>& widths,
               const std::vector<QComboBox*>& choices, QWidget* detail);

    /// Adds a combo box. Each selection calls `choose` with the item's data.
    QComboBox* NewChoice(const char* part, const std::function<void(const QVariant& item)>& choose);

    /// Sets the texts of the filters in the display language.
    virtual void ShowChoices() = 0;
    /// -1 clears the detail.
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
