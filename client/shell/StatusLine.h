#pragma once

#include <QStatusBar>

class CElidedLabel;
class QLabel;

/// The status bar with the connection's state and the result of the last click.
class CStatusLine : public QStatusBar {
public:
    explicit CStatusLine(QWidget* parent = nullptr);

    /// `good` is false while the client waits for something.
    void ShowConnection(const QString& text, bool good);
    bool IsGood() const { return m_bGood; }
    QString Text() const;

    /// An empty text clears the note.
    void ShowNote(const QString& text);

private:
    QLabel* m_pDot;
    CElidedLabel* m_pText;
    CElidedLabel* m_pNote;
    bool m_bGood = false;
};
