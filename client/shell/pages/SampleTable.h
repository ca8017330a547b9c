#pragma once

#include <QTableWidget>
#include <vector>

#include "ClientTexts.h"
#include "Theme.h"

/// A read-only table. Names are left-aligned, figures right-aligned.
class CSampleTable : public QTableWidget {
public:
    struct Column {
        texts::EnText title;
        bool figures;
    };
    struct Cell {
        QString text;
        theme::ColorName color = theme::kText;
        texts::EnText id{};  // replaces the text if it is not 0
    };

    /// The column `wide` gets the remaining width.
    CSampleTable(const char* name, std::vector<Column> columns, int wide, QWidget* parent = nullptr);

    void AddRow(const std::vector<Cell>& cells);

    /// All columns get the same width.
    void StretchAll();
    /// Makes the table as high as its rows, without a scroll bar.
    void FitRows();

private:
    void ShowColors();
    void ShowTexts();

    const std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_cells;  // by row
};
