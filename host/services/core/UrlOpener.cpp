#include "core/UrlOpener.h"

#include "core/IClientState.h"
#include "framework/HostLog.h"
#include "framework/LogText.h"

namespace {

constexpr host::CHostLog kLog("Url");
constexpr int kMaxLoggedLength = 200;

}  // namespace

bool CUrlOpener::Open(const UrlRequest& request) {
    Verdict verdict = host::CheckUrl(request.url, !m_state.IsReleaseAppVersion());
    const bool hooked = verdict.target == EnTarget::kPage && m_hooks.Handle(request);
    if (verdict.target != EnTarget::kRefused && !hooked) {
        bool opened = false;
        host::CallAndLogExceptions(kLog, "Opening a URL", [&] {
            opened = verdict.target == EnTarget::kPage ? m_fnPage && m_fnPage(verdict.url)
                                                       : m_fnWeb && m_fnWeb(verdict.url, request.extra);
        });
        if (!opened) {
            verdict = {EnTarget::kRefused, QUrl(), QStringLiteral("nothing in the client opens it")};
        }
    }
    if (!verdict.reason.isEmpty()) {
        kLog.Error(FMT_STRING("Refused to open a URL, {}: {}"), verdict.reason.toStdString(),
                   host::EscapedLogText(request.url.left(kMaxLoggedLength)));
    }
    Q_EMIT Dispatched(request, verdict.reason);
    return verdict.reason.isEmpty();
}

void CUrlOpener::AddHook(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                         core::scheme::RouteMatchRule rule) {
    m_hooks.Add(schemeUrl, std::move(callback), owner, rule);
}
