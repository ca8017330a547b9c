#pragma once

#include <QWidget>

#include "workbench/LogFilter.h"
#include "workbench/LogModel.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

/// The log, live: filters above, lines below. It follows the youngest line while that is in sight.
class CLogView : public QWidget {
public:
    explicit CLogView(QWidget* parent = nullptr);

    CLogModel& Model() { return m_model; }

private:
    QWidget* NewFilters();
    void ShowCount();
    void ShowChoices();

    CLogModel m_model;
    CLogFilter m_filter;
    QComboBox* m_pSeverity;
    QComboBox* m_pSource;
    QLabel* m_pCount;
    QTableView* m_pTable;
    bool m_bFollow = true;
};
