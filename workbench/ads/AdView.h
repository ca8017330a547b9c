#pragma once

#include <QTimer>
#include <QWidget>

#include "workbench/ads/AdFacts.h"

class CAdTracker;
class QLabel;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows the board of ad slots live: a row for each slot, and the details of the selected one. Countdowns use server
/// time. `board` must outlive it.
class CAdView : public QWidget {
public:
    explicit CAdView(const CAdTracker& board, QWidget* parent = nullptr);

private:
    void SetUpTable();
    void SetUpDetail();
    void Show();
    void ShowRow(int row, const AdSlotState& slot);
    void ShowDetail();
    const AdSlotState* Chosen() const;
    void ShowCountdown();
    void SetCell(int row, int column, const QString& text);

    const CAdTracker& m_board;
    QTimer m_batch;  // limits updates to a few a second
    QTimer m_tick;
    std::vector<AdSlot> m_slots;  // by row
    QLabel* m_pNothing;
    QTableWidget* m_pTable;
    QTreeWidget* m_pDetail;
    QTreeWidgetItem* m_pTicking = nullptr;  // the countdown's line in the detail
};
