#pragma once

#include <QTimer>

#include "workbench/server/RequestForm.h"

/// Shows the server's clock and changes its offset from the local clock in steps. `server` must outlive it.
class CClockPanel : public QWidget {
public:
    explicit CClockPanel(IControlClient& server, QWidget* parent = nullptr);

    /// The offset in milliseconds, as it was last read or written.
    qint64 Offset() const;

    void ForgetServer() { m_pForm->ForgetServer(); }

private:
    void ShowTime();

    CRequestForm* m_pForm;
    QLabel* m_pTime;
    QTimer m_tick;
};
