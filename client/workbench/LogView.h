#pragma once

#include <QWidget>

#include "workbench/LogFilter.h"
#include "workbench/LogModel.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTableView;

/// The log, live: filters above, lines below, and in full and readable the line that is
/// chosen. It follows the youngest line while that is in sight.
class CLogView : public QWidget {
public:
    explicit CLogView(QWidget* parent = nullptr);

    CLogModel& Model() { return m_model; }
    const CLogModel& Model() const { return m_model; }

private:
    QWidget* NewFilters();
    void ShowCount();
    void ShowChoices();
    void ShowDetail();

    CLogModel m_model;
    CLogFilter m_filter;
    QComboBox* m_pSeverity;
    QComboBox* m_pSource;
    QComboBox* m_pArea;
    QLabel* m_pCount;
    QTableView* m_pTable;
    QPlainTextEdit* m_pDetail;
    bool m_bFollow = true;
};
