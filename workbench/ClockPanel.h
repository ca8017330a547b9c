#pragma once

#include <QTimer>
#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QLineEdit;

/// The server's clock: what it shows, and how far it is put off the local one. `server` must outlive it.
class CClockPanel : public QWidget {
public:
    explicit CClockPanel(IControlClient& server, QWidget* parent = nullptr);

    /// The offset that is in force, as the server told last.
    qint64 Offset() const { return m_nOffset; }

    /// A server that is new runs on local time.
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
