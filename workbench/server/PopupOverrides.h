#pragma once

#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;

/// The main window's answer to a module that requests its focus state.
enum class EnFocusAnswer { AsItIs, Always, Never };

/// Overrides the display conditions of the bottom popup until the client ends.
class CPopupOverrides : public QWidget {
    Q_OBJECT

public:
    explicit CPopupOverrides(QWidget* parent = nullptr);

    /// Must be called when the window shows another tab. `index` is its index in kTabPages.
    void ShowTab(int index);

    /// Descriptions of all active overrides.
    QStringList Overridden() const;

Q_SIGNALS:
    void TabWanted(int index);
    void FocusWanted(EnFocusAnswer answer);
    /// `refused` is true if all requests for the popups' interruption slot must be refused.
    void SlotRefusalWanted(bool refused);
    void OverridesChanged();

private:
    void ForgetLastShown();

    QComboBox* m_pTab;
    QComboBox* m_pFocus;
    QComboBox* m_pSlot;
    QLabel* m_pOutcome;
};
