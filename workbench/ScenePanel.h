#pragma once

#include <json/value.h>

#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QTableWidget;

/// Edits the server's answer about the AI chat for one user. A change takes effect at the next login. `server` must
/// outlive it.
class CScenePanel : public QWidget {
public:
    explicit CScenePanel(IControlClient& server, QWidget* parent = nullptr);

    /// Requests the user's entries from the server; 0 shows none.
    void ShowUser(quint64 userId);

    /// Requests the entries again.
    void Reload();

private:
    void ShowEntries();
    void AddRow(const Json::Value& entry);
    void RemoveRow();
    void Save();
    void Say(const QString& words, bool good);
    void ShowTexts();
    class QPushButton* NewButton(const char* name, const QString& text);

    IControlClient& m_server;
    quint64 m_nUser = 0;
    Json::Value m_aiChat;                // as returned by the server
    std::vector<Json::Value> m_entries;  // one for each row, including values that the table does not show
    QTableWidget* m_pTable;
    QLabel* m_pMessage;
};
