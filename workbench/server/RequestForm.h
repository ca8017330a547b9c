#pragma once

#include <QWidget>
#include <optional>

#include "workbench/ControlClient.h"
#include "workbench/server/RequestRow.h"

class QFormLayout;
class QLabel;
class QPushButton;

/// Sets the text of an outcome line, and its colour for success or failure.
void ShowOutcome(QLabel* line, const QString& text, bool good);

/// A new outcome line, whose text is plain.
QLabel* NewOutcomeLine(const QString& name, QWidget* parent);

/// Sends one request with fields that the user fills. An empty field is left out, two quotes are an empty text. A form
/// for a value of the server reads it first, and keeps the members that have no field. `row` and `server` must outlive
/// it.
class CRequestForm : public QWidget {
    Q_OBJECT

public:
    CRequestForm(const RequestRow& row, IControlClient& server, QWidget* parent = nullptr);

    /// Sets the place {user} of the path. The unsaved edits of each user are kept and come back with it.
    void SetUser(const QString& user);
    /// Sets the text of a field, as if it was typed.
    void SetText(const char* key, const QString& text);
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
    /// The value was read.
    void Loaded();

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
        RequestRow::Values places;
        Json::Value body;
        ControlRequest control;
    };

    QWidget* NewEditor(const RequestField& field);
    void AddButtons(QFormLayout* layout);
    void OnEdited(const RequestField& field);
    void SetEdited(bool edited);
    void SetReading(bool reading);
    void Take(const ServerAnswer& answer);
    std::optional<RequestRow::Values> Places();
    std::optional<Request> Build();
    void OnAccepted(const ServerAnswer& answer, const RequestRow::Values& places);
    void CopyCurl();
    void Fail(const QString& reason);

    const RequestRow& m_row;
    IControlClient& m_server;
    std::vector<Editor> m_editors;
    QString m_strUser;
    QMap<QString, Draft> m_drafts;  // by user
    Json::Value m_base;             // the value that the fields change
    bool m_bEdited = false;
    bool m_bLoaded = false;
    bool m_bFilling = false;
    int m_nEdits = 0;  // counts edits and changes of the user, to identify late answers
    QPushButton* m_pLoad = nullptr;
    QLabel* m_pOutcome;
};
