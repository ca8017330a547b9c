#pragma once

#include <json/value.h>

#include <QWidget>
#include <functional>
#include <optional>

#include "workbench/ControlClient.h"

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Sets the server's answers to the next requests for rights or VIP status.
class CAnswerPanel : public QWidget {
public:
    enum class EnAnswer { Good, Error, OtherCommand, Garbage, NoCode, OtherCode };

    /// Sets or removes the fault of one command; the other faults do not change.
    using SetFault = std::function<void(uint32_t command, const std::optional<Json::Value>& fault,
                                        IControlClient::Answered answered)>;

    /// `setFault` must be callable while the panel exists. Its answer can arrive after the panel's end.
    explicit CAnswerPanel(SetFault setFault, QWidget* parent = nullptr);

private:
    void AddRows(QGridLayout* grid);
    void Set();
    std::optional<Json::Value> FaultAsked();
    void Say(const QString& words, bool good);
    void ShowTexts();

    const SetFault m_fnSetFault;
    QComboBox* m_pCommand;
    QComboBox* m_pAnswer;
    QLineEdit* m_pValue;
    QComboBox* m_pTimes;
    QLabel* m_pMessage;
};
