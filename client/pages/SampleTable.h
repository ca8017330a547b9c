#pragma once

#include <QTableWidget>
#include <vector>

#include "Theme.h"

/// A table that is looked at, not worked in: names at the left of their column, figures at the right.
class CSampleTable : public QTableWidget {
public:
    struct Column {
        const char* title;
        bool figures;
    };
    struct Cell {
        QString text;
        theme::ColorName color = theme::kText;
        QByteArray source = {};  // shown in the display language, in place of the text; empty: the text
    };

    /// The column `wide` takes the room that the others leave.
    CSampleTable(const char* name, std::vector<Column> columns, int wide, QWidget* parent = nullptr);

    void AddRow(const std::vector<Cell>& cells);

    /// All columns get the same room.
    void StretchAll();
    /// No taller than its rows, and never scrolled.
    void FitRows();

private:
    void ShowColors();
    void ShowTexts();

    const std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_cells;  // by row
};
