#pragma once

#include <QHeaderView>
#include <QTableView>

/// Tables of the workbench.
namespace tables {

/// Must be called before setModel, so that the header measures its texts in the dense style. Rows have one height and
/// are selected whole. Tab leaves the table. Ctrl+C and the context menu copy the selected rows.
void SetUp(QTableView& table);

/// Sizes the columns to header and content, each within a limit.
void FitColumns(QTableView& table);

/// Copies the selected rows, with tabs between the cells, to the clipboard.
void CopyRows(const QTableView& table);

}  // namespace tables
