#include "workbench/server/FaultTable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVariant>

#include "workbench/WireCommands.h"
#include "workbench/server/RequestForm.h"

namespace {

enum EnColumn { kColumnKey, kColumnFault, kColumnLeft, kColumnCount };

constexpr int kPathRole = Qt::UserRole;
constexpr const char* kReplies = "/v1/faults";
constexpr const char* kResponses = "/v1/httpFaults";
constexpr const char* kTimes = "times";

QString FaultText(const Json::Value& fault) {
    QStringList parts;
    for (const std::string& key : fault.isObject() ? fault.getMemberNames() : std::vector<std::string>()) {
        if (key != kTimes) {
            parts << QString::fromStdString(key) + QLatin1Char(' ') + json::Text(json::Member(fault, key));
        }
    }
    return parts.join(QStringLiteral(", "));
}

}  // namespace

CFaultTable::CFaultTable(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pTable(new QTableWidget(0, kColumnCount, this)),
      m_pOutcome(NewOutcomeLine(QStringLiteral("FaultsOutcome"), this)) {
    setObjectName(QStringLiteral("FaultTablePanel"));
    m_pTable->setObjectName(QStringLiteral("FaultTable"));
    m_pTable->setAccessibleName(QStringLiteral("Active faults"));
    m_pTable->setProperty("dense", true);
    m_pTable->setHorizontalHeaderLabels(
        {QStringLiteral("Command or path"), QStringLiteral("Fault"), QStringLiteral("Times left")});
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->setTabKeyNavigation(false);
    m_pTable->verticalHeader()->hide();
    m_pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_pTable->horizontalHeader()->setSectionResizeMode(kColumnFault, QHeaderView::Stretch);
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, void (CFaultTable::*action)()) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
    };
    add("FaultRemove", QStringLiteral("Remove"), &CFaultTable::Remove);
    add("FaultsRemoveAll", QStringLiteral("Remove all"), &CFaultTable::RemoveAll);
    buttons->addStretch(1);
    add("FaultsRefresh", QStringLiteral("Refresh"), &CFaultTable::Refresh);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pTable, 1);
    layout->addLayout(buttons);
    layout->addWidget(m_pOutcome);
}

void CFaultTable::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Refresh();
}

void CFaultTable::Refresh() {
    ShowOutcome(m_pOutcome, QString(), true);
    Read(kReplies, m_replyFaults);
    Read(kResponses, m_responseFaults);
}

void CFaultTable::Read(const char* path, Json::Value& faults) {
    m_server.Ask("GET", QString::fromLatin1(path), QByteArray(), this, [this, &faults](const ServerAnswer& answer) {
        faults = answer.error.isEmpty() ? answer.body : Json::Value(Json::objectValue);
        Show();
        if (!answer.error.isEmpty()) {
            ShowOutcome(m_pOutcome, answer.Failure(), false);
        }
    });
}

void CFaultTable::Show() {
    m_pTable->setRowCount(0);
    AddRows(m_replyFaults, QString::fromLatin1(kReplies) + QLatin1Char('/'));
    AddRows(m_responseFaults, QString::fromLatin1(kResponses));
    if (m_pOutcome->property("good").toBool()) {
        ShowOutcome(m_pOutcome, m_pTable->rowCount() == 0 ? QStringLiteral("No fault is set") : QString(), true);
    }
}

void CFaultTable::AddRows(const Json::Value& faults, const QString& path) {
    for (const std::string& key : faults.getMemberNames()) {
        const Json::Value& fault = json::Member(faults, key);
        const QString shown = QString::fromStdString(key);
        const QString name = wire::CommandName(shown.toUInt());
        const QString left = json::Text(json::Member(fault, kTimes));
        const int row = m_pTable->rowCount();
        m_pTable->insertRow(row);
        auto* item = new QTableWidgetItem(name.isEmpty() ? shown : shown + QStringLiteral("  ") + name);
        item->setData(kPathRole, path + shown);
        m_pTable->setItem(row, kColumnKey, item);
        m_pTable->setItem(row, kColumnFault, new QTableWidgetItem(FaultText(fault)));
        m_pTable->setItem(row, kColumnLeft, new QTableWidgetItem(left.isEmpty() ? QStringLiteral("for ever") : left));
    }
}

void CFaultTable::Remove() {
    if (const auto* item = m_pTable->item(m_pTable->currentRow(), kColumnKey)) {
        Change("DELETE", item->data(kPathRole).toString(), QByteArray());
    }
}

void CFaultTable::RemoveAll() {
    Change("PUT", QString::fromLatin1(kReplies), "{}");
    Change("PUT", QString::fromLatin1(kResponses), "{}");
}

void CFaultTable::Change(const char* method, const QString& path, const QByteArray& json) {
    m_server.Ask(method, path, json, this, [this](const ServerAnswer& answer) {
        Refresh();
        if (!answer.error.isEmpty()) {
            ShowOutcome(m_pOutcome, answer.Failure(), false);
        }
    });
}
