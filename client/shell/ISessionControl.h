#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <vector>

/// A user that the server knows.
struct ServerUser {
    quint64 id = 0;
    QString name;
};

/// The session of the running client: its connection, user, language, theme, edition and modules. Main thread.
class ISessionControl : public QObject {
    Q_OBJECT

public:
    /// The logged-in user's id; 0 if no user is logged in.
    virtual quint64 UserId() const = 0;
    virtual int LanguageId() const = 0;
    virtual const std::vector<ServerUser>& Users() const = 0;
    /// Has one line for each module of the manifest that could not be loaded.
    virtual const QStringList& ModuleFailures() const = 0;

    virtual void Login(quint64 userId) = 0;
    virtual void Logout() = 0;
    virtual void SetLanguage(int languageId) = 0;
    virtual void SetTheme(int number) = 0;
    virtual void SetVelora(bool velora) = 0;
    /// Replaces the markets of the user until the next login.
    virtual void OverrideMarkets(std::vector<int> markets) = 0;

    /// Emits StatusChanged with the current status, for a new listener.
    virtual void EmitStatus() = 0;

Q_SIGNALS:
    /// The modules were loaded and initialised, except those in ModuleFailures.
    void ModulesReady();
    /// `status` is translated and is emitted again when the language changes. `good` is false while the client waits
    /// for something.
    void StatusChanged(const QString& status, bool good);
    void UsersChanged();
    /// A user logged in or out. The modules are notified before.
    void UserChanged();
    /// A reconnect gave the same user another session id.
    void SessionRenewed();
    void LanguageChanged();
    void EditionChanged();
    /// A web page was requested. It was opened if the client has a desktop. `windowSize` is invalid without a wish.
    void WebOpened(const QUrl& url, const QSize& windowSize);
};
