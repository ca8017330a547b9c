#pragma once

#include <QObject>
#include <QSize>
#include <functional>

class QWidget;

/// What the client has of the growth module's ads. The service is asked of the plug-in centre for each call: the
/// module may be missing or replaced, and then the calls do nothing. Main thread.
class CAds : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// A position's requests are to be so far apart, on the server's clock; the module refuses what comes earlier.
    static constexpr qint64 kPauseMs = 11'000;  // ten whole seconds, of which the module sees the first a little later

    /// A banner of the ads that are due, later, through `shown`: it belongs to the caller, and is null where there is
    /// nothing to show. May never be called.
    static void AskBanner(int position, const QSize& size, std::function<void(QWidget*)> shown);

    /// The bottom popup goes to its place. Called when the window's layout has changed.
    static void PlacePopup();

    /// A new panel on the bottom popup, for developers. Null without the module.
    static QWidget* NewPopupPanel();

    /// Called when a user was logged in or out, and when the display language has changed.
    void Refresh();

Q_SIGNALS:
    /// Other ads may be due than before.
    void Changed();
};
