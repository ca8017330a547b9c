#pragma once

#include "workbench/EntryView.h"
#include "workbench/TraceModel.h"

class QTreeWidget;

/// Shows the trace events of one format live, and all fields of the selected row. Its name is that of the format.
class CTraceView final : public CEntryView {
public:
    explicit CTraceView(std::unique_ptr<ITraceFormat> format, QWidget* parent = nullptr);

    CTraceModel& Model() { return m_model; }
    const CTraceModel& Model() const { return m_model; }

private:
    void ShowChoices() override;
    void ShowDetail(int row) override;

    CTraceModel m_model;
    CTraceFilter m_filter;
    QComboBox* m_pKind;
    QTreeWidget* m_pDetail;
};
