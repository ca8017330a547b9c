#include "workbench/EntryTable.h"

#include <QHeaderView>

#include "AIChatEntries.h"
#include "EntryScenes.h"
#include "Theme.h"

namespace {

constexpr int kRowHeight = 26;

enum EnColumn { kColumnScene, kColumnPage, kColumnState, kColumnCount };

QString Word(EnEntryState state) {
    switch (state) {
        case EnEntryState::Open:
            return QStringLiteral("Open");
        case EnEntryState::ForcedOpen:
            return QStringLiteral("Open, forced");
        case EnEntryState::ForcedClosed:
            return QStringLiteral("Closed, forced");
        case EnEntryState::ClosedByServer:
            return QStringLiteral("Closed");
        case EnEntryState::NobodyLoggedIn:
            return QStringLiteral("Closed, nobody logged in");
        case EnEntryState::NoModule:
            break;
    }
    return QStringLiteral("Closed, no module");
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
    setHorizontalHeaderLabels({QStringLiteral("Scene"), QStringLiteral("Page"), QStringLiteral("State")});
    for (int column = 0; column < kColumnCount; ++column) {
        horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    ShowStates();
}

void CEntryTable::ShowStates() {
    for (int row = 0; row < rowCount(); ++row) {
        const EntryPage& page = kEntryPages[size_t(row)];
        const EnEntryState state = m_entries.State(page.scene);
        item(row, kColumnScene)->setText(QString::number(int(page.scene)));
        item(row, kColumnPage)->setText(QString::fromUtf8(page.title));
        item(row, kColumnState)->setText(Word(state));
        item(row, kColumnState)->setForeground(QColor(CAIChatEntries::IsOpen(state) ? theme::kUp : theme::kMuted));
    }
}
