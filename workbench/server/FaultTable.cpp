#include "workbench/server/FaultTable.h"

#include <QTableWidget>

#include "workbench/Tables.h"
#include "workbench/Widgets.h"
#include "workbench/WireDecoder.h"

namespace {

enum EnColumn { kColumnKey, kColumnFault, kColumnLeft, kColumnCount };

constexpr int kPathRole = Qt::UserRole;
constexpr const char* kTimes = "times";
/// The paths of all faults of commands and of HTTP paths, and the separator before the key of one.
constexpr std::pair<const char*, const char*> kLists[] = {{"/v1/faults", "/"}, {"/v1/httpFaults", ""}};

}  // namespace

CFaultTable::CFaultTable(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pTable(widgets::New<QTableWidget>("FaultTable"_q, this, "Active faults"_q)),
      m_pOutcome(widgets::NewOutcome("FaultsOutcome"_q, this)) {
    setObjectName("FaultTablePanel"_q);
    tables::SetUp(*m_pTable);
    m_pTable->setColumnCount(kColumnCount);
    m_pTable->setHorizontalHeaderLabels({"Command or path"_q, "Fault"_q, "Times left"_q});
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->horizontalHeader()->setStretchLastSection(false);
    m_pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_pTable->horizontalHeader()->setSectionResizeMode(kColumnFault, QHeaderView::Stretch);
    auto* remove = widgets::NewButton("FaultRemove"_q, "Remove"_q, this, [this] { Remove(); });
    auto* removeAll = widgets::NewButton("FaultsRemoveAll"_q, "Remove all"_q, this, [this] {
        for (const auto& list : kLists) {
            Change("PUT", QString::fromLatin1(list.first), "{}");
        }
    });
    auto* refresh = widgets::NewButton("FaultsRefresh"_q, "Refresh"_q, this, [this] { Refresh(); });
    widgets::Column({{m_pTable, 1}, widgets::Row({remove, removeAll, nullptr, refresh}), m_pOutcome}, this);
}

void CFaultTable::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Refresh();
}

void CFaultTable::Refresh() {
    m_strFailure.clear();
    for (const auto& list : kLists) {
        const QString path = QString::fromLatin1(list.first);
        m_server.Ask("GET", path, QByteArray(), this, [this, path](const ServerAnswer& answer) {
            m_faults[path] = answer.body;
            m_strFailure = answer.error.isEmpty() ? m_strFailure : answer.Failure();
            Show();
        });
    }
}

void CFaultTable::Show() {
    m_pTable->setRowCount(0);
    for (const auto& [path, separator] : kLists) {
        const Json::Value& faults = m_faults[QString::fromLatin1(path)];
        for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
            AddRow(QString::fromLatin1(path) + QLatin1String(separator), QString::fromStdString(fault.name()), *fault);
        }
    }
    const bool isEmpty = m_pTable->rowCount() == 0;
    widgets::ShowOutcome(m_pOutcome,
                         !m_strFailure.isEmpty() ? m_strFailure
                         : isEmpty               ? "No fault is set"_q
                                                 : QString(),
                         m_strFailure.isEmpty() ? widgets::EnOutcome::Good : widgets::EnOutcome::Bad);
}

void CFaultTable::AddRow(const QString& path, const QString& key, const Json::Value& fault) {
    const QString name = wire::CommandName(key.toUInt());
    const QString left = json::Text(json::Member(fault, kTimes));
    QStringList parts;
    for (const std::string& part : fault.isObject() ? fault.getMemberNames() : std::vector<std::string>()) {
        if (part != kTimes) {
            parts << QString::fromStdString(part) + QLatin1Char(' ') + json::Text(json::Member(fault, part));
        }
    }
    const int row = m_pTable->rowCount();
    m_pTable->insertRow(row);
    m_pTable->setItem(row, kColumnKey, new QTableWidgetItem(name.isEmpty() ? key : key + "  "_q + name));
    m_pTable->setItem(row, kColumnFault, new QTableWidgetItem(parts.join(", "_q)));
    m_pTable->setItem(row, kColumnLeft, new QTableWidgetItem(left.isEmpty() ? "for ever"_q : left));
    m_pTable->item(row, kColumnKey)->setData(kPathRole, path + key);
}

void CFaultTable::Remove() {
    if (const auto* item = m_pTable->item(m_pTable->currentRow(), kColumnKey)) {
        Change("DELETE", item->data(kPathRole).toString(), QByteArray());
    }
}

void CFaultTable::Change(const char* method, const QString& path, const QByteArray& json) {
    m_server.Ask(method, path, json, this, [this](const ServerAnswer& answer) {
        Refresh();
        m_strFailure = answer.error.isEmpty() ? QString() : answer.Failure();
    });
}
