#pragma once

#include <QStatusBar>

class CElidedLabel;
class QLabel;

/// The line at the window's foot: how the connection is, and what the user's last click came to.
class CStatusLine : public QStatusBar {
public:
    explicit CStatusLine(QWidget* parent = nullptr);

    /// `good` is false while something is being waited for.
    void ShowConnection(const QString& text, bool good);
    bool IsGood() const { return m_bGood; }
    QString Text() const;

    /// An empty text clears it.
    void ShowNote(const QString& text);

private:
    QLabel* m_pDot;
    CElidedLabel* m_pText;
    CElidedLabel* m_pNote;
    bool m_bGood = false;
};
