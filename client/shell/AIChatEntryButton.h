#pragma once

#include <QPushButton>
#include <QVariant>

#include "EntryScenes.h"

class CAIChatEntries;

/// The button that opens the AI chat for a page. It is enabled while the entry is open; otherwise its tool tip has the
/// reason. `entries` must outlive it.
class CAIChatEntryButton : public QPushButton {
    Q_OBJECT

public:
    CAIChatEntryButton(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent = nullptr);

Q_SIGNALS:
    /// An open entry was clicked. `text` names the entry and who opened it.
    void Entered(const QString& text);

private:
    void ShowState();
    void OnClicked();

    const EntryPage& m_page;
    const CAIChatEntries& m_entries;
};
