#pragma once

#include <QObject>
#include <QSize>
#include <functional>

class QWidget;

/// The growth module's ads. The service is looked up for each call, because the module can be missing or replaced;
/// without it the calls do nothing. Main thread.
class CAds : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Minimum time between two requests for a position, on the server's clock. The module refuses earlier ones.
    static constexpr qint64 kPauseMs = 11'000;  // ten seconds, and one for the module's rounding

    /// Passes a banner to `shown` later. The caller owns it; null if there is nothing to show. `shown` can stay
    /// uncalled.
    static void AskBanner(int position, const QSize& size, std::function<void(QWidget*)> shown);

    /// Moves the bottom popup to its place. Must be called after each change of the window's layout.
    static void PlacePopup();

    /// Creates the developer panel of the bottom popup. Null without the module.
    static QWidget* NewPopupPanel();

    /// Must be called after a login, a logout and a change of the language.
    void Refresh();

Q_SIGNALS:
    /// Other ads can be available.
    void Changed();
};
