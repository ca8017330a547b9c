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

/// How the server answers a question for rights or VIP status next.
class CAnswerPanel : public QWidget {
public:
    enum class EnAnswer { Good, Error, OtherCommand, Garbage, NoCode, OtherCode };

    /// Sets the fault of one command, or takes it away, and leaves those of the others as they are.
    using SetFault = std::function<void(uint32_t command, const std::optional<Json::Value>& fault,
                                        IControlClient::Answered answered)>;

    /// `setFault` must be callable as long as this lives; what it answers may come when this is gone.
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
