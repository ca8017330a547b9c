#pragma once

#include <QPushButton>
#include <QVariant>

#include "EntryScenes.h"

class CAIChatEntries;

/// The entry to the AI chat on a page: lit while the entry is open, off with the reason in its tool tip
/// while it is not. `entries` must outlive it.
class CAIChatEntryButton : public QPushButton {
    Q_OBJECT

public:
    CAIChatEntryButton(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent = nullptr);

Q_SIGNALS:
    /// An open entry was clicked; `text` says which, and who opened it.
    void Entered(const QString& text);

private:
    void ShowState();
    void OnClicked();

    const EntryPage& m_page;
    const CAIChatEntries& m_entries;
};
