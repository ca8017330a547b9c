#include "workbench/Tables.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <algorithm>

namespace tables {
namespace {

constexpr int kRowHeight = 24;
constexpr int kMaxColumnWidth = 220;

}  // namespace

void SetUp(QTableView& table) {
    table.setProperty("dense", true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setFrameShape(QFrame::NoFrame);
    table.setTabKeyNavigation(false);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(kRowHeight);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table.horizontalHeader()->setStretchLastSection(true);
    auto* copy = new QAction(QStringLiteral("Copy rows"), &table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(copy, &QAction::triggered, &table, [&table] { CopyRows(table); });
    table.addAction(copy);
    table.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FitColumns(QTableView& table) {
    const QHeaderView& header = *table.horizontalHeader();
    for (int column = 0; column < header.count() - 1; ++column) {
        table.resizeColumnToContents(column);
        table.setColumnWidth(column, std::min(header.sectionSize(column), kMaxColumnWidth));
    }
}

void CopyRows(const QTableView& table) {
    QModelIndexList rows = table.selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (int column = 0; column < table.model()->columnCount(); ++column) {
            cells << row.sibling(row.row(), column).data().toString();
        }
        lines << cells.join(QLatin1Char('\t'));
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

}  // namespace tables
