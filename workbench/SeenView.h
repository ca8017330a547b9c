#pragma once

#include "workbench/EntryView.h"
#include "workbench/SeenModel.h"

class QTreeWidget;

/// Shows the trace events of one format live, and all fields of the selected row. Its name is that of the format.
class CSeenView final : public CEntryView {
public:
    explicit CSeenView(std::unique_ptr<ISeenFormat> format, QWidget* parent = nullptr);

    CSeenModel& Model() { return m_model; }
    const CSeenModel& Model() const { return m_model; }

private:
    void ShowChoices() override;
    void ShowDetail(int row) override;

    CSeenModel m_model;
    CSeenFilter m_filter;
    QComboBox* m_pKind;
    QTreeWidget* m_pDetail;
};
