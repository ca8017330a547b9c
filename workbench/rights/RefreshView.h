#pragma once

#include <QTimer>
#include <QWidget>

class CRefreshTracker;
class QLabel;

/// Shows the board of refreshes live. `board` must outlive it.
class CRefreshView : public QWidget {
public:
    explicit CRefreshView(const CRefreshTracker& board, QWidget* parent = nullptr);

private:
    QLabel* AddRow(const char* name, const QString& title);
    void Show();
    void ShowTimer();

    const CRefreshTracker& m_board;
    QTimer m_batch;  // limits updates to a few a second
    QTimer m_tick;
    QLabel* m_pPremium;
    QLabel* m_pVip;
    QLabel* m_pInFlight;
    QLabel* m_pWaiting;
    QLabel* m_pHourly;
};
