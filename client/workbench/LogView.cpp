#include "workbench/LogView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>
#include <QVariant>

#include "ClientTexts.h"
#include "log/LogText.h"

namespace {

constexpr int kRowHeight = 22;
constexpr int kDetailHeight = 76;

// The parts of the growth module, as their lines name them.
constexpr const char* kAreas[] = {"AIChat", "Ad", "Premium", "Vip"};

template <class Widget>
Widget* New(const char* name, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

}  // namespace

CLogView::CLogView(QWidget* parent)
    : QWidget(parent),
      m_model(this),
      m_filter(m_model),
      m_pSeverity(New<QComboBox>("LogSeverity", this)),
      m_pSource(New<QComboBox>("LogSource", this)),
      m_pArea(New<QComboBox>("LogArea", this)),
      m_pCount(New<QLabel>("LogCount", this)),
      m_pTable(New<QTableView>("LogTable", this)),
      m_pDetail(New<QPlainTextEdit>("LogDetail", this)) {
    m_pTable->setModel(&m_filter);
    m_pTable->setShowGrid(false);
    m_pTable->setWordWrap(false);
    m_pTable->setFrameShape(QFrame::NoFrame);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_pTable->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_pTable->horizontalHeader()->setHighlightSections(false);
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    m_pTable->setColumnWidth(CLogModel::Time, 80);
    m_pTable->setColumnWidth(CLogModel::Severity, 60);
    m_pTable->setColumnWidth(CLogModel::Tag, 92);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(NewFilters());
    layout->addWidget(m_pTable, 1);
    layout->addWidget(m_pDetail);
    m_pDetail->setReadOnly(true);
    m_pDetail->setFixedHeight(kDetailHeight);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    connect(m_pTable->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CLogView::ShowDetail);
    m_pCount->setProperty("role", QStringLiteral("muted"));

    QScrollBar* bar = m_pTable->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_bFollow = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_bFollow) {
            bar->setValue(maximum);
        }
    });
    connect(&m_model, &CLogModel::Changed, this, &CLogView::ShowCount);
    texts::Keep(this, [this] {
        ShowChoices();
        ShowCount();
    });
}

QWidget* CLogView::NewFilters() {
    auto* filters = new QWidget(this);
    auto* text = New<QLineEdit>("LogFilter", filters);
    auto* pause = New<QPushButton>("LogPause", filters);
    auto* clear = New<QPushButton>("LogClear", filters);
    auto* title = New<QLabel>("LogTitle", filters);
    title->setProperty("role", QStringLiteral("section"));
    text->setClearButtonEnabled(true);
    pause->setCheckable(true);
    texts::Keep(title, texts::kLog);
    texts::Keep(pause, texts::kLogPause);
    texts::Keep(clear, texts::kLogClear);
    texts::Keep(text, [text] { text->setPlaceholderText(texts::Tr(texts::kLogFilter)); });
    auto* head = new QHBoxLayout;
    head->addWidget(title);
    head->addWidget(m_pCount);
    head->addStretch(1);
    head->addWidget(pause);
    head->addWidget(clear);
    auto* choices = new QHBoxLayout;
    choices->addWidget(text, 1);
    choices->addWidget(m_pSeverity);
    choices->addWidget(m_pSource);
    choices->addWidget(m_pArea);
    auto* layout = new QVBoxLayout(filters);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(head);
    layout->addLayout(choices);

    connect(text, &QLineEdit::textChanged, this, [this](const QString& wanted) {
        m_filter.SetText(wanted);
        ShowCount();
    });
    connect(m_pSeverity, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        m_filter.SetMinimum(ZRLogType(m_pSeverity->currentData().toInt()));
        ShowCount();
    });
    connect(m_pSource, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        m_filter.SetSource(CLogFilter::EnSource(m_pSource->currentData().toInt()));
        ShowCount();
    });
    connect(m_pArea, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        m_filter.SetArea(m_pArea->currentData().toString());
        ShowCount();
    });
    connect(pause, &QPushButton::toggled, &m_model, &CLogModel::SetPaused);
    connect(clear, &QPushButton::clicked, &m_model, &CLogModel::Clear);
    m_pSeverity->addItem(QString(), 0);
    m_pSeverity->addItem(QString(), int(kZRLogError));
    m_pSeverity->addItem(QString(), int(kZRLogFatal));
    m_pSource->addItem(QString(), int(CLogFilter::EnSource::All));
    m_pSource->addItem(QString(), int(CLogFilter::EnSource::Host));
    m_pSource->addItem(QString(), int(CLogFilter::EnSource::Module));
    m_pArea->addItem(QString(), QString());
    for (const char* area : kAreas) {
        m_pArea->addItem(QString::fromLatin1(area), QString::fromLatin1(area));
    }
    return filters;
}

void CLogView::ShowChoices() {
    constexpr texts::EnText kSeverities[] = {texts::kSeverityAll, texts::kSeverityError, texts::kSeverityFatal};
    constexpr texts::EnText kSources[] = {texts::kSourceAll, texts::kSourceHost, texts::kSourceModule};
    for (int index = 0; index < m_pSeverity->count(); ++index) {
        m_pSeverity->setItemText(index, texts::Tr(kSeverities[index]));
    }
    m_pArea->setItemText(0, texts::Tr(texts::kAreaAll));
    for (int index = 0; index < m_pSource->count(); ++index) {
        m_pSource->setItemText(index, texts::Tr(kSources[index]));
    }
}

void CLogView::ShowDetail() {
    const QModelIndexList chosen = m_pTable->selectionModel()->selectedRows();
    if (chosen.isEmpty()) {
        m_pDetail->clear();
        return;
    }
    const int row = m_filter.mapToSource(chosen.first()).row();
    const QString readable = QString::fromStdString(EscapedLogText(m_model.ReadableAt(row)));
    const QString& place = m_model.PlaceAt(row);
    m_pDetail->setPlainText(place.isEmpty() ? readable : readable + QLatin1Char('\n') + place);
}

void CLogView::ShowCount() {
    const QString words = texts::Tr(m_model.IsPaused() ? texts::kLogCountPaused : texts::kLogCount);
    m_pCount->setText(words.arg(m_filter.rowCount()).arg(m_model.rowCount()));
}
