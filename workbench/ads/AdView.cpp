#include "workbench/ads/AdView.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariant>
#include <algorithm>

#include "AdPanelWindow.h"
#include "Theme.h"
#include "core/time_date.h"
#include "ui/KitPaint.h"
#include "workbench/ads/AdDiagnosisText.h"
#include "workbench/ads/AdTracker.h"

namespace {

constexpr int kBatchMs = 100;
constexpr int kTickMs = 250;
constexpr int kRowHeight = 22;
constexpr int kRowsInSight = 4;  // minimum
constexpr int kFieldWidth = 150;

enum EnColumn { kColumnSlot, kColumnAsked, kColumnNext, kColumnAnswer, kColumnKept, kColumnEvent, kColumnCount };
// The columns of answer and event share the remaining width.
constexpr int kColumnWidths[kColumnCount] = {100, 74, 76, 0, 66, 0};
constexpr const char* kTitles[kColumnCount] = {"Slot", "Asked", "Next", "Last answer", "Kept", "Last event"};

QTreeWidgetItem* AddLine(QTreeWidgetItem* parent, const FieldNode& line, std::optional<bool> good) {
    auto* item = new QTreeWidgetItem(parent, {line.name, line.value});
    item->setToolTip(0, host::kit::TipText(line.name));
    item->setToolTip(1, host::kit::TipText(line.value));
    if (good) {
        item->setForeground(1, QColor(*good ? theme::kUp : theme::kDown));
    }
    for (const FieldNode& child : line.children) {
        AddLine(item, child, std::nullopt);
    }
    return item;
}

}  // namespace

CAdView::CAdView(const CAdTracker& board, QWidget* parent)
    : QWidget(parent),
      m_board(board),
      m_pNothing(new QLabel(this)),
      m_pTable(new QTableWidget(this)),
      m_pDetail(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("AdView"));
    m_pNothing->setObjectName(QStringLiteral("AdNothing"));
    m_pNothing->setProperty("role", QStringLiteral("muted"));
    m_pNothing->setText(QStringLiteral("No request for ads was seen yet"));
    SetUpTable();
    SetUpDetail();
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("AdSplitter"));
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_pTable);
    splitter->addWidget(m_pDetail);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto* panel = new QPushButton(this);
    panel->setObjectName(QStringLiteral("AdPanelOpen"));
    panel->setText(QStringLiteral("Popup panel"));
    connect(panel, &QPushButton::clicked, this, [this] { CAdPanelWindow::Open(window()); });
    auto* head = new QHBoxLayout;
    head->addWidget(m_pNothing);
    head->addStretch(1);
    head->addWidget(panel);
    layout->addLayout(head);
    layout->addWidget(splitter, 1);
    m_batch.setSingleShot(true);
    m_batch.setInterval(kBatchMs);
    connect(&m_batch, &QTimer::timeout, this, &CAdView::Show);
    connect(&m_tick, &QTimer::timeout, this, &CAdView::ShowCountdown);
    connect(&board, &CAdTracker::Changed, this, [this] {
        if (!m_batch.isActive()) {
            m_batch.start();
        }
    });
    m_tick.start(kTickMs);
    theme::OnThemeChange(this, [this] { ShowDetail(); });
    for (int column = 0; column < kColumnCount; ++column) {
        auto* title = new QTableWidgetItem(QString::fromUtf8(kTitles[column]));
        title->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        m_pTable->setHorizontalHeaderItem(column, title);
    }
    m_pDetail->setHeaderLabels({QStringLiteral("Field"), QStringLiteral("Value")});
    Show();
}

void CAdView::SetUpTable() {
    m_pTable->setObjectName(QStringLiteral("AdTable"));
    m_pTable->setColumnCount(kColumnCount);
    m_pTable->setProperty("dense", true);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setShowGrid(false);
    m_pTable->setWordWrap(false);
    m_pTable->setFrameShape(QFrame::NoFrame);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->setMinimumHeight(kRowHeight * (kRowsInSight + 1));
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_pTable->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_pTable->horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < kColumnCount; ++column) {
        if (kColumnWidths[column] == 0) {
            m_pTable->horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
        } else {
            m_pTable->setColumnWidth(column, kColumnWidths[column]);
        }
    }
    connect(m_pTable, &QTableWidget::itemSelectionChanged, this, &CAdView::ShowDetail);
}

