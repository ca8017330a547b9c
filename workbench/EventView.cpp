#include "workbench/EventView.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>

#include "workbench/Tables.h"

namespace {

constexpr int kMinDetailHeight = 76;
constexpr int kMinTableHeight = 90;

void AddLines(QString& text, const std::vector<FieldNode>& fields, int depth) {
    for (const FieldNode& field : fields) {
        text += QString(2 * depth, QLatin1Char(' ')) + field.name;
        text += field.value.isEmpty() ? QStringLiteral("\n") : QStringLiteral(": %1\n").arg(field.value);
        AddLines(text, field.children, depth + 1);
    }
}

}  // namespace

CEventView::CEventView(std::unique_ptr<IEventFormat> format, QWidget* parent)
    : QWidget(parent),
      m_strName(format->Name()),
      m_format(std::move(format)),
      m_model(m_format),
      m_file(m_format),
      m_pText(New<QLineEdit>("Filter", QStringLiteral("Filter by text"))),
      m_pCount(New<QLabel>("Count")),
      m_pPause(New<QPushButton>("Pause")),
      m_pClear(New<QPushButton>("Clear")),
      m_pTable(New<QTableView>("Table", m_strName + QStringLiteral(" events"))),
      m_pNothing(new QLabel(m_pTable->viewport())),
      m_pDetail(New<QPlainTextEdit>("Detail", QStringLiteral("The selected row in full"))) {
    m_model.setParent(this);  // found as a child
    m_file.setParent(this);
    m_pCount->setProperty("role", QStringLiteral("muted"));
    m_pDetail->setReadOnly(true);
    m_pDetail->setTabChangesFocus(true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setMinimumHeight(kMinDetailHeight);
    SetUpTable();
    auto* splitter = New<QSplitter>("Splitter");
    splitter->setOrientation(Qt::Vertical);
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_pTable);
    splitter->addWidget(m_pDetail);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addLayout(NewFilters());
    layout->addLayout(NewControls());
    layout->addWidget(splitter, 1);
    for (CEventModel* model : {&m_model, &m_file}) {
        connect(model, &CEventModel::Changed, this, &CEventView::ShowCount);
    }
    Show(m_model);
}

QLayout* CEventView::NewFilters() {
    m_pText->setClearButtonEnabled(true);
    m_pText->setPlaceholderText(QStringLiteral("Filter by text"));
    connect(m_pText, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_filter.SetText(text);
        ShowCount();
    });
    auto* row = new QHBoxLayout;
    row->addWidget(m_pText, 1);
    for (const IEventFormat::Filter& filter : m_format->Filters()) {
        auto* box = New<QComboBox>(filter.part, QString::fromLatin1(filter.part));
        box->addItem(QString::fromLatin1(filter.all), QString());
        for (const char* choice : filter.choices) {
            box->addItem(QString::fromLatin1(choice), QString::fromLatin1(choice));
        }
        const int number = int(m_choices.size());
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, [this, box, number] {
            m_filter.SetChoice(number, box->currentData().toString());
            ShowCount();
        });
        m_choices.push_back(box);
        row->addWidget(box);
    }
    return row;
}

QLayout* CEventView::NewControls() {
    m_pPause->setCheckable(true);
    m_pPause->setText(QStringLiteral("Pause"));
    m_pClear->setText(QStringLiteral("Clear"));
    connect(m_pPause, &QPushButton::toggled, &m_model, &CEventModel::SetPaused);
    connect(m_pClear, &QPushButton::clicked, &m_model, &CEventModel::Clear);
    auto* row = new QHBoxLayout;
    row->addWidget(m_pCount, 1);
    row->addWidget(m_pPause);
    row->addWidget(m_pClear);
    return row;
}

