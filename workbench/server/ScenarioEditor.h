#pragma once

#include "workbench/server/RequestForm.h"

class QListWidget;
class QPlainTextEdit;

/// The form of the whole scenario. Opens also a file or the built-in scenario, saves the text to a file, and lists the
/// server's errors, which select their places. Unsaved edits are asked about before another text is opened.
class CScenarioEditor : public CRequestForm {
    Q_OBJECT

public:
    explicit CScenarioEditor(IControlClient& server, QWidget* parent = nullptr);

    void ForgetServer() override;

protected:
    void ShowOutcome(const QString& text, widgets::EnOutcome outcome) override;
    void Fail(const QString& reason) override;

private:
    void OpenFile();
    void OpenBuiltIn();
    void Open(const QString& name, const QString& text);
    bool MayOpen();
    bool Save(const QString& path);
    void Select(int error);

    QPlainTextEdit* m_pText;
    QLineEdit* m_pPath;
    QListWidget* m_pErrors;
    QString m_strFile;  // that the text belongs to
    QString m_strKept;  // the text that was opened or saved last
};
