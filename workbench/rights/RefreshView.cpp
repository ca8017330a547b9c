#include "workbench/rights/RefreshView.h"

#include <QDateTime>
#include <QGridLayout>
#include <QLabel>
#include <QVariant>

#include "workbench/rights/RefreshText.h"
#include "workbench/rights/RefreshTracker.h"

namespace {

constexpr int kBatchMs = 100;
constexpr int kTickMs = 1'000;

QString LastOf(const CRefreshTracker& board, CRefreshTracker::EnSubject subject) {
    const auto last = board.Last(subject);
    return last ? refresh_text::Refresh(*last) : QStringLiteral("never");
}

}  // namespace

CRefreshView::CRefreshView(const CRefreshTracker& board, QWidget* parent) : QWidget(parent), m_board(board) {
    setObjectName(QStringLiteral("RefreshView"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    m_pPremium = AddRow("RefreshPremium", QStringLiteral("Rights, last"));
    m_pVip = AddRow("RefreshVip", QStringLiteral("VIP, last"));
    m_pInFlight = AddRow("RefreshInFlight", QStringLiteral("In flight"));
    m_pWaiting = AddRow("RefreshWaiting", QStringLiteral("After a push"));
    m_pHourly = AddRow("RefreshHourly", QStringLiteral("Next hourly"));
    grid->setRowStretch(grid->rowCount(), 1);
    m_batch.setSingleShot(true);
    m_batch.setInterval(kBatchMs);
    connect(&m_batch, &QTimer::timeout, this, &CRefreshView::Show);
    connect(&m_tick, &QTimer::timeout, this, &CRefreshView::ShowTimer);
    connect(&board, &CRefreshTracker::Changed, this, [this] {
        if (!m_batch.isActive()) {
            m_batch.start();
        }
    });
    m_tick.start(kTickMs);
    Show();
}

QLabel* CRefreshView::AddRow(const char* name, const QString& title) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int row = grid->rowCount();
    auto* words = new QLabel(this);
    words->setProperty("role", QStringLiteral("muted"));
    words->setText(title);
    auto* value = new QLabel(this);
    value->setObjectName(QString::fromLatin1(name));
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    grid->addWidget(words, row, 0, Qt::AlignTop);
    grid->addWidget(value, row, 1);
    return value;
}

void CRefreshView::Show() {
    m_pPremium->setText(LastOf(m_board, CRefreshTracker::EnSubject::Premium));
    m_pVip->setText(LastOf(m_board, CRefreshTracker::EnSubject::Vip));
    m_pInFlight->setText(refresh_text::InFlight(m_board.InFlight()));
    m_pWaiting->setText(refresh_text::Waiting(m_board.WaitingPushes()));
    ShowTimer();
}

void CRefreshView::ShowTimer() {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    m_pHourly->setText(refresh_text::NextHourly(m_board.NextHourly(now), now));
}
