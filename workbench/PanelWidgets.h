#pragma once

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

/// The parts that the workbench's panels and tables have in common.
namespace panel {

template <class Widget>
Widget* New(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

/// A label with a role of the style sheet.
inline QLabel* NewTitle(const QString& text, QWidget* parent, const char* role = "muted") {
    auto* label = new QLabel(parent);
    label->setProperty("role", QString::fromLatin1(role));
    label->setText(text);
    return label;
}

/// Names the panel and gives it a grid without margins.
inline QGridLayout* NewGrid(const char* name, QWidget* panel, int verticalSpacing = 6) {
    panel->setObjectName(QString::fromLatin1(name));
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(verticalSpacing);
    return grid;
}

/// Rows of one height, one of which can be selected. Cells do not wrap.
inline void SetUpRows(QTableView& table, int rowHeight) {
    table.setProperty("dense", true);
    table.setShowGrid(false);
    table.setWordWrap(false);
    table.setFrameShape(QFrame::NoFrame);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(rowHeight);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setStretchLastSection(true);
}

}  // namespace panel
