#pragma once

#include <json/value.h>

#include <QWidget>
#include <optional>

#include "workbench/ControlClient.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// Produces faults: failed, late, wrong, missing or repeated replies, and cut connections. `server` must outlive it.
class CFaultPanel : public QWidget {
public:
    enum class EnFault { Error, Delay, Garbage, WrongCommand, Frame, Copies, Silent, Drop };

    explicit CFaultPanel(IControlClient& server, QWidget* parent = nullptr);

    /// Sets or removes the fault of one command; the other faults do not change. `answered` runs once, later, unless
    /// the panel was destroyed before.
    void SetFault(uint32_t command, const std::optional<Json::Value>& fault, IControlClient::Answered answered);

    /// A new server has no faults.
    void ForgetFaults();

private:
    void AddRows(QGridLayout* grid);
    void AddButtons(QGridLayout* grid, int row);
    void ShowTexts();
    void ShowFaults();
    void Set();
    void Clear();
    void Drop();
    void Send(const Json::Value& faults);
    std::optional<Json::Value> FaultAsked();
    void Say(const QString& words, bool good);

    IControlClient& m_server;
    Json::Value m_faults{Json::objectValue};  // as the server accepted them
    QComboBox* m_pCommand;
    QComboBox* m_pFault;
    QLineEdit* m_pValue;
    QSpinBox* m_pTimes;
    QLabel* m_pInForce;
    QLabel* m_pMessage;
};
