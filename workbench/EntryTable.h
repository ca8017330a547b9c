#pragma once

#include <QTableWidget>

class CAIChatEntries;

/// Shows the states of the AI chat entries of all scenes, live. `entries` must outlive it.
class CEntryTable : public QTableWidget {
public:
    explicit CEntryTable(const CAIChatEntries& entries, QWidget* parent = nullptr);

private:
    void ShowStates();

    const CAIChatEntries& m_entries;
};
