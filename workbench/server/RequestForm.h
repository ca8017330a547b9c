#pragma once

#include <QWidget>
#include <map>
#include <optional>

#include "workbench/ControlClient.h"
#include "workbench/Widgets.h"
#include "workbench/server/RequestRow.h"

class QStackedWidget;

/// Sends one request with fields that the user fills. An empty field is left out, two quotes are an empty text. A form
/// for a value of the server reads it whenever it is shown without edits, and keeps the members that have no field.
/// `row` and `server` must outlive it.
class CRequestForm : public QWidget {
    Q_OBJECT

public:
    /// `user` fills the place {user} of the path.
    CRequestForm(const RequestRow& row, IControlClient& server, const QString& user = {}, QWidget* parent = nullptr);

    /// Sends the request, or shows the reason why a field is invalid.
    void Send();
    /// Reads the value from the server. It replaces edits.
    void Load();
    /// Must be called for a new server or another scenario of it. Reads the value again, unless there are edits.
    virtual void ForgetServer();

    bool IsEdited() const { return m_bEdited; }

Q_SIGNALS:
    /// The server accepted the request.
    void Accepted();

protected:
    void showEvent(QShowEvent* event) override;

    virtual void ShowOutcome(const QString& text, widgets::EnOutcome outcome = widgets::EnOutcome::Good);
    /// Shows the reason why a request failed, such as "The server refuses: user: missing".
    virtual void Fail(const QString& reason);
    /// Calls `accepted` with the server's answer, or Fail.
    void Ask(const ControlRequest& request, const std::function<void(const Json::Value& answer)>& accepted);
    /// The fields cannot be edited before their values arrive, or Fail is called.
    void SetReading(bool reading);

    IControlClient& m_server;

private:
    struct Editor {
        const RequestField* field;
        QWidget* widget;
    };

    QWidget* NewEditor(const RequestField& field);
    QLayout* NewSteps();
    QLayout* NewButtons();
    void OnEdited(const RequestField& field);
    void SetEdited(bool edited);
    void Fill(const Json::Value& value);
    QString Filled(QString pattern) const;
    std::optional<Json::Value> Body();
    ControlRequest RequestWith(const Json::Value& body) const;
    void CopyCurl();

    const RequestRow& m_row;
    const QString m_strUser;
    std::vector<Editor> m_editors;
    Json::Value m_base;  // the value that the fields change
    bool m_bEdited = false;
    int m_nEdits = 0;  // to identify late answers
    QPushButton* m_pLoad = nullptr;
    QLabel* m_pOutcome;
};

/// The forms of a table, of which one is chosen by its title. `rows` and `server` must outlive it.
class CRequestForms : public QWidget {
    Q_OBJECT

public:
    CRequestForms(const QString& name, const std::vector<RequestRow>& rows, IControlClient& server,
                  QWidget* parent = nullptr);

    /// Shows the forms of this user. Those of other users keep their edits. Must be called first for rows with {user}.
    void SetUser(const QString& user);
    /// Returns whether a form of the current user has edits.
    bool IsEdited() const;

Q_SIGNALS:
    void Accepted();

private:
    void ShowForm();

    const std::vector<RequestRow>& m_rows;
    IControlClient& m_server;
    QString m_strUser;
    std::map<std::pair<QString, int>, CRequestForm*> m_forms;  // by user and row
    QComboBox* m_pChoice;
    QStackedWidget* m_pStack;
};
