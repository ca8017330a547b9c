#include "workbench/SeenView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTableView>
#include <QTreeWidget>
#include <QVariant>

namespace {

constexpr int kRowHeight = 22;

void AddFields(QTreeWidgetItem* parent, const std::vector<FieldNode>& fields) {
    for (const FieldNode& field : fields) {
        auto* item = new QTreeWidgetItem(parent, {field.name, field.value});
        item->setToolTip(1, field.value);
        AddFields(item, field.children);
    }
}

}  // namespace

template <class Widget>
Widget* CSeenView::New(const char* part, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(m_model.Format().Name() + QString::fromLatin1(part));
    return widget;
}

CSeenView::CSeenView(std::unique_ptr<ISeenFormat> format, QWidget* parent)
    : QWidget(parent),
      m_model(std::move(format), this),
      m_filter(m_model),
      m_pKind(New<QComboBox>("Kind", this)),
      m_pCount(New<QLabel>("Count", this)),
      m_pTable(New<QTableView>("Table", this)),
      m_pDetail(New<QTreeWidget>("Detail", this)) {
    SetUpTable();
    SetUpDetail();
    auto* splitter = New<QSplitter>("Splitter", this);
    splitter->setOrientation(Qt::Vertical);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_pTable);
    splitter->addWidget(m_pDetail);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(NewFilters());
    layout->addWidget(splitter, 1);
    connect(&m_model, &CSeenModel::Changed, this, &CSeenView::ShowCount);
    texts::Keep(this, [this] { ShowTexts(); });
}

void CSeenView::SetUpTable() {
    m_pTable->setModel(&m_filter);
    m_pTable->setProperty("dense", true);
    m_pTable->setShowGrid(false);
    m_pTable->setWordWrap(false);
    m_pTable->setFrameShape(QFrame::NoFrame);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_pTable->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_pTable->horizontalHeader()->setHighlightSections(false);
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    const std::vector<int> widths = m_model.Format().Widths();
    for (size_t column = 0; column < widths.size(); ++column) {
        m_pTable->setColumnWidth(int(column), widths[column]);
    }
    Follow();
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CSeenView::ShowDetail);
}

void CSeenView::SetUpDetail() {
    constexpr int kFieldWidth = 220;
    m_pDetail->setColumnCount(2);
    m_pDetail->setProperty("dense", true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setColumnWidth(0, kFieldWidth);
    m_pDetail->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pDetail->setMinimumHeight(90);
}

void CSeenView::Follow() {
    QScrollBar* bar = m_pTable->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow) {
            bar->setValue(maximum);
        }
    });
}

QWidget* CSeenView::NewFilters() {
    auto* filters = New<QWidget>("Filters", this);
    auto* text = New<QLineEdit>("Filter", filters);
    auto* pause = New<QPushButton>("Pause", filters);
    auto* clear = New<QPushButton>("Clear", filters);
    text->setClearButtonEnabled(true);
    pause->setCheckable(true);
    m_pCount->setProperty("role", QStringLiteral("muted"));
    m_pKind->addItem(QString(), -1);
    for (size_t kind = 0; kind < m_model.Format().Kinds().size(); ++kind) {
        m_pKind->addItem(QString(), int(kind));
    }
    texts::Keep(pause, texts::kLogPause);
    texts::Keep(clear, texts::kLogClear);
    texts::Keep(text, [text] { text->setPlaceholderText(texts::Tr(texts::kLogFilter)); });
    auto* choices = new QHBoxLayout;
    choices->addWidget(text, 1);
    choices->addWidget(m_pKind);
    choices->addWidget(pause);
    choices->addWidget(clear);
    auto* layout = new QVBoxLayout(filters);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addLayout(choices);
    layout->addWidget(m_pCount);
    connect(text, &QLineEdit::textChanged, this, [this](const QString& wanted) {
        m_filter.SetText(wanted);
        ShowCount();
    });
    connect(m_pKind, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        m_filter.SetKind(m_pKind->currentData().toInt());
        ShowCount();
    });
    connect(pause, &QPushButton::toggled, &m_model, &CSeenModel::SetPaused);
    connect(clear, &QPushButton::clicked, &m_model, &CSeenModel::Clear);
    return filters;
}

void CSeenView::ShowTexts() {
    m_pKind->setItemText(0, texts::Tr(texts::kAllKinds));
    const std::vector<texts::EnText> kinds = m_model.Format().Kinds();
    for (size_t kind = 0; kind < kinds.size(); ++kind) {
        m_pKind->setItemText(int(kind) + 1, texts::Tr(kinds[kind]));
    }
    m_pDetail->setHeaderLabels({texts::Tr(texts::kField), texts::Tr(texts::kValue)});
    ShowCount();
    ShowDetail();
}

void CSeenView::ShowCount() {
    const QString words = texts::Tr(m_model.IsPaused() ? texts::kLogCountPaused : texts::kLogCount);
    m_pCount->setText(words.arg(m_filter.rowCount()).arg(m_model.rowCount()));
}

void CSeenView::ShowDetail() {
    m_pDetail->clear();
    const QModelIndexList chosen = m_pTable->selectionModel()->selectedRows();
    if (!chosen.isEmpty()) {
        const int row = m_filter.mapToSource(chosen.first()).row();
        AddFields(m_pDetail->invisibleRootItem(), m_model.Format().Detail(m_model.At(row)));
        m_pDetail->expandAll();
    }
}
