#pragma once

#include <json/value.h>

#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QLineEdit;

/// The base of the panels that push to the logged-in users. It sends pushes and shows the server's answer.
class CPushForm : public QWidget {
protected:
    /// `message` is the object name of the answer's label. `server` must outlive the form.
    CPushForm(IControlClient& server, const char* message, QWidget* parent);

    /// Adds the number in the field. An empty field adds nothing. Failure: false and a message, if the text is not a
    /// number.
    bool AddNumber(Json::Value& push, const char* member, const QLineEdit& field);
    /// Sends a push of the server's control API.
    void Send(const char* member, const Json::Value& push);
    void Say(const QString& words, bool good);
    QLabel* Message() const { return m_pMessage; }

private:
    IControlClient& m_server;
    QLabel* m_pMessage;
};
