#pragma once

#include <json/value.h>

#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QTableWidget;

/// What the server answers to one user about the AI chat, to be changed: it counts from the next login on.
/// `server` must outlive it.
class CScenePanel : public QWidget {
public:
    explicit CScenePanel(IControlClient& server, QWidget* parent = nullptr);

    /// Reads that user's entries from the server; 0 is nobody.
    void ShowUser(quint64 userId);

    /// Asks the server again.
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
    Json::Value m_aiChat;                // as the server has it
    std::vector<Json::Value> m_entries;  // beside the rows, with what the table does not show
    QTableWidget* m_pTable;
    QLabel* m_pMessage;
};