void CEventView::SetUpTable() {
    tables::SetUp(*m_pTable);
    m_pTable->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pTable->setMinimumHeight(kMinTableHeight);
    m_filter.setSourceModel(&m_model);
    m_pTable->setModel(&m_filter);
    m_pTable->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_pTable->setSortingEnabled(true);
    m_pNothing->setObjectName(m_strName + QStringLiteral("Nothing"));
    m_pNothing->setProperty("role", QStringLiteral("muted"));
    m_pNothing->setAlignment(Qt::AlignCenter);
    m_pNothing->setWordWrap(true);
    m_pNothing->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pTable->viewport()->installEventFilter(this);
    Follow();
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CEventView::ShowSelected);
    // a reset clears the selection without selectionChanged
    connect(&m_filter, &QAbstractItemModel::modelReset, this, &CEventView::ShowSelected);
    connect(&m_filter, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& from, const QModelIndex& to) {
        const QModelIndexList selected = m_pTable->selectionModel()->selectedRows();
        if (!selected.isEmpty() && selected.first().row() >= from.row() && selected.first().row() <= to.row()) {
            ShowSelected();
        }
    });
}

bool CEventView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == m_pTable->viewport()) {
        m_pNothing->setGeometry(m_pTable->viewport()->rect().adjusted(12, 0, -12, 0));
    }
    return QWidget::eventFilter(watched, event);
}

void CEventView::showEvent(QShowEvent* event) {
    FitColumns();
    QWidget::showEvent(event);
}

// The first rows decide, so that columns do not move while one reads.
void CEventView::FitColumns() {
    if (!m_bFitted) {
        tables::FitColumns(*m_pTable);
        m_bFitted = m_filter.rowCount() > 0;
    }
}

void CEventView::Follow() {
    QScrollBar* bar = m_pTable->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow && m_filter.sortColumn() <= 0) {
            bar->setValue(maximum);
        }
    });
}

void CEventView::Show(CEventModel& model) {
    m_filter.setSourceModel(&model);
    m_pPause->setEnabled(&model == &m_model);
    m_pClear->setEnabled(&model == &m_model);
    ShowCount();
    ShowSelected();
}

void CEventView::ShowFile(const std::vector<CEventModel::RowPtr>& rows) {
    m_file.SetRows(rows);
    Show(m_file);
}

void CEventView::ShowLive() {
    m_file.SetRows({});
    Show(m_model);
}

void CEventView::ShowCount() {
    const auto& shown = static_cast<const CEventModel&>(*m_filter.sourceModel());
    const QString words =
        shown.IsPaused() ? QStringLiteral("%1 of %2 lines, paused") : QStringLiteral("%1 of %2 lines");
    m_pCount->setText(words.arg(m_filter.rowCount()).arg(shown.rowCount()));
    m_pNothing->setVisible(m_filter.rowCount() == 0);
    m_pNothing->setText(shown.rowCount() > 0 ? QStringLiteral("No row passes the filter")
                        : &shown == &m_file  ? QStringLiteral("The file has no such rows")
                        : m_model.IsPaused() ? QStringLiteral("Paused")
                                             : m_format->Nothing());
    if (isVisible()) {
        FitColumns();
    }
}

void CEventView::ShowSelected() {
    const QModelIndexList selected = m_pTable->selectionModel()->selectedRows();
    QString text;
    if (!selected.isEmpty()) {
        const auto& shown = static_cast<const CEventModel&>(*m_filter.sourceModel());
        const EventRow& row = shown.At(m_filter.mapToSource(selected.first()).row());
        if (row.detail) {
            AddLines(text, row.detail(), 0);
            text.chop(1);
        }
    }
    m_pDetail->setPlainText(text);
}

QJsonObject CEventView::Filters() const {
    QJsonObject filters{{QStringLiteral("text"), m_pText->text()}};
    for (const QComboBox* box : m_choices) {
        filters[box->accessibleName()] = box->currentData().toString();
    }
    return filters;
}

void CEventView::SetFilters(const QJsonObject& filters) {
    m_pText->setText(filters[QStringLiteral("text")].toString());
    for (QComboBox* box : m_choices) {
        box->setCurrentIndex(std::max(0, box->findData(filters[box->accessibleName()].toString())));
    }
}
