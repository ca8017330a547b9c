#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <set>

#include "Client.h"
#include "ControlApiDriver.h"
#include "core/message_dispatch.h"
#include "support/RealTime.h"
#include "workbench/EntryModel.h"

/// A client with its window, the module mapped from the build and a server of its own. Each case is a process
/// of its own, since the module's managers live as long as the process.
class ClientTest : public ::testing::Test {
protected:
    ClientTest() {
        options.dataDir = folder.filePath(QStringLiteral("data"));
        options.serverBinary = QStringLiteral(ZR_DEVSERVER);
        options.manifest =
            WriteFile("modules.json", R"({"modules":[{"name":"CZRGrowthModule","library":")" ZR_MODULE R"("}]})");
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

    /// Makes the client and its window, and shows and starts nothing of it.
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

    /// Shows the window, and is back when all of it is there.
    void Show() {
        window->show();
        ASSERT_TRUE(WaitInRealTime([this] { return isComplete; }));
    }

    /// Starts all of it, as main does; StartAndLogIn waits until the first user is in.
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

    /// Calls `callback` for each message on the bus with that id.
    void Bind(unsigned int message, core::MessageCallback callback) {
        core::__CMessageDispatch("[Test]").Bind(message, std::move(callback), &watcher);
    }

    /// The scenes whose entries are enabled, on whatever page they stand.
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

    /// What the store's file holds for the installation; "nothing" if it has no such value, or is not there yet.
    std::string StoredValue(const char* key) const {
        return ValueIn("client.sqlite", "SELECT value FROM config WHERE owner = 'app' AND key = ?", key);
    }

    /// Whether the client knows of all its reports that the server has them. A server counts one earlier than that;
    /// one that ends in between gets it told to its successor as well.
    bool AreReportsAcknowledged() const { return ValueIn("reports.sqlite", "SELECT COUNT(*) FROM event") == "0"; }

    /// The first value that `sql` returns for `key`, on a separate connection; "nothing" if it fails or finds none.
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

    /// Whether the workbench shows all entries that it was given.
    bool IsWorkbenchSettled() const {
        const auto models = window->findChildren<CEntryModel*>();
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
