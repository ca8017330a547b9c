#pragma once

#include "workbench/EntryView.h"
#include "workbench/LogFilter.h"

class QPlainTextEdit;

/// Shows the log live, and the selected line in full.
class CLogView final : public CEntryView {
public:
    explicit CLogView(QWidget* parent = nullptr);

    CLogModel& Model() { return m_model; }
    const CLogModel& Model() const { return m_model; }

private:
    void ShowChoices() override;
    void ShowDetail(int row) override;

    CLogModel m_model;
    CLogFilter m_filter;
    QComboBox* m_pSeverity;
    QComboBox* m_pSource;
    QComboBox* m_pArea;
    QPlainTextEdit* m_pDetail;
};
