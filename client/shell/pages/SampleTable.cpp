#include "pages/SampleTable.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

#include "SampleMarket.h"
#include "Translation.h"
#include "ui/KitPaint.h"

namespace {

constexpr int kRowHeight = 34;
constexpr int kHeaderHeight = 34;
constexpr int kLeastNameWidth = 140;

}  // namespace

CSampleTable::CSampleTable(const char* name, std::vector<Column> columns, int wide, QWidget* parent)
    : QTableWidget(parent), m_columns(std::move(columns)), m_nWide(wide) {
    setObjectName(QString::fromLatin1(name));
    setColumnCount(int(m_columns.size()));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setFocusPolicy(Qt::TabFocus);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(NoFrame);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setFixedHeight(kHeaderHeight);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(wide, QHeaderView::Stretch);
    theme::OnThemeChange(this, [this] { ShowColors(); });
    translation::OnLanguageChange(this, [this] {
        QStringList titles;
        for (int column = 0; column < columnCount(); ++column) {
            const Column& shown = m_columns[size_t(column)];
            auto* title = new QTableWidgetItem(translation::PageText(shown.title));
            title->setTextAlignment((shown.figures ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            setHorizontalHeaderItem(column, title);
            titles << title->text();
        }
        setAccessibleName(titles.join(QStringLiteral(", ")));
        ShowTexts();
    });
}

// The page scrolls when the columns have too little room.
QSize CSampleTable::minimumSizeHint() const {
    int width = 2 * frameWidth();
    for (int column = 0; column < columnCount(); ++column) {
        const int needed = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        width += column == m_nWide ? std::min(needed, kLeastNameWidth) : needed;
    }
    return {width, QTableWidget::minimumSizeHint().height()};
}

void CSampleTable::AddRow(const std::vector<Cell>& cells) {
    const int row = rowCount();
    insertRow(row);
    m_cells.push_back(cells);
    for (int column = 0; column < columnCount(); ++column) {
        const Cell& cell = cells[size_t(column)];
        auto* item = new QTableWidgetItem(TextOf(cell));
        item->setForeground(QColor(cell.color));
        item->setTextAlignment((m_columns[size_t(column)].figures ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        setItem(row, column, item);
    }
}

void CSampleTable::ShowColors() {
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            item(row, column)->setForeground(QColor(m_cells[size_t(row)][size_t(column)].color));
        }
    }
}

QString CSampleTable::TextOf(const Cell& cell) const {
    if (m_bConcealed) {
        return figures::Concealed();
    }
    return cell.source.isEmpty() ? cell.text : translation::PageText(cell.source.constData());
}

void CSampleTable::Conceal(bool concealed) {
    m_bConcealed = concealed;
    ShowTexts();
}

void CSampleTable::ShowTexts() {
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            item(row, column)->setText(TextOf(m_cells[size_t(row)][size_t(column)]));
        }
    }
}

// A cell whose text is cut shows it whole.
bool CSampleTable::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QTableWidget::viewportEvent(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const bool isCut = index.isValid() && sizeHintForIndex(index).width() > columnWidth(index.column());
    QToolTip::showText(help->globalPos(), isCut ? host::kit::TipText(index.data().toString()) : QString(), this);
    return true;
}

void CSampleTable::StretchAll() {
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
}

void CSampleTable::FitRows() {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(kHeaderHeight + rowCount() * kRowHeight + 2);
}
