#pragma once

#include <QTimer>
#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QLineEdit;

/// Shows the server's clock and sets its offset from the local clock. `server` must outlive it.
class CClockPanel : public QWidget {
public:
    explicit CClockPanel(IControlClient& server, QWidget* parent = nullptr);

    /// The current offset, as last returned by the server.
    qint64 Offset() const { return m_nOffset; }

    /// A new server runs on local time.
    void ForgetOffset();

private:
    QWidget* NewStep(const char* name, const QString& text, qint64 stepMs);
    void SetOffset(qint64 offsetMs);
    void SetTyped();
    void ShowTime();
    void Say(const QString& words, bool good);

    IControlClient& m_server;
    QTimer m_tick;
    qint64 m_nOffset = 0;
    QLineEdit* m_pOffset;
    QLabel* m_pTime;
    QLabel* m_pMessage;
};
