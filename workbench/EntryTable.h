#pragma once

#include <QTableWidget>

class CAIChatEntries;

/// The AI chat entries of all scenes and how they stand, live. `entries` must outlive it.
class CEntryTable : public QTableWidget {
public:
    explicit CEntryTable(const CAIChatEntries& entries, QWidget* parent = nullptr);

private:
    void ShowStates();

    const CAIChatEntries& m_entries;
};
