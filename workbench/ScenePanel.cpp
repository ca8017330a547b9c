#include "workbench/ScenePanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVariant>

#include "Theme.h"
#include "framework/JsonText.h"
#include "workbench/ServerText.h"

namespace {

constexpr int kRowHeight = 26;
constexpr int kRowsInSight = 2;  // minimum; the window must fit a small screen

enum EnColumn { kColumnScene, kColumnAllOpen, kColumnCount };

}  // namespace

CScenePanel::CScenePanel(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pTable(new QTableWidget(0, kColumnCount, this)),
      m_pMessage(new QLabel(this)) {
    setObjectName(QStringLiteral("ScenePanel"));
    m_pTable->setObjectName(QStringLiteral("SceneTable"));
    m_pTable->setProperty("dense", true);
    m_pTable->setShowGrid(false);
    m_pTable->setFrameShape(QFrame::NoFrame);
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->verticalHeader()->hide();
    m_pTable->verticalHeader()->setDefaultSectionSize(kRowHeight);
    m_pTable->horizontalHeader()->setHighlightSections(false);
    m_pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // The table gets the remaining height. Its size hint would squeeze the buttons.
    m_pTable->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    m_pTable->setMinimumHeight(kRowHeight * (kRowsInSight + 1) + 6);
    m_pMessage->setObjectName(QStringLiteral("SceneMessage"));
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    auto* add = NewButton("SceneAdd", QStringLiteral("Add"));
    auto* remove = NewButton("SceneRemove", QStringLiteral("Remove"));
    auto* reload = NewButton("SceneReload", QStringLiteral("Reload"));
    auto* save = NewButton("SceneSave", QStringLiteral("Save to server"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch(1);
    buttons->addWidget(reload);
    buttons->addWidget(save);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_pTable, 1);
    layout->addLayout(buttons);
    layout->addWidget(m_pMessage);
    connect(add, &QPushButton::clicked, this, [this] {
        Json::Value entry;
        entry["scene"] = m_pTable->rowCount() + 1;
        entry["allOpen"] = true;
        AddRow(entry);
    });
    connect(remove, &QPushButton::clicked, this, &CScenePanel::RemoveRow);
    connect(reload, &QPushButton::clicked, this, &CScenePanel::Reload);
    connect(save, &QPushButton::clicked, this, &CScenePanel::Save);
    ShowTexts();
}

QPushButton* CScenePanel::NewButton(const char* name, const QString& text) {
    auto* button = new QPushButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text);
    return button;
}

void CScenePanel::ShowTexts() {
    m_pTable->setHorizontalHeaderLabels({QStringLiteral("Scene"), QStringLiteral("All open")});
    for (int column = 0; column < kColumnCount; ++column) {
        m_pTable->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

void CScenePanel::ShowUser(quint64 userId) {
    m_nUser = userId;
    Reload();
}

void CScenePanel::Reload() {
    Say(QString(), true);
    m_aiChat = Json::Value(Json::objectValue);
    ShowEntries();
    if (m_nUser == 0) {
        return;
    }
    m_server.Ask("GET", QStringLiteral("/v1/scenario"), QByteArray(), this,
                 [this, user = m_nUser](const ServerAnswer& answer) {
                     if (user != m_nUser) {
                         return;
                     }
                     if (!answer.error.isEmpty()) {
                         Say(ErrorText(answer), false);
                         return;
                     }
                     for (const Json::Value& known : answer.body["users"]) {
                         if (known["id"].isUInt64() && known["id"].asUInt64() == user && known["aiChat"].isObject()) {
                             m_aiChat = known["aiChat"];
                         }
                     }
                     ShowEntries();
                 });
}

void CScenePanel::ShowEntries() {
    m_pTable->setRowCount(0);
    m_entries.clear();
    if (m_aiChat["entries"].isArray()) {
        for (const Json::Value& entry : m_aiChat["entries"]) {
            AddRow(entry);
        }
    }
}

void CScenePanel::AddRow(const Json::Value& entry) {
    const int row = m_pTable->rowCount();
    m_pTable->insertRow(row);
    m_entries.push_back(entry);
    m_pTable->setItem(row, kColumnScene, new QTableWidgetItem(QString::fromStdString(entry["scene"].asString())));
    auto* open = new QTableWidgetItem;
    open->setFlags((open->flags() | Qt::ItemIsUserCheckable) & ~Qt::ItemIsEditable);
    open->setCheckState(entry["allOpen"].asBool() ? Qt::Checked : Qt::Unchecked);
    m_pTable->setItem(row, kColumnAllOpen, open);
}

void CScenePanel::RemoveRow() {
    const int row = m_pTable->currentRow();
    if (row >= 0) {
        m_pTable->removeRow(row);
        m_entries.erase(m_entries.begin() + row);
    }
}

void CScenePanel::Save() {
    Json::Value aiChat = m_aiChat;
    aiChat["entries"] = Json::Value(Json::arrayValue);
    for (int row = 0; row < m_pTable->rowCount(); ++row) {
        bool isNumber = false;
        const qlonglong scene = m_pTable->item(row, kColumnScene)->text().trimmed().toLongLong(&isNumber);
        if (!isNumber) {
            Say(QStringLiteral("Row %1: the scene must be a whole number").arg(row + 1), false);
            return;
        }
        Json::Value entry = m_entries[size_t(row)];
        entry["scene"] = Json::Int64(scene);
        entry["allOpen"] = m_pTable->item(row, kColumnAllOpen)->checkState() == Qt::Checked;
        aiChat["entries"].append(entry);
    }
    m_server.Ask("PUT", QStringLiteral("/v1/users/%1/aiChat").arg(m_nUser),
                 QByteArray::fromStdString(host::OneLine(aiChat)), this, [this, aiChat](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Say(ErrorText(answer), false);
                         return;
                     }
                     m_aiChat = aiChat;
                     Say(QStringLiteral("Saved; it counts from the next login on"), true);
                 });
}

void CScenePanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
