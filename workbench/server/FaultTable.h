#pragma once

#include <QWidget>
#include <map>

#include "workbench/ControlClient.h"

class QLabel;
class QTableWidget;

/// The faults that are active on the server, read when the table becomes visible and by Refresh. `server` must outlive
/// it.
class CFaultTable : public QWidget {
public:
    explicit CFaultTable(IControlClient& server, QWidget* parent = nullptr);

    void Refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Show();
    void AddRow(const QString& path, const QString& key, const Json::Value& fault);
    void Remove();
    void Change(const char* method, const QString& path, const QByteArray& json);

    IControlClient& m_server;
    std::map<QString, Json::Value> m_faults;  // of the last answers, by path
    QString m_strFailure;
    QTableWidget* m_pTable;
    QLabel* m_pOutcome;
};
