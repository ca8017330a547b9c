#pragma once

#include <QWidget>

#include "workbench/SeenModel.h"

class QComboBox;
class QLabel;
class QTableView;
class QTreeWidget;

/// What was seen of one kind, live: filters above, rows below, and in full the row that is chosen. It follows
/// the youngest row while that is in sight. Object names begin with the format's name.
class CSeenView : public QWidget {
public:
    explicit CSeenView(std::unique_ptr<ISeenFormat> format, QWidget* parent = nullptr);

    CSeenModel& Model() { return m_model; }
    const CSeenModel& Model() const { return m_model; }

private:
    QWidget* NewFilters();
    void SetUpTable();
    void SetUpDetail();
    void Follow();
    void ShowTexts();
    void ShowCount();
    void ShowDetail();
    template <class Widget>
    Widget* New(const char* part, QWidget* parent);

    CSeenModel m_model;
    CSeenFilter m_filter;
    QComboBox* m_pKind;
    QLabel* m_pCount;
    QTableView* m_pTable;
    QTreeWidget* m_pDetail;
    bool m_bFollow = true;
};
