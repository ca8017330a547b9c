#pragma once

#include <QWidget>
#include <optional>

#include "workbench/ControlClient.h"
#include "workbench/server/RequestRow.h"

class QLabel;
class QPushButton;

/// Sends one request with fields that the user fills. An empty field is left out, two quotes are an empty text. A form
/// for a value of the server reads it when it is shown, and keeps the members that have no field. `row` and `server`
/// must outlive it.
class CRequestForm : public QWidget {
    Q_OBJECT

public:
    CRequestForm(const RequestRow& row, IControlClient& server, QWidget* parent = nullptr);

    /// Sets the place {user} of the path. The unsaved edits of each user are kept and come back with it.
    void SetUser(const QString& user);
    /// Sets the text of a field, as if it was typed.
    void SetText(const std::string& key, const QString& text);
    /// Sends the request, or shows the reason why a field is invalid.
    void Send();
    /// Reads the value from the server. Discards edits.
    void Load();
    /// Must be called for a new server or a new scenario. Edits are kept.
    void ForgetServer();

    bool IsEdited() const { return m_bEdited; }
    /// The value that the server has, as it was last read or written.
    const Json::Value& Value() const { return m_base; }

Q_SIGNALS:
    /// The server accepted the request.
    void Accepted();

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Editor {
        const RequestField* field;
        QWidget* widget;
    };
    struct Draft {
        QStringList texts;
        Json::Value base;
    };
    struct Request {
        Json::Value body;
        ControlRequest control;
    };

    QWidget* NewEditor(const RequestField& field);
    QLayout* NewSteps();
    QLayout* NewButtons();
    void OnEdited(const RequestField& field);
    void SetEdited(bool edited);
    void SetReading(bool reading);
    void Fill(const Json::Value& value);
    RequestRow::Values Places() const;
    std::optional<Request> Build();
    void Push(const RequestRow::Values& places);
    void CopyCurl();
    void Fail(const QString& reason);

    const RequestRow& m_row;
    IControlClient& m_server;
    std::vector<Editor> m_editors;
    QString m_strUser;
    QMap<QString, Draft> m_drafts;  // by user
    Json::Value m_base;             // the value that the fields change
    bool m_bEdited = false;
    bool m_bFilling = false;
    int m_nEdits = 0;  // counts edits and changes of the user, to identify late answers
    QPushButton* m_pLoad = nullptr;
    QLabel* m_pOutcome;
};

/// The forms of a table, of which one is chosen by its title. `rows` and `server` must outlive it.
class CRequestForms : public QWidget {
    Q_OBJECT

public:
    CRequestForms(const QString& name, const std::vector<RequestRow>& rows, IControlClient& server,
                  QWidget* parent = nullptr);

    bool IsEdited() const;
    void SetUser(const QString& user);
    void ForgetServer();

Q_SIGNALS:
    void Accepted();

private:
    std::vector<CRequestForm*> m_forms;
};
