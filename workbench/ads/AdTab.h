#pragma once

#include <QWidget>

class CAdTracker;

/// The tab for ads: the states of the slots. `board` must outlive it.
class CAdTab : public QWidget {
public:
    explicit CAdTab(const CAdTracker& board, QWidget* parent = nullptr);
};
