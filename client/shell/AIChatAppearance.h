#pragma once

#include <QObject>

/// Provides theme and language to the page of the AI chat: the handler "getAppearance" answers with
/// `{"theme": ..., "language": ...}`, and the event "appearanceChanged" has the same parameters. Main thread.
class CAIChatAppearance : public QObject {
    Q_OBJECT

public:
    explicit CAIChatAppearance(QObject* parent = nullptr);

    /// Offers the handler. Must be called before the first login, because a login creates the page, which keeps the
    /// handlers of that moment.
    void Offer();
};
