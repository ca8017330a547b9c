#pragma once

#include <QObject>
#include <QUrl>
#include <functional>

#include "core/IUrlOpener.h"

class IEnvironment;

/// Decides which URLs are opened, and hands those to whoever shows pages and the web. Main thread.
/// The environment must outlive it.
class CUrlOpener : public QObject, public IUrlOpener {
    Q_OBJECT

public:
    enum class EnTarget { kRefused, kPage, kWeb };

    struct Verdict {
        EnTarget target = EnTarget::kRefused;
        QUrl url;
        QString reason;  // of a refusal
    };

    /// Opens a URL that passed; false if it can't be opened.
    using Handler = std::function<bool(const QUrl& url)>;

    static constexpr int kMaxLength = 8192;

    explicit CUrlOpener(const IEnvironment& environment);

    /// Without a handler the URLs of its kind are refused.
    void SetPageHandler(Handler handler) { m_fnPage = std::move(handler); }
    void SetWebHandler(Handler handler) { m_fnWeb = std::move(handler); }

    bool Open(const UrlRequest& request) override;

    /// Looks at the text alone. `internal` builds may open http on loopback.
    static Verdict Judge(const QString& text, bool internal);

Q_SIGNALS:
    /// After the fact; `reason` says why it was refused, and is empty if it was opened.
    void Dispatched(const UrlRequest& request, const QString& reason);

private:
    const IEnvironment& m_environment;
    Handler m_fnPage;
    Handler m_fnWeb;
};
