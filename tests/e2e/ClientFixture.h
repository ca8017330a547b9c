#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <memory>
#include <set>
#include <vector>

#include "BuildPaths.h"
#include "Client.h"
#include "ControlApiDriver.h"
#include "core/message_dispatch.h"
#include "support/RealTime.h"
#include "workbench/EventModel.h"

/// A client with its window, the module mapped from the build, and its own server. Each case is its own process,
/// because the module's managers are never destroyed before the process ends.
class ClientTest : public ::testing::Test {
protected:
    ClientTest() {
        options.dataDir = folder.filePath(QStringLiteral("data"));
        options.serverBinary = QString::fromUtf8(build::kDevServer);
        options.manifest = WriteManifest({{"CZRGrowthModule", build::kModule}});
        options.scenario = WriteFile("scenario.json", R"({"schema":1,"users":[
            {"id":501,"name":"One","markets":[3,1],"aiChat":{"entries":[
                {"scene":1,"allOpen":true},{"scene":4,"allOpen":true},{"scene":5,"allOpen":false}]}},
            {"id":502,"name":"Two","aiChat":{"entries":[{"scene":2,"allOpen":true}]}},
            {"id":503,"name":"Three","refuseLogin":"the account is closed"}],
            "commonConfig":{"ai_chat":{"url_string":"https://chat.example/"}}})");
    }

    ~ClientTest() override { End(); }

    QString WriteFile(const char* name, const QByteArray& content) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    struct ModuleEntry {
        const char* name;
        QByteArray library;
    };

    /// Returns the path of a manifest with these modules, in this order.
    QString WriteManifest(const std::vector<ModuleEntry>& modules) {
        QByteArray entries;
        for (const ModuleEntry& entry : modules) {
            entries += QByteArray(entries.isEmpty() ? "" : ",") + R"({"name":")" + entry.name + R"(","library":")" +
                       entry.library + R"("})";
        }
        return WriteFile("modules.json", R"({"modules":[)" + entries + "]}");
    }

    /// Creates the client and its window. Shows and starts nothing.
    void Make() {
        app = std::make_unique<CClient>(options);
        client = &app->Composition();
        window = &app->Window();
        QObject::connect(client, &CComposition::ServerReady, &watcher, [this](const ServerEndpoint& endpoint) {
            server = std::make_unique<CControlApiDriver>(endpoint.controlPort, endpoint.token);
            channelPort = endpoint.channelPort;
        });
        QObject::connect(client, &CComposition::StatusChanged, &watcher,
                         [this](const QString& status) { statuses.push_back(status.toStdString()); });
        for (const unsigned int message : {10250u, 10650u, 20100u, 20300u}) {
            Bind(message, [this](unsigned int id, auto, auto) { messages.push_back(id); });
        }
        QObject::connect(window, &CMainWindow::Completed, &watcher, [this] { isComplete = true; });
    }

    /// Shows the window and returns when all its parts are created.
    void Show() {
        window->show();
        ASSERT_TRUE(WaitInRealTime([this] { return isComplete; }));
    }

    /// Starts everything as main does. StartAndLogIn also waits for the first user's login.
    void Start() {
        Make();
        Show();
    }

    void StartAndLogIn() {
        Start();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
        ASSERT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({1, 4}); }));
    }

    void End() {
        app.reset();
        client = nullptr;
        window = nullptr;
    }

    /// Calls `callback` for each bus message with the id `message`.
    void Bind(unsigned int message, core::MessageCallback callback) {
        core::__CMessageDispatch("[Test]").Bind(message, std::move(callback), &watcher);
    }

    /// Returns the state of a subject on the workbench's page of explanations; empty if it is not listed.
    std::string WhyState(const char* subject) const {
        const QAbstractItemModel* model = window->findChild<QAbstractItemView*>(QStringLiteral("WhyTable"))->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data().toString() == QLatin1String(subject)) {
                return model->index(row, 2).data().toString().toStdString();
            }
        }
        return std::string();
    }
    bool WaitForWhy(const char* subject, const std::string& state) {
        return WaitInRealTime([=] { return WhyState(subject).find(state) != std::string::npos; });
    }

    /// Returns the number of listed rights.
    int ListedRights() const {
        const QAbstractItemModel* model = window->findChild<QAbstractItemView*>(QStringLiteral("WhyTable"))->model();
        int rights = 0;
        for (int row = 0; row < model->rowCount(); ++row) {
            rights += model->index(row, 0).data().toString().startsWith(QLatin1String("Right ")) ? 1 : 0;
        }
        return rights;
    }

    /// Opens a tab of the workbench's page for the server, and a form on it.
    void OpenServer(const char* page, const char* forms = nullptr, const char* row = nullptr) {
        Child<QTabWidget>("WorkbenchTabs")->setCurrentWidget(Child<QWidget>("ServerTab"));
        Child<QTabWidget>("ServerTabs")->setCurrentWidget(Child<QWidget>(page));
        if (forms) {
            auto* choice = Child<QComboBox>(forms);
            choice->setCurrentIndex(choice->findData(QString::fromLatin1(row)));
        }
    }

    /// Opens the form and waits until it shows the server's value of this field.
    void OpenLoaded(const char* page, const char* forms, const char* row, const char* field) {
        OpenServer(page, forms, row);
        ASSERT_TRUE(WaitInRealTime([=] { return Child<QWidget>(field)->isEnabled(); }));
    }

    /// Sets a fault of command 20982 with one field, and waits until the server returns it.
    void SetFault(const char* field, const char* value) {
        OpenServer("FaultPageScroll", "FaultFormsChoice", "ReplyFault");
        Child<QLineEdit>("ReplyFault.error")->clear();
        if (auto* combo = Child<QComboBox>(field)) {
            combo->setEditText(QString::fromLatin1(value));
        } else {
            Child<QLineEdit>(field)->setText(QString::fromLatin1(value));
        }
        Child<QPushButton>("ReplyFaultSend")->click();
        ASSERT_TRUE(WaitInRealTime([this] {
            return Child<QPlainTextEdit>("ReplyFaults.value")->toPlainText().contains(QLatin1String("20982"));
        }));
    }

    /// Returns the scenes whose entries are enabled, on all pages.
    std::set<int> OpenEntries() const {
        std::set<int> open;
        for (const auto* button : window->findChildren<QAbstractButton*>()) {
            const QString prefix = QStringLiteral("AIChatEntry");
            if (button->objectName().startsWith(prefix) && button->isEnabled()) {
                open.insert(button->objectName().mid(prefix.size()).toInt());
            }
        }
        return open;
    }

    /// Returns the installation's stored value of `key`; "nothing" if the value or the file does not exist.
    std::string StoredValue(const char* key) const {
        return ValueIn("client.sqlite", "SELECT value FROM config WHERE owner = 'app' AND key = ?", key);
    }

    /// Returns true if all of the client's reports are acknowledged. The server counts a report before the client
    /// knows. If the client ends in between, its successor sends the report again.
    bool AreReportsAcknowledged() const { return ValueIn("reports.sqlite", "SELECT COUNT(*) FROM event") == "0"; }

    /// Returns the first value that `sql` selects for `key` on a separate connection; "nothing" on failure or without a
    /// row.
    std::string ValueIn(const char* database, const char* sql, const char* key = nullptr) const {
        try {
            const SQLite::Database file(options.dataDir.toStdString() + '/' + database, SQLite::OPEN_READONLY, 5'000);
            SQLite::Statement query(file, sql);
            if (key) {
                query.bind(1, key);
            }
            if (query.executeStep()) {
                return query.getColumn(0).getString();
            }
        } catch (const SQLite::Exception&) {
            // The client has not created the file or the table yet.
        }
        return "nothing";
    }

    /// Returns true if the workbench shows all entries that it received.
    bool IsWorkbenchSettled() const {
        const auto models = window->findChildren<CEventModel*>();
        return !models.isEmpty() &&
               std::all_of(models.begin(), models.end(), [](const auto* model) { return model->IsSettled(); });
    }

    template <class Widget>
    Widget* Child(const char* name) const {
        return window->findChild<Widget*>(QString::fromLatin1(name));
    }

    int CountOf(unsigned int message) const { return int(std::count(messages.begin(), messages.end(), message)); }

    bool StatusSaid(const std::string& words) const {
        return std::any_of(statuses.begin(), statuses.end(),
                           [&words](const std::string& status) { return status.find(words) != std::string::npos; });
    }

    QTemporaryDir folder;
    COptions options;
    QObject watcher;
    std::vector<unsigned int> messages;
    std::vector<std::string> statuses;
    std::unique_ptr<CControlApiDriver> server;
    quint16 channelPort = 0;
    bool isComplete = false;
    std::unique_ptr<CClient> app;
    CComposition* client = nullptr;
    CMainWindow* window = nullptr;
};
