#include "workbench/EntryView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QVariant>

#include "workbench/PanelWidgets.h"

namespace {

constexpr int kRowHeight = 22;
constexpr int kDetailMinimum = 76;

}  // namespace

CEntryView::CEntryView(const QString& name, QWidget* parent)
    : QWidget(parent), m_strName(name), m_pCount(New<QLabel>("Count")), m_pTable(New<QTableView>("Table")) {
    m_pCount->setProperty("role", QStringLiteral("muted"));
}

void CEntryView::SetUp(CEntryModel& model, CEntryFilter& filter, const std::vector<int>& widths,
                       const std::vector<QComboBox*>& choices, QWidget* detail) {
    m_pModel = &model;
    m_pFilter = &filter;
    SetUpTable(widths);
    detail->setMinimumHeight(kDetailMinimum);
    auto* splitter = New<QSplitter>("Splitter");
    splitter->setOrientation(Qt::Vertical);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_pTable);
    splitter->addWidget(detail);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addLayout(NewFilters(choices));
    layout->addLayout(NewControls());
    layout->addWidget(splitter, 1);
    connect(&model, &CEntryModel::Changed, this, &CEntryView::ShowCount);
    ShowChoices();
    ShowCount();
    ShowChosen();
}

QLayout* CEntryView::NewFilters(const std::vector<QComboBox*>& choices) {
    auto* text = New<QLineEdit>("Filter");
    text->setClearButtonEnabled(true);
    text->setPlaceholderText(QStringLiteral("Filter by text"));
    connect(text, &QLineEdit::textChanged, this, [this](const QString& wanted) {
        m_pFilter->SetText(wanted);
        ShowCount();
    });
    auto* row = new QHBoxLayout;
    row->addWidget(text, 1);
    for (QComboBox* choice : choices) {
        row->addWidget(choice);
    }
    return row;
}

QLayout* CEntryView::NewControls() {
    auto* pause = New<QPushButton>("Pause");
    auto* clear = New<QPushButton>("Clear");
    pause->setCheckable(true);
    pause->setText(QStringLiteral("Pause"));
    clear->setText(QStringLiteral("Clear"));
    connect(pause, &QPushButton::toggled, m_pModel, &CEntryModel::SetPaused);
    connect(clear, &QPushButton::clicked, m_pModel, &CEntryModel::Clear);
    auto* row = new QHBoxLayout;
    row->addWidget(m_pCount, 1);
    row->addWidget(pause);
    row->addWidget(clear);
    return row;
}

QComboBox* CEntryView::NewChoice(const char* part, const std::function<void(const QVariant& item)>& choose) {
    auto* choice = New<QComboBox>(part);
    connect(choice, qOverload<int>(&QComboBox::currentIndexChanged), this, [this, choice, choose] {
        choose(choice->currentData());
        ShowCount();
    });
    return choice;
}

void CEntryView::SetUpTable(const std::vector<int>& widths) {
    m_pTable->setModel(m_pFilter);
    panel::SetUpRows(*m_pTable, kRowHeight);
    for (size_t column = 0; column < widths.size(); ++column) {
        m_pTable->setColumnWidth(int(column), widths[column]);
    }
    Follow();
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CEntryView::ShowChosen);
    // a reset clears the selection without selectionChanged
    connect(m_pFilter, &QAbstractItemModel::modelReset, this, &CEntryView::ShowChosen);
    connect(m_pFilter, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& from, const QModelIndex& to) {
        const QModelIndexList chosen = m_pTable->selectionModel()->selectedRows();
        if (!chosen.isEmpty() && chosen.first().row() >= from.row() && chosen.first().row() <= to.row()) {
            ShowChosen();
        }
    });
}

void CEntryView::Follow() {
    QScrollBar* bar = m_pTable->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow) {
            bar->setValue(maximum);
        }
    });
}

void CEntryView::ShowCount() {
    const QString words =
        m_pModel->IsPaused() ? QStringLiteral("%1 of %2 lines, paused") : QStringLiteral("%1 of %2 lines");
    m_pCount->setText(words.arg(m_pFilter->rowCount()).arg(m_pModel->rowCount()));
}

void CEntryView::ShowChosen() {
    const QModelIndexList chosen = m_pTable->selectionModel()->selectedRows();
    ShowDetail(chosen.isEmpty() ? -1 : m_pFilter->mapToSource(chosen.first()).row());
}
