#include "workbench/EventView.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>

#include "workbench/Widgets.h"

namespace {

constexpr int kMinChoiceWidth = 80;
constexpr int kMinDetailHeight = 76;
constexpr int kMinTableHeight = 90;
constexpr int kFittedRows = 30;

QString Lines(const std::vector<FieldNode>& fields, const QString& indent) {
    QString lines;
    for (const FieldNode& field : fields) {
        lines += indent + field.name + (field.value.isEmpty() ? "\n"_q : ": %1\n"_q.arg(field.value)) +
                 Lines(field.children, indent + "  "_q);
    }
    return lines;
}

}  // namespace

CEventView::CEventView(const EventFormatPtr& format, QWidget* parent)
    : QWidget(parent),
      m_model(format, this),  // found as a child
      m_file(format, this),
      m_pText(widgets::New<QLineEdit>(format->name + "Filter"_q, this, "Filter by text"_q)),
      m_pCount(widgets::NewLabel(format->name + "Count"_q, "muted", this)),
      m_pPause(widgets::NewButton(format->name + "Pause"_q, "Pause"_q, this,
                                  [this] { m_model.SetPaused(m_pPause->isChecked()); })),
      m_pClear(widgets::NewButton(format->name + "Clear"_q, "Clear"_q, this, [this] { m_model.Clear(); })),
      m_pTable(widgets::New<QTableView>(format->name + "Table"_q, this, format->name + " events"_q)),
      m_pNothing(widgets::NewLabel(format->name + "Nothing"_q, "muted", m_pTable->viewport())),
      m_pDetail(widgets::New<QPlainTextEdit>(format->name + "Detail"_q, this, "The selected row in full"_q)) {
    m_pPause->setCheckable(true);
    m_pDetail->setReadOnly(true);
    m_pDetail->setTabChangesFocus(true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setMinimumHeight(kMinDetailHeight);
    SetUpTable();
    auto* splitter = widgets::New<QSplitter>(format->name + "Splitter"_q, this);
    splitter->setOrientation(Qt::Vertical);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_pTable);
    splitter->addWidget(m_pDetail);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    widgets::Column({NewFilters(), widgets::Row({{m_pCount, 1}, m_pPause, m_pClear}), {splitter, 1}}, this)
        ->setSpacing(6);
    connect(&m_model, &CEventModel::Changed, this, &CEventView::ShowCount);
    ShowFile(nullptr);
}

QLayout* CEventView::NewFilters() {
    m_pText->setClearButtonEnabled(true);
    m_pText->setPlaceholderText(m_pText->accessibleName());
    connect(m_pText, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_filter.SetText(text);
        ShowCount();
    });
    auto* row = widgets::Row({{m_pText, 1}});
    int number = 0;
    for (const EventFormat::Filter& filter : m_model.Format()->filters) {
        const QString part = QString::fromLatin1(filter.part);
        widgets::Choices choices{{QString(), QString::fromLatin1(filter.all)}};
        for (const char* choice : filter.choices) {
            choices.emplace_back(QString::fromLatin1(choice), QString::fromLatin1(choice));
        }
        auto* box = widgets::NewCombo(m_model.Format()->name + part, part, choices, this,
                                      [this, number](const QVariant& choice) {
                                          m_filter.SetChoice(number, choice.toString());
                                          ShowCount();
                                      });
        // Its longest choice would make the workbench wider than its least width.
        box->setMinimumWidth(kMinChoiceWidth);
        row->addWidget(box);
        ++number;
    }
    return row;
}

void CEventView::SetUpTable() {
    widgets::SetUpTable(*m_pTable);
    m_pTable->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pTable->setMinimumHeight(kMinTableHeight);
    m_pTable->setModel(&m_filter);
    m_pTable->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_pTable->setSortingEnabled(true);
    m_pNothing->setAlignment(Qt::AlignCenter);
    m_pNothing->setAttribute(Qt::WA_TransparentForMouseEvents);
    widgets::Row({m_pNothing}, m_pTable->viewport())->setContentsMargins(12, 0, 12, 0);
    QScrollBar* bar = m_pTable->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow && m_filter.sortColumn() <= 0) {
            bar->setValue(maximum);
        }
    });
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CEventView::ShowSelected);
    // a reset clears the selection without selectionChanged
    connect(&m_filter, &QAbstractItemModel::modelReset, this, &CEventView::ShowSelected);
    connect(&m_filter, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& from, const QModelIndex& to) {
        if (QItemSelectionRange(from, to).contains(Selected())) {
            ShowSelected();
        }
    });
}

void CEventView::showEvent(QShowEvent* event) {
    FitColumns();
    QWidget::showEvent(event);
}

// The first rows decide, so that columns do not move while one reads.
void CEventView::FitColumns() {
    if (!m_bFitted) {
        widgets::FitColumns(*m_pTable);
        m_bFitted = m_filter.rowCount() >= kFittedRows;
    }
}

void CEventView::ShowFile(const std::vector<CEventModel::RowPtr>* rows) {
    m_filter.setSourceModel(rows ? &m_file : &m_model);
    m_file.SetRows(rows ? *rows : std::vector<CEventModel::RowPtr>());
    m_pPause->setEnabled(!rows);
    m_pClear->setEnabled(!rows);
    ShowCount();
}

const CEventModel& CEventView::Shown() const {
    return static_cast<const CEventModel&>(*m_filter.sourceModel());
}

void CEventView::ShowCount() {
    const bool isPaused = Shown().IsPaused();
    m_pCount->setText(
        "%1 of %2 lines%3"_q.arg(m_filter.rowCount()).arg(Shown().rowCount()).arg(isPaused ? ", paused"_q : QString()));
    m_pNothing->setVisible(m_filter.rowCount() == 0);
    m_pNothing->setText(Shown().rowCount() > 0 ? "No row passes the filter"_q
                        : &Shown() == &m_file  ? "The file has no such rows"_q
                        : isPaused             ? "Paused"_q
                                               : m_model.Format()->nothing);
    if (isVisible()) {
        FitColumns();
    }
}

QModelIndex CEventView::Selected() const {
    return m_pTable->selectionModel()->selectedRows().value(0);
}

void CEventView::ShowSelected() {
    const QModelIndex selected = m_filter.mapToSource(Selected());
    const auto detail = selected.isValid() ? Shown().At(selected.row()).detail : nullptr;
    m_pDetail->setPlainText(detail ? Lines(detail(), QString()).trimmed() : QString());
}