void CAdView::SetUpDetail() {
    m_pDetail->setObjectName(QStringLiteral("AdDetail"));
    m_pDetail->setColumnCount(2);
    m_pDetail->setProperty("dense", true);
    m_pDetail->setFrameShape(QFrame::NoFrame);
    m_pDetail->setIndentation(12);
    m_pDetail->setColumnWidth(0, kFieldWidth);
}

void CAdView::SetCell(int row, int column, const QString& text) {
    QTableWidgetItem* item = m_pTable->item(row, column);
    if (!item) {
        item = new QTableWidgetItem;
        m_pTable->setItem(row, column, item);
    }
    item->setText(text);
    item->setToolTip(host::kit::TipText(text));
}

void CAdView::Show() {
    const std::vector<AdSlotState> all = m_board.Slots();
    const int chosen = m_pTable->currentRow();
    const std::optional<AdSlot> wanted =
        chosen >= 0 && chosen < int(m_slots.size()) ? std::make_optional(m_slots[size_t(chosen)]) : std::nullopt;
    m_pNothing->setVisible(all.empty());
    m_slots.clear();
    m_pTable->setRowCount(int(all.size()));
    for (const AdSlotState& slot : all) {
        ShowRow(int(m_slots.size()), slot);
        m_slots.push_back(slot.slot);
    }
    const auto place = wanted ? std::find(m_slots.begin(), m_slots.end(), *wanted) : m_slots.begin();
    if (!m_slots.empty()) {
        m_pTable->selectRow(int(place - m_slots.begin()));
    }
    ShowDetail();
}

void CAdView::ShowRow(int row, const AdSlotState& slot) {
    const AdRequest* request = m_board.Request(slot.lastRequest);
    const AdRequest* answered = m_board.Request(slot.lastAnswered);
    const QString asked =
        request ? QDateTime::fromMSecsSinceEpoch(request->sentMs).toString(QStringLiteral("HH:mm:ss")) : QString();
    SetCell(row, kColumnSlot, ad_text::Slot(slot.slot));
    SetCell(row, kColumnAsked, asked);
    SetCell(row, kColumnNext, ad_text::Next(slot, core::time_date::GetSvrTimeMillis()));
    SetCell(row, kColumnAnswer, ad_text::Outcome(answered ? answered : request));
    SetCell(row, kColumnKept, ad_text::Kept(answered));
    SetCell(row, kColumnEvent, ad_text::LastEvent(slot));
}

void CAdView::ShowDetail() {
    const int scrolled = m_pDetail->verticalScrollBar()->value();
    m_pDetail->clear();
    m_pTicking = nullptr;
    const AdSlotState* slot = Chosen();
    if (!slot) {
        return;
    }
    std::vector<ad_text::Group> groups = ad_text::Groups(m_board, *slot);
    groups.insert(groups.begin(), ad_diagnosis_text::Why(m_board, *slot, core::time_date::GetSvrTimeMillis()));
    for (const ad_text::Group& group : groups) {
        auto* title = new QTreeWidgetItem(m_pDetail, {group.title});
        title->setFirstColumnSpanned(true);
        for (size_t line = 0; line < group.lines.size(); ++line) {
            QTreeWidgetItem* item = AddLine(title, group.lines[line], group.good[line]);
            if (group.ticking == line) {
                m_pTicking = item;
            }
        }
    }
    m_pDetail->expandAll();
    m_pDetail->verticalScrollBar()->setValue(scrolled);
}

const AdSlotState* CAdView::Chosen() const {
    const int row = m_pTable->currentRow();
    return row >= 0 && row < int(m_slots.size()) ? m_board.Find(m_slots[size_t(row)]) : nullptr;
}

// Updates only the countdown, because a rebuilt detail loses its selection and scroll position.
void CAdView::ShowCountdown() {
    const AdSlotState* chosen = Chosen();
    if (chosen && m_pTicking) {
        const QString time = ad_diagnosis_text::Time(m_board, *chosen, core::time_date::GetSvrTimeMillis());
        m_pTicking->setText(1, time);
        m_pTicking->setToolTip(1, host::kit::TipText(time));
    }
    for (int row = 0; row < int(m_slots.size()); ++row) {
        if (const AdSlotState* slot = m_board.Find(m_slots[size_t(row)])) {
            SetCell(row, kColumnNext, ad_text::Next(*slot, core::time_date::GetSvrTimeMillis()));
        }
    }
}
