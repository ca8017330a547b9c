#pragma once

#include <QWidget>

#include "workbench/ControlClient.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;

/// Edits a scenario as JSON: that of the running server, the built-in one, or a file. Applies it to the server and
/// saves it to a file. Unsaved edits are asked about before another scenario is opened. `server` must outlive it.
class CScenarioEditor : public QWidget {
    Q_OBJECT

public:
    explicit CScenarioEditor(IControlClient& server, QWidget* parent = nullptr);

    bool IsEdited() const;
    /// The scenario that was opened or saved last.
    QString Name() const { return m_strName; }
    /// Must be called for a new server or another scenario of it. Reads it again, unless there are edits or a file.
    void ForgetServer();

Q_SIGNALS:
    /// The server runs the scenario of the editor.
    void Applied();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QString Source() const;
    void ListFiles(const QString& file);
    void ChooseFile();
    void AskToOpen();
    void Open();
    void Read();
    void SetText(const QString& name, const QString& text);
    bool Save();
    void Apply();
    void ShowErrors(const QString& answer);
    void Select(int error);

    IControlClient& m_server;
    QString m_strName;
    QComboBox* m_pSource;
    QPlainTextEdit* m_pText;
    QListWidget* m_pErrors;
    QLabel* m_pOutcome;
};
