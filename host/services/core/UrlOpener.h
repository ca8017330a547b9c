#pragma once

#include <QObject>
#include <QUrl>
#include <functional>

#include "core/IUrlOpener.h"
#include "core/SchemeHooks.h"
#include "core/UrlCheck.h"

class IClientState;

/// Decides which URLs may be opened and passes them to the handlers for pages and for the web.
/// The state must outlive it. Main thread.
class CUrlOpener : public QObject, public IUrlOpener {
    Q_OBJECT

public:
    using EnTarget = host::EnUrlTarget;
    using Verdict = host::UrlVerdict;

    /// Opens an allowed URL. Returns false if it can't be opened.
    using Handler = std::function<bool(const QUrl& url)>;
    /// `extra` is the request's, such as the wished window.
    using WebHandler = std::function<bool(const QUrl& url, const QVariant& extra)>;

    explicit CUrlOpener(const IClientState& state) : m_state(state) {}

    /// Without a handler the URLs of its kind are refused.
    void SetPageHandler(Handler handler) { m_fnPage = std::move(handler); }
    void SetWebHandler(WebHandler handler) { m_fnWeb = std::move(handler); }

    bool Open(const UrlRequest& request) override;
    void AddHook(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                 core::scheme::RouteMatchRule rule) override;

Q_SIGNALS:
    /// Emitted after each call of Open. `reason` is empty if the URL was opened.
    void Dispatched(const UrlRequest& request, const QString& reason);

private:
    const IClientState& m_state;
    host::CSchemeHooks m_hooks;
    Handler m_fnPage;
    WebHandler m_fnWeb;
};
