#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <set>

#include "MainWindow.h"

class CComposition;
class QAbstractButton;
class QComboBox;

/// A guided tour of the running client: works its widgets as a hand would, compares what they show with the
/// server's scenario, and leaves a picture of each step. Main thread.
class CTour : public QObject {
public:
    CTour(CComposition& composition, CMainWindow& window, const QString& folder);

    /// Takes the tour, in event loops of its own, within 90 seconds. Tells each step on the standard output.
    /// Returns the process's exit code: 0 if all steps came out as expected, otherwise 1.
    int Run();

private:
    using Scenes = std::set<int>;

    bool SeeConnected();
    bool SeeAds();
    bool SeeOtherUser();
    bool SeeUserWithNone();
    bool SeeChinese();
    bool SeeThemes();
    bool SeeMember();
    bool SeePushedRights();
    bool SeeForcedOpen();
    bool SeeTraffic();
    bool SeeScenesEdited();
    bool SeeFault();
    bool SeeLinks();
    bool SeeExport();
    bool SeeServerLost();
    bool SeeReconnected();
    bool SeeLogFiltered();

    QWidget* PopupCard() const;
    QWidget* BannerAt(int position) const;
    bool SeeCardBeside(int navigationWidth);
    bool SeeBanner(const char* page, int position);
    bool SeePictureFetched();
    bool SeeAdPanel();
    bool SeeAdRefused();
    bool ReadScenario();
    bool LogIn(quint64 userId);
    bool LogInByMenu(const QString& word, quint64 userId);
    bool WaitForEntries(quint64 userId);
    bool WaitFor(const QString& what, const std::function<bool()>& isSo);
    bool TakePicture(const char* name) { return TakePicture(name, m_window); }
    bool TakePicture(const char* name, QWidget& of);
    static void DeleteWhatIsDone();
    bool WearsTheme() const;
    void OpenPage(int scene);
    void OpenTab(int index);
    bool SaveScenes(int row, Qt::CheckState state);
    quint64 UserNamed(const QString& word) const;
    bool TakeThemePictures(const char* name);
    void Choose(const char* combo, const QVariant& data);
    Scenes OpenScenes() const;
    bool Fail(const QString& reason);
    void Tell(const QString& seen);

    /// A widget that is not there ends the tour at once: it is a fault of the client's own making.
    template <class Widget>
    Widget* Find(const QString& name) const;

    CComposition& m_composition;
    CMainWindow& m_window;
    const QString m_strFolder;
    QElapsedTimer m_clock;
    std::map<quint64, Scenes> m_expected;  // of the users who may log in
    QString m_strFailure;
    int m_nStep = 0;
    int m_nEntryAnswers = 0;
    int m_nChannelAnswers = 0;
    int m_nThemeMessages = 0;
    qint64 m_nServerProcess = 0;
    quint64 m_nFirstUser = 0;
};

template <class Widget>
Widget* CTour::Find(const QString& name) const {
    auto* widget = m_window.findChild<Widget*>(name);
    if (!widget) {
        qFatal("The tour misses the widget %s", qPrintable(name));
    }
    return widget;
}
