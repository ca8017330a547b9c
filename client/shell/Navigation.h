#pragma once

#include <QFrame>
#include <vector>

class QButtonGroup;
class QToolButton;

/// The tabs of the client, at its left; collapsed it shows their icons alone.
class CNavigation : public QFrame {
    Q_OBJECT

public:
    explicit CNavigation(QWidget* parent = nullptr);

    bool IsCollapsed() const { return m_bCollapsed; }
    void SetCollapsed(bool collapsed);

    /// As if the tab were clicked.
    void Choose(int index);

Q_SIGNALS:
    /// A tab was chosen, by its place in kTabPages.
    void Chosen(int index);
    /// It is as wide as it will be.
    void CollapsedChanged();

private:
    void ShowIcons();
    void ShowTexts();

    QToolButton* m_pToggle;
    QButtonGroup* m_pGroup;
    std::vector<QToolButton*> m_tabs;
    bool m_bCollapsed = false;
};
