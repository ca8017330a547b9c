#pragma once

#include <QTimer>
#include <QWidget>

#include "workbench/ads/AdFacts.h"

class CAdBoard;
class QLabel;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;

/// The board of ad slots, live: a row for each slot, and all that is known of the one that is chosen. Time counts
/// down on the server's clock. `board` must outlive it.
class CAdView : public QWidget {
public:
    explicit CAdView(const CAdBoard& board, QWidget* parent = nullptr);

private:
    void SetUpTable();
    void SetUpDetail();
    void Show();
    void ShowRow(int row, const AdSlotState& slot);
    void ShowDetail();
    const AdSlotState* Chosen() const;
    void ShowCountdown();
    void SetCell(int row, int column, const QString& text);

    const CAdBoard& m_board;
    QTimer m_batch;  // what comes in a storm is shown a few times a second
    QTimer m_tick;
    std::vector<AdSlot> m_slots;  // of the rows
    QLabel* m_pNothing;
    QTableWidget* m_pTable;
    QTreeWidget* m_pDetail;
    QTreeWidgetItem* m_pTicking = nullptr;  // of the detail
};
