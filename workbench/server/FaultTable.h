#pragma once

#include <QWidget>

#include "workbench/ControlClient.h"

class QLabel;
class QTableWidget;

/// The faults that are active on the server, read when the table becomes visible and by Refresh. `server` must outlive
/// it.
class CFaultTable : public QWidget {
public:
    explicit CFaultTable(IControlClient& server, QWidget* parent = nullptr);

    void Refresh();

    /// The faults of the last answer: objects by command or path.
    const Json::Value& ReplyFaults() const { return m_replyFaults; }
    const Json::Value& ResponseFaults() const { return m_responseFaults; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Read(const char* path, Json::Value& faults);
    void Show();
    void AddRows(const Json::Value& faults, const QString& path);
    void Remove();
    void RemoveAll();
    void Change(const char* method, const QString& path, const QByteArray& json);

    IControlClient& m_server;
    Json::Value m_replyFaults{Json::objectValue};
    Json::Value m_responseFaults{Json::objectValue};
    QTableWidget* m_pTable;
    QLabel* m_pOutcome;
};
