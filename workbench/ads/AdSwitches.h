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

/// What the main window answers to the question for its focus.
enum class EnFocusAnswer { AsItIs, Always, Never };

/// The circumstances on which the bottom popup depends, each of which can be made to be another than it is. The focus
/// and the slot are overridden as long as the client lasts. The interval is written into the server's scenario: a
/// server that the client has started ends with it, one that it was sent to keeps the interval until it starts anew
/// or has it set back, and a client that comes later takes it for the server's own. `server` must outlive it.
class CAdSwitches : public QWidget {
    Q_OBJECT

public:
    explicit CAdSwitches(IControlClient& server, QWidget* parent = nullptr);

    /// The window shows that tab, by its place in kTabPages.
    void ShowTab(int index);

    /// What is other than it would be of itself, in words.
    QStringList Overridden() const;

    /// The server is another one, or a new start of the same.
    void ForgetServer();

Q_SIGNALS:
    void TabWanted(int index);
    void FocusWanted(EnFocusAnswer answer);
    /// Whether the slot of popups is to be refused to all who ask.
    void SlotRefusalWanted(bool refused);
    /// Something else is overridden than before.
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
