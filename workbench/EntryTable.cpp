#include "workbench/EntryTable.h"

#include <QHeaderView>

#include "AIChatEntries.h"
#include "EntryScenes.h"
#include "Theme.h"

namespace {

constexpr int kRowHeight = 26;

enum EnColumn { kColumnScene, kColumnPage, kColumnState, kColumnCount };

texts::EnText Word(EnEntryState state) {
    switch (state) {
        case EnEntryState::Open:
            return texts::kStateOpen;
        case EnEntryState::ForcedOpen:
            return texts::kStateForcedOpen;
        case EnEntryState::ForcedClosed:
            return texts::kStateForcedClosed;
        case EnEntryState::ClosedByServer:
            return texts::kStateClosed;
        case EnEntryState::NobodyLoggedIn:
            return texts::kStateNobodyLoggedIn;
        case EnEntryState::NoModule:
            break;
    }
    return texts::kStateNoModule;
}

}  // namespace

CEntryTable::CEntryTable(const CAIChatEntries& entries, QWidget* parent)
    : QTableWidget(int(kEntryPages.size()), kColumnCount, parent), m_entries(entries) {
    setObjectName(QStringLiteral("EntryTable"));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setShowGrid(false);
    setFrameShape(NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setFixedHeight(kRowHeight + 2);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(kColumnScene, QHeaderView::ResizeToContents);
    setFixedHeight(kRowHeight * (rowCount() + 1) + 4);
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < kColumnCount; ++column) {
            setItem(row, column, new QTableWidgetItem);
        }
    }
    connect(&entries, &CAIChatEntries::Changed, this, &CEntryTable::ShowStates);
    theme::OnThemeChange(this, [this] { ShowStates(); });
    texts::Keep(this, [this] {
        setHorizontalHeaderLabels({texts::Tr(texts::kScene), texts::Tr(texts::kPage), texts::Tr(texts::kState)});
        for (int column = 0; column < kColumnCount; ++column) {
            horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        }
        ShowStates();
    });
}

void CEntryTable::ShowStates() {
    for (int row = 0; row < rowCount(); ++row) {
        const EntryPage& page = kEntryPages[size_t(row)];
        const EnEntryState state = m_entries.State(page.scene);
        item(row, kColumnScene)->setText(QString::number(int(page.scene)));
        item(row, kColumnPage)->setText(texts::Tr(page.title));
        item(row, kColumnState)->setText(texts::Tr(Word(state)));
        item(row, kColumnState)->setForeground(QColor(CAIChatEntries::IsOpen(state) ? theme::kUp : theme::kMuted));
    }
}
