#pragma once

#include <QWidget>

#include "workbench/EventModel.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableView;

/// Shows events of one format live: filters above, rows below, and the selected row in full. The view scrolls with new
/// rows while the last row is visible. Instead of the live rows it can show those of a file. Object names begin with
/// the format's name.
class CEventView : public QWidget {
public:
    explicit CEventView(const EventFormatPtr& format, QWidget* parent = nullptr);

    CEventModel& Model() { return m_model; }
    const CEventModel& Model() const { return m_model; }

    /// Shows the rows of a file; null: the live rows again.
    void ShowFile(const std::vector<CEventModel::RowPtr>* rows);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLayout* NewFilters();
    void SetUpTable();
    const CEventModel& Shown() const;
    void ShowCount();
    QModelIndex Selected() const;
    void ShowSelected();
    void FitColumns();

    CEventModel m_model;
    CEventModel m_file;
    CEventFilter m_filter;
    QLineEdit* m_pText;
    QLabel* m_pCount;
    QPushButton* m_pPause;
    QPushButton* m_pClear;
    QTableView* m_pTable;
    QLabel* m_pNothing;
    QPlainTextEdit* m_pDetail;
    bool m_bFollow = true;
    bool m_bFitted = false;
};
