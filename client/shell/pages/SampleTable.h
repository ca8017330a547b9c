#pragma once

#include <QTableWidget>
#include <vector>

#include "Theme.h"

/// A read-only table. Names are left-aligned, figures right-aligned.
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

    /// The column `wide` gets the remaining width.
    CSampleTable(const char* name, std::vector<Column> columns, int wide, QWidget* parent = nullptr);

    void AddRow(const std::vector<Cell>& cells);

    /// Shows placeholders in place of the cells, for a table behind a mask.
    void Conceal(bool concealed);

    /// All columns get the same width.
    void StretchAll();
    /// Makes the table as high as its rows, without a scroll bar.
    void FitRows();

    QSize minimumSizeHint() const override;

protected:
    bool viewportEvent(QEvent* event) override;

private:
    void ShowColors();
    QString TextOf(const Cell& cell) const;
    void ShowTexts();

    const std::vector<Column> m_columns;
    const int m_nWide;
    std::vector<std::vector<Cell>> m_cells;  // by row
    bool m_bConcealed = false;
};
