#pragma once

#include <QFrame>
#include <vector>

class QButtonGroup;
class QToolButton;

/// The tabs on the left side of the window. A collapsed navigation shows icons only.
class CNavigation : public QFrame {
    Q_OBJECT

public:
    explicit CNavigation(QWidget* parent = nullptr);

    bool IsCollapsed() const { return m_bCollapsed; }
    void SetCollapsed(bool collapsed);

    /// Marks the tab as the current one and emits nothing.
    void Show(int index);
    /// Does the same as a click on the tab.
    void Choose(int index);

Q_SIGNALS:
    /// A tab was chosen. `index` is its index in kTabPages.
    void Chosen(int index);
    /// The width has changed.
    void CollapsedChanged();

private:
    void ShowIcons();
    void ShowTexts();

    QToolButton* m_pToggle;
    QButtonGroup* m_pGroup;
    std::vector<QToolButton*> m_tabs;
    bool m_bCollapsed = false;
};
