#pragma once

#include <QStringList>
#include <QWidget>

#include "workbench/ControlClient.h"

class CAdInterval;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// The main window's answer to a module that requests its focus state.
enum class EnFocusAnswer { AsItIs, Always, Never };

/// Overrides the display conditions of the bottom popup. Focus and slot are overridden until the client ends. The
/// interval is written to the server's scenario and ends with the client's own server. Any other server keeps it
/// until a restart or a reset; a later client regards it as the server's own. `server` must outlive it.
class CAdSwitches : public QWidget {
    Q_OBJECT

public:
    explicit CAdSwitches(IControlClient& server, QWidget* parent = nullptr);

    /// Must be called when the window shows another tab. `index` is its index in kTabPages.
    void ShowTab(int index);

    /// Descriptions of all active overrides.
    QStringList Overridden() const;

    /// Must be called for a new or restarted server.
    void ForgetServer();

Q_SIGNALS:
    void TabWanted(int index);
    void FocusWanted(EnFocusAnswer answer);
    /// `refused` is true if all requests for the popups' interruption slot must be refused.
    void SlotRefusalWanted(bool refused);
    void OverridesChanged();

private:
    void AddRows(QGridLayout* grid);
    QWidget* NewIntervalRow();
    void SetInterval();
    void ForgetLastShown();
    void Say(const QString& words, bool good);
    void ShowTexts();

    CAdInterval* m_pInterval;
    QComboBox* m_pTab;
    QComboBox* m_pFocus;
    QComboBox* m_pSlot;
    QLineEdit* m_pSeconds;
    QPushButton* m_pSetInterval;
    QLabel* m_pMessage;
};
